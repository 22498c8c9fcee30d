#pragma once

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
};

} // namespace stackreel
