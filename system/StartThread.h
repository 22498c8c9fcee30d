#pragma once

#include "system/SystemError.h"

#include <thread>
#include <utility>

namespace stackreel
{

/// Starts a thread. Throws `SystemError`, with a sentence for the user, if the system cannot start another
/// thread.
template <typename Body>
std::thread startThread(Body body)
{
    try {
        return std::thread(std::move(body));
    } catch (const std::system_error& error) {
        throw SystemError(error.code().value(), "start a thread");
    }
}

} // namespace stackreel
