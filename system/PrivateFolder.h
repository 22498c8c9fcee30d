#pragma once

#include <filesystem>
#include <string>

namespace stackreel
{

/// A folder that only this user can enter, held open with a shared lock: as long as the object exists, no
/// other one of the same folder, in this process or another, can get the exclusive lock. Not copyable; any
/// thread, one at a time.
class PrivateFolder
{
public:
    /// The folder `name` in the temporary directory, which all users share: with this user's number, because
    /// two users cannot have one folder.
    static std::filesystem::path pathOfUser(const std::string& name);

    /// Creates the folder, or opens an existing one and takes the access of other users away. Waits while
    /// another object has the exclusive lock. Throws `SystemError` when it cannot be created, is a link or no
    /// folder, or belongs to another user.
    explicit PrivateFolder(const std::filesystem::path& path);
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    /// Tries to change the lock to an exclusive one. Returns false when another object of the folder exists,
    /// or when its file system has no locks.
    bool lockExclusively() const;

    /// A path to this folder that leads there as long as the object exists, also where another folder or a
    /// link has taken the name. Only for this process.
    std::filesystem::path heldPath() const;

private:
    int m_descriptor;
};

} // namespace stackreel
