// text/uri-list parsing: same items and locations as a simple reference implementation, and every
// location survives the round trip through its URI.

#include "DroppedItem.h"
#include "FileUriConversion.h"
#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Property.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace kestrel {

namespace {

using Locations = std::vector<std::optional<FileURL>>;

const std::string& ownHostName() {
    static const std::string name = [] {
        std::array<char, 256> buffer{};
        static_cast<void>(::gethostname(buffer.data(), buffer.size() - 1));
        return std::string(buffer.data());
    }();
    return name;
}

/// Replaces each byte 1 by the own host name, which no corpus file can contain for every host.
std::string withOwnHostName(std::string_view text) {
    std::string result;
    for (const char c : text) {
        result += c == '\1' ? ownHostName() : std::string(1, c);
    }
    return result;
}

/// The lines that are neither empty nor a comment.
std::vector<std::string> expectedUris(const std::string& list) {
    std::vector<std::string> uris;
    std::istringstream stream(list);
    for (std::string line; std::getline(stream, line);) {
        line.erase(line.find_last_not_of(std::string("\r\0", 2)) + 1);
        if (!line.empty() && line[0] != '#') {
            uris.push_back(line);
        }
    }
    return uris;
}

bool isSameInAnyCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
        return std::tolower(x) == std::tolower(y);
    });
}

std::string decoded(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string digits = text.substr(i + 1, 2);
        if (text[i] == '%' && digits.size() == 2 &&
            digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos) {
            result += static_cast<char>(std::stoi(digits, nullptr, 16));
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

/// Requires: the URI has the file scheme.
std::optional<FileURL> expectedLocation(std::string uri) {
    uri.erase(0, std::string("file:").size());
    if (uri.starts_with("//")) {
        const std::string host = uri.substr(2, uri.find('/', 2) - 2);
        if (!host.empty() && !isSameInAnyCase(host, "localhost") &&
            !isSameInAnyCase(host, ownHostName())) {
            return std::nullopt;
        }
        uri.erase(0, 2 + host.size());
    }
    const std::string path = decoded(uri);
    const bool isLocation = uri.starts_with('/') && path.find('\0') == std::string::npos;
    return isLocation ? std::optional(FileURL(path)) : std::nullopt;
}

void checkLocation(const FileURL& url) {
    require(url.path().starts_with('/'), "a location is absolute");
    require(url.path().find('\0') == std::string::npos, "a location has no NUL byte");
    const std::string uri = uriFromFileUrl(url);
    require(uri.starts_with("file:///"), "a URI names its scheme and no host");
    require(uri.find_first_not_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                  "abcdefghijklmnopqrstuvwxyz-._~%:/") == std::string::npos,
            "a URI is encoded");
    require(fileUrlFromUri(uri) == url, "a URI leads back to its location");
}

Locations locationsIn(const std::string& list) {
    Locations locations;
    for (const DroppedItem& item : droppedItems(list)) {
        locations.push_back(item.loadFileURL());
    }
    return locations;
}

void checkList(const std::string& list) {
    const std::vector<std::string> uris = expectedUris(list);
    const std::vector<DroppedItem> items = droppedItems(list);
    require(items.size() == uris.size(), "an item a line, without comments and empty lines");
    Locations locations;
    std::string written;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const bool isFile = isSameInAnyCase(uris[i].substr(0, 5), "file:");
        require(items[i].hasFileURL() == isFile, "a file URI has the file scheme");
        const std::optional<FileURL> location = items[i].loadFileURL();
        require(location == (isFile ? expectedLocation(uris[i]) : std::nullopt),
                "a location is the decoded path of a file URI of this machine");
        if (location) {
            checkLocation(*location);
            locations.push_back(location);
            written += uriFromFileUrl(*location) + "\r\n";
        }
    }
    require(locationsIn(written) == locations, "a list of the locations leads back to them");
}

} // namespace

} // namespace kestrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrel;
    const std::string list = withOwnHostName(FuzzInput(data, size).bytes());
    checkList(list);
    std::string path = "/" + list;
    std::erase(path, '\0');
    checkLocation(FileURL(path));
    return 0;
}
