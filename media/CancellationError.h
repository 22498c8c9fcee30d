#pragma once

#include <exception>

namespace stackreel
{

/// Thrown by an operation that ended because its stop token fired. It is not a failure, and callers never
/// show it as one.
class CancellationError : public std::exception
{
public:
    const char* what() const noexcept override { return "cancelled"; }
};

} // namespace stackreel
