#pragma once

#include <QFileDialog>
#include <QString>

#include <filesystem>

namespace stackreel
{

/// Converts between the paths of the dialogs and those on disk, without loss for names in valid UTF-8.
struct PanelPaths {
    static QString text(const std::filesystem::path& path);
    static std::filesystem::path path(const QString& text);
    /// The folder in which a panel starts: `folder` if it still exists, otherwise the user's videos folder,
    /// otherwise the home folder.
    static QString startingFolder(const std::filesystem::path& folder);
    /// The absolute path of the entered name if it has quotation marks, which Qt's own dialog interprets as
    /// separators between several names. Empty for any other name, and always for a native dialog of the
    /// desktop.
    static QString enteredWithQuotationMarks(const QFileDialog& dialog);
};

} // namespace stackreel
