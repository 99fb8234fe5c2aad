#pragma once

#include "FileURL.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrel {

/// One item of a drop: a URI from the drag source.
class DroppedItem {
  public:
    explicit DroppedItem(std::string uri) : uri_(std::move(uri)) {}

    /// Returns whether the URI has the file scheme; it may still name no local file.
    bool hasFileURL() const;

    /// Returns the location, or none if the URI names no local one. Thread-safe.
    std::optional<FileURL> loadFileURL() const;

  private:
    std::string uri_;
};

/// The MIME type whose data `droppedItems` reads.
inline constexpr std::string_view uriListType = "text/uri-list";

/// Parses a "text/uri-list": one item per line, in order, without comments and empty lines. Accepts
/// LF and CRLF, and a last line without a line break or with NUL bytes.
std::vector<DroppedItem> droppedItems(std::string_view uriList);

} // namespace kestrel
