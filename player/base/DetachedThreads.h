#pragma once

#include <functional>

namespace stackreel
{

/// Runs `body` on a thread of its own that nobody has to wait for: it is joined when it is over, and at the
/// latest when the program ends. So objects used on the main thread can leave work behind that takes a
/// moment, such as closing a decoder. The body must end soon after it was told to, by whatever means it has.
/// Throws `std::system_error` when no thread is to be had.
void runDetached(std::function<void()> body);

} // namespace stackreel
