#pragma once

#include <stdexcept>

namespace stackreel
{

/// A feed that must not be trusted. `what()` is a sentence for the user.
class UpdateError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A document that is not a feed. `what()` tells its author where it is wrong.
class FeedFormatError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace stackreel
