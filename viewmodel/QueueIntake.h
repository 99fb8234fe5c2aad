#pragma once

#include "ConversionJob.h"
#include "FileURL.h"

#include <vector>

namespace kestrel {

/// Whether the name has one of the extensions that are converted, in upper or lower case. Nothing
/// is looked up: the file need not exist.
bool isAcceptedInput(const FileURL& url);

/// The files to queue when the user gives these files and folders: folders replaced by the accepted
/// files below them, what is queued already left out, the rest sorted by file name. A file given
/// twice in one call is there twice.
std::vector<FileURL> filesToQueue(const std::vector<FileURL>& urls,
                                  const std::vector<ConversionJob>& queue);

} // namespace kestrel
