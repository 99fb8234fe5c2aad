#include "FileUriConversion.h"

#include "AsciiCase.h"
#include "PercentEncoding.h"

#include <QString>
#include <QSysInfo>

#include <utility>

namespace kestrel {

namespace {

constexpr std::string_view scheme = "file:";

bool isThisMachine(std::string_view host) {
    const std::string lowercased = asciiLowercased(host);
    return lowercased.empty() || lowercased == "localhost" ||
           lowercased == asciiLowercased(QSysInfo::machineHostName().toStdString());
}

} // namespace

std::string uriFromFileUrl(const FileURL& url) {
    return "file://" + percentEncoded(url.path());
}

bool hasFileScheme(std::string_view uri) {
    return asciiLowercased(uri.substr(0, scheme.size())) == scheme;
}

std::optional<FileURL> fileUrlFromUri(std::string_view uri) {
    if (!hasFileScheme(uri)) {
        return std::nullopt;
    }
    uri.remove_prefix(scheme.size());
    if (uri.substr(0, 2) == "//") {
        uri.remove_prefix(2);
        const std::string_view host = uri.substr(0, uri.find('/'));
        if (!isThisMachine(host)) {
            return std::nullopt;
        }
        uri.remove_prefix(host.size());
    }
    if (uri.empty() || uri.front() != '/') {
        return std::nullopt;
    }
    std::string path = percentDecoded(uri);
    if (path.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    return FileURL(std::move(path));
}

} // namespace kestrel
