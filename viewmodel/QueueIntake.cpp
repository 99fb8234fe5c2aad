#include "QueueIntake.h"

#include "AsciiCase.h"
#include "FFmpegService.h"
#include "FileNameOrder.h"
#include "FileSystem.h"
#include "FolderListing.h"

#include <algorithm>
#include <utility>

namespace kestrel {

namespace {

bool isAcceptedInput(const FileURL& url) {
    const auto& supported = FFmpegService::supportedExtensions;
    return std::find(supported.begin(), supported.end(), asciiLowercased(url.pathExtension())) !=
           supported.end();
}

std::vector<FileURL> acceptedFiles(const std::vector<FileURL>& urls) {
    std::vector<FileURL> accepted;
    for (const FileURL& url : urls) {
        if (isFolder(url)) {
            for (FileURL& entry : listFolder(url)) {
                if (isAcceptedInput(entry)) {
                    accepted.push_back(std::move(entry));
                }
            }
        } else if (isAcceptedInput(url)) {
            accepted.push_back(url);
        }
    }
    return accepted;
}

} // namespace

std::vector<FileURL> filesToQueue(const std::vector<FileURL>& urls,
                                  const std::vector<ConversionJob>& queue,
                                  const std::optional<QueuedFiles>& queued) {
    std::vector<FileURL> files = acceptedFiles(urls);
    const auto leaveOut = [&files](const QueuedFiles& known) {
        std::erase_if(files, [&known](const FileURL& file) { return known.contains(file); });
    };
    if (queued) {
        leaveOut(*queued);
    } else if (!files.empty() && !queue.empty()) {
        leaveOut(QueuedFiles(queue));
    }
    sortByFileName(files);
    return files;
}

} // namespace kestrel
