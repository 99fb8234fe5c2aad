#pragma once

namespace kestrel::test {

/// Timeout of the tests in milliseconds. Generous, as only a failure takes that long.
inline constexpr int timeout = 30'000;

} // namespace kestrel::test
