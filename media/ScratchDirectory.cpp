#include "media/ScratchDirectory.h"

#include "system/Files.h"
#include "system/UnusedFiles.h"

#include <QUuid>

#include <exception>
#include <system_error>

namespace stackreel
{

namespace
{

constexpr std::string_view prefix = "Stackreel-Process-";

std::filesystem::path newPath()
{
    const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    return Files::temporaryDirectory() / (std::string(prefix) + uuid.toStdString());
}

} // namespace

ScratchDirectory::ScratchDirectory() : m_path(newPath()), m_temporary(m_path)
{
    Files::createPrivateDirectory(m_path);
}

ScratchDirectory::~ScratchDirectory()
{
    std::error_code ignored;
    // Remove the known files by name first: listing the folder needs a descriptor, and this process may have
    // none left.
    for (const auto& file : m_files)
        std::filesystem::remove(file, ignored);
    if (!std::filesystem::remove(m_path, ignored))
        std::filesystem::remove_all(m_path, ignored);
}

void ScratchDirectory::removeUnused() noexcept
{
    const auto isName = [](const std::string& name) { return name.starts_with(prefix); };
    const auto isOutput = [](const std::string& name) { return name == "stdout" || name == "stderr"; };
    try {
        UnusedFiles::removeFolders(Files::temporaryDirectory(), isName, isOutput);
    } catch (const std::exception&) {
        // A relative TMPDIR in a working directory that was removed leads to no folder.
    }
}

std::filesystem::path ScratchDirectory::file(std::string_view name)
{
    return m_files.emplace_back(m_path / name);
}

} // namespace stackreel
