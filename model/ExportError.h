#pragma once

#include <stdexcept>

namespace stackreel
{

/// An export that cannot be made, or that did not become what was asked for. `what()` is a whole sentence for
/// the user, in UTF-8 except for the bytes of a path in it.
class ExportError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace stackreel
