#pragma once

#include "FileURL.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrel {

/// One item of a drop: the URI that its sender gave.
class DroppedItem {
  public:
    explicit DroppedItem(std::string uri) : uri_(std::move(uri)) {}

    /// Whether the URI has the file scheme; it may still name no location on this machine.
    bool hasFileURL() const;

    /// The location, or none where the URI does not name one. Any thread.
    std::optional<FileURL> loadFileURL() const;

  private:
    std::string uri_;
};

/// The MIME type whose data `droppedItems` reads.
inline constexpr std::string_view uriListType = "text/uri-list";

/// The items of a "text/uri-list": one a line, comments and empty lines left out, in order. Accepts
/// LF as well as CRLF, and a last line without its end or with a NUL byte.
std::vector<DroppedItem> droppedItems(std::string_view uriList);

} // namespace kestrel
