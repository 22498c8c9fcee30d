#include "desktop/panels/qt/PanelPaths.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QStandardPaths>

namespace stackreel
{

QString PanelPaths::text(const std::filesystem::path& path)
{
    return QFile::decodeName(QByteArray::fromStdString(path.native()));
}

std::filesystem::path PanelPaths::path(const QString& text)
{
    return QFile::encodeName(text).toStdString();
}

QString PanelPaths::startingFolder(const std::filesystem::path& folder)
{
    if (!folder.empty() && QDir(text(folder)).exists())
        return text(folder);
    const QString videos = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    return QDir(videos).exists() ? videos : QDir::homePath();
}

QString PanelPaths::enteredWithQuotationMarks(const QFileDialog& dialog)
{
    const auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (field == nullptr || !field->text().contains(u'"'))
        return {};
    return dialog.directory().absoluteFilePath(field->text());
}

} // namespace stackreel
