#include "desktop/panels/qt/FileSavePanel.h"

#include "desktop/panels/qt/ContentTypeFilters.h"
#include "desktop/panels/qt/PanelPaths.h"
#include "desktop/panels/qt/SaveDialog.h"

#include <utility>

namespace stackreel
{

void FileSavePanel::begin(const SavePanelRequest& request, PanelCompletion completion)
{
    auto dialog = std::make_unique<SaveDialog>(
        ContentTypeFilters::requiredSuffix(request.allowedContentTypes), PanelPaths::text(request.source));
    dialog->setWindowTitle(QString::fromStdString(request.title));
    dialog->setOption(QFileDialog::ReadOnly, !request.canCreateDirectories);
    dialog->setNameFilters(ContentTypeFilters::names(request.allowedContentTypes));
    dialog->setDirectory(PanelPaths::startingFolder(m_folders->save()));
    dialog->setLabelText(QFileDialog::Accept, QString::fromStdString(request.prompt));
    dialog->selectFile(PanelPaths::text(request.defaultName));

    const auto choice = [shown = dialog.get()]() -> std::optional<std::filesystem::path> {
        return PanelPaths::path(shown->chosenFile());
    };
    m_shown.show(std::move(dialog), choice, std::move(completion));
}

} // namespace stackreel
