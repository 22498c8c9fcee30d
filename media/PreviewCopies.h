#pragma once

#include <filesystem>

namespace stackreel
{

/// The files of preview proxies, in the folder "Stackreel-" and the user's number of the temporary directory.
/// If that cannot be used (`PrivateFolder`), for example because another user has created it, they are in a
/// new private folder that `CleanupProcess` removes after the end of this process. Any thread.
struct PreviewCopies {
    /// The path of a new copy; the file is not created. From now on the copies in the folder are in use until
    /// this process ends. Throws `SystemError` when no folder can be created.
    static std::filesystem::path newFile();

    /// Removes the copies of earlier runs, unless a running program, this one included, has called `newFile`.
    /// What cannot be removed stays.
    static void removeUnused() noexcept;
};

} // namespace stackreel
