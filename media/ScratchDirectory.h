#pragma once

#include "system/CleanupProcess.h"

#include <filesystem>
#include <string_view>
#include <vector>

namespace stackreel
{

/// A folder for one run of a child process, named "Stackreel-Process-" and a random UUID, in the temporary
/// directory. The constructor creates it. The destructor removes it with its content. Only this user can
/// access it.
class ScratchDirectory
{
public:
    /// Throws `SystemError` when the folder cannot be created.
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    /// Removes the scratch folders of earlier runs of this user that contain only the output of a child,
    /// unchanged for a day. A folder without output stays: a program may use it without an open file.
    static void removeUnused() noexcept;

    const std::filesystem::path& path() const { return m_path; }

    /// The path of a file in the folder. Does not create the file. The destructor removes the file even when
    /// this process has no descriptor left, which listing the folder would need.
    std::filesystem::path file(std::string_view name);

private:
    std::filesystem::path m_path;
    TemporaryPath m_temporary;
    std::vector<std::filesystem::path> m_files;
};

} // namespace stackreel
