#pragma once

#include <stdexcept>

namespace stackreel
{

/// The temporary folder has no room for what a tool writes, so that the output that was captured may be
/// incomplete. `what()` says so to the user.
class TemporaryFolderFull : public std::runtime_error
{
public:
    TemporaryFolderFull();
};

} // namespace stackreel
