#pragma once

#include <stdexcept>

namespace stackreel
{

/// Thrown when a feed is not accepted. `what()` is a sentence for the user.
class UpdateError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Thrown when a document is not a valid feed. `what()` names the error and its place, for the feed's author.
class FeedFormatError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace stackreel
