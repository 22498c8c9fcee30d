#pragma once

#include <exception>

namespace stackreel
{

/// Thrown by an operation that ended because its stop token fired. Not a failure: callers never show it as
/// one.
class CancellationError : public std::exception
{
public:
    const char* what() const noexcept override { return "cancelled"; }
};

} // namespace stackreel
