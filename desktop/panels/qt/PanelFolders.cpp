#include "desktop/panels/qt/PanelFolders.h"

#include "desktop/panels/qt/PanelPaths.h"
#include "system/StateFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <utility>

namespace stackreel
{

namespace
{

/// The content is the path as it is on disk, because a name may contain any byte, line breaks too.
std::filesystem::path storedFolder(const std::filesystem::path& file)
{
    constexpr qint64 maxBytes = 4096; // the system's limit for a path
    const QString name = PanelPaths::text(file);
    QFile stored(name);
    // Do not open a named pipe: that would block.
    if (!QFileInfo(name).isFile() || !stored.open(QIODevice::ReadOnly))
        return {};
    std::filesystem::path folder = stored.read(maxBytes).toStdString();
    return folder.is_absolute() ? folder : std::filesystem::path();
}

} // namespace

PanelFolders::PanelFolders(std::filesystem::path file) : m_file(std::move(file)), m_open(storedFolder(m_file))
{
}

std::filesystem::path PanelFolders::standardFile()
{
    return stateFolder() / "open-folder";
}

void PanelFolders::setOpenedFile(const std::filesystem::path& file)
{
    m_save = file.parent_path();
    if (m_open == m_save)
        return;
    m_open = m_save;
    write();
}

void PanelFolders::write() const
{
    if (m_file.empty())
        return;
    const QString name = PanelPaths::text(m_file);
    QDir().mkpath(QFileInfo(name).path());
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(QByteArray::fromStdString(m_open.native()));
    file.commit();
}

} // namespace stackreel
