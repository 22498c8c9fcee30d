#pragma once

namespace stackreel
{

/// Ends the process with this status once all output is flushed, and under the address sanitizer once leaks
/// were looked for, which make the status a failure. Runs neither the destructors of static objects nor what
/// libraries registered with `atexit`: a thread of the toolkit's that counts as finished may still be in its
/// last steps, in which OpenSSL uses what its own `atexit` function frees. Destroy the application before.
[[noreturn]] void endProcess(int status);

} // namespace stackreel
