#pragma once

#include <stdexcept>

namespace stackreel
{

/// A command that cannot be carried out. `what()` is a whole sentence for the user, in UTF-8 except for the
/// bytes of a path in it.
class CliError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace stackreel
