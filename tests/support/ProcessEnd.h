#pragma once

namespace stackreel
{

/// Flushes all output and ends the process with this status. With the address sanitizer, it first looks for
/// leaks; if there are any, the status is that of a failure. It runs neither the destructors of static
/// objects nor functions registered by `atexit`: a Qt thread that has officially finished may still be in its
/// last steps, in which OpenSSL uses memory that OpenSSL's `atexit` function frees. Destroy the application
/// object before.
[[noreturn]] void endProcess(int status);

} // namespace stackreel
