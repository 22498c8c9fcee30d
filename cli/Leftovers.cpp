#include "cli/Leftovers.h"

#include "media/ScratchDirectory.h"
#include "system/UnusedFiles.h"

#include <QUuid>

#include <string_view>

namespace stackreel
{

namespace
{

/// Whether it is a name that `PartialFile` gives to hidden files.
bool isHiddenExport(const std::string& name)
{
    constexpr std::string_view prefix = ".stackreel-";
    constexpr std::string_view suffix = ".mp4";
    if (!name.starts_with(prefix) || !name.ends_with(suffix))
        return false;
    const QString text =
        QString::fromStdString(name.substr(prefix.size(), name.size() - prefix.size() - suffix.size()));
    const QUuid uuid = QUuid::fromString(text);
    // Parsing alone accepts more text behind the UUID.
    return !uuid.isNull() && uuid.toString(QUuid::WithoutBraces).toUpper() == text;
}

} // namespace

void removeLeftovers(const std::filesystem::path& destinationFolder)
{
    UnusedFiles::remove(destinationFolder, isHiddenExport);
    ScratchDirectory::removeUnused();
}

} // namespace stackreel
