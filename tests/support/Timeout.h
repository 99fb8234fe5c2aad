#pragma once

namespace kestrel::test {

/// How long tests wait for what must come, in milliseconds: far longer than it takes anywhere, as
/// only a failure lasts that long.
inline constexpr int timeout = 30'000;

} // namespace kestrel::test
