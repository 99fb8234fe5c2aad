#pragma once

#include <string>
#include <string_view>

namespace kestrel {

/// The last 8 lines of the diagnostics, empty ones not counted, joined by LF without one at the
/// end: UTF-8, with replacement characters for what was not. Lines end with LF alone; whatever else
/// stands in them stays.
std::string diagnosticsTail(std::string_view bytes);

} // namespace kestrel
