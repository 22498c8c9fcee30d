#pragma once

#include <QFileDialog>
#include <QString>

#include <filesystem>

namespace stackreel
{

/// Paths as the dialogs have them and as they are on disk, without loss for names that are valid in UTF-8.
struct PanelPaths {
    static QString text(const std::filesystem::path& path);
    static std::filesystem::path path(const QString& text);
    /// Where a panel starts: the folder, if it still exists, else the user's videos, else the user's home.
    static QString startingFolder(const std::filesystem::path& folder);
    /// The path of the entered name where it has quotation marks, which the toolkit's own dialog takes for
    /// separators between several names; empty where it has none, and for a desktop's dialog.
    static QString enteredWithQuotationMarks(const QFileDialog& dialog);
};

} // namespace stackreel
