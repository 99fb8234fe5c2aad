#pragma once

namespace kestrel {

/// Writes "Fatal error: ", the message and a line end to standard error and aborts. For broken
/// invariants only: a program that went on would do something that nobody asked for. Any thread.
[[noreturn]] void fatalError(const char* message) noexcept;

} // namespace kestrel
