#include "desktop/panels/qt/FileOpenPanel.h"

#include "desktop/panels/qt/ContentTypeFilters.h"
#include "desktop/panels/qt/OpenDialog.h"
#include "desktop/panels/qt/PanelPaths.h"

#include <utility>

namespace stackreel
{

namespace
{

QFileDialog::FileMode fileMode(const OpenPanelRequest& request)
{
    if (!request.canChooseFiles && request.canChooseDirectories)
        return QFileDialog::Directory;
    return request.allowsMultipleSelection ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile;
}

} // namespace

void FileOpenPanel::begin(const OpenPanelRequest& request, PanelCompletion completion)
{
    auto dialog = std::make_unique<OpenDialog>();
    dialog->setWindowTitle(QString::fromStdString(request.title));
    dialog->setFileMode(fileMode(request));
    dialog->setNameFilters(ContentTypeFilters::names(request.allowedContentTypes));
    dialog->selectNameFilter(ContentTypeFilters::initial(request.allowedContentTypes));
    dialog->setDirectory(PanelPaths::startingFolder(m_folders->open()));
    dialog->setLabelText(QFileDialog::Accept, QString::fromStdString(request.prompt));

    const auto choice = [this, shown = dialog.get()]() -> std::optional<std::filesystem::path> {
        const QString chosen = shown->chosenFile();
        if (chosen.isEmpty())
            return std::nullopt;
        const auto file = PanelPaths::path(chosen);
        m_folders->setOpenedFile(file);
        return file;
    };
    m_shown.show(std::move(dialog), choice, std::move(completion));
}

} // namespace stackreel
