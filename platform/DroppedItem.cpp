#include "DroppedItem.h"

#include "FileUriConversion.h"

#include <algorithm>
#include <cstddef>

namespace kestrel {

namespace {

std::string_view withoutLineEnd(std::string_view line) {
    while (!line.empty() && (line.back() == '\r' || line.back() == '\0')) {
        line.remove_suffix(1);
    }
    return line;
}

} // namespace

bool DroppedItem::hasFileURL() const {
    return hasFileScheme(uri_);
}

std::optional<FileURL> DroppedItem::loadFileURL() const {
    return fileUrlFromUri(uri_);
}

std::vector<DroppedItem> droppedItems(std::string_view uriList) {
    std::vector<DroppedItem> items;
    while (!uriList.empty()) {
        const std::size_t length = std::min(uriList.find('\n'), uriList.size());
        const std::string_view uri = withoutLineEnd(uriList.substr(0, length));
        if (!uri.empty() && uri.front() != '#') {
            items.emplace_back(std::string(uri));
        }
        uriList.remove_prefix(std::min(length + 1, uriList.size()));
    }
    return items;
}

} // namespace kestrel
