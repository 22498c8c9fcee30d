#pragma once

#include <functional>

namespace stackreel
{

/// Runs `body` on a thread of its own, which is joined after its end, and at the latest when the program
/// ends. An object of the main thread uses it for work that takes a moment, such as closing a decoder. The
/// owner of the work has its own way to end it, and the body must then end soon. Throws `std::system_error`
/// when no thread can be started.
void runDetached(std::function<void()> body);

} // namespace stackreel
