#pragma once

namespace kestrel {

/// Prints "Fatal error: ", the message and a newline to stderr, and aborts. For broken invariants
/// only, where continuing could do something that the user did not ask for. Thread-safe.
[[noreturn]] void fatalError(const char* message) noexcept;

} // namespace kestrel
