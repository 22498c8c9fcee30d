#pragma once

#include "platform/updates/UpdateMessages.h"

#include <QPointer>
#include <QUrl>

#include <functional>

class QMessageBox;

namespace stackreel
{

/// The updater's messages as windows beside the main one, which hold nothing up. A new message takes the
/// place of the one before. All texts are plain: markup in them is shown as it is written.
class UpdateMessageBoxes : public UpdateMessages
{
public:
    /// `openPage` shows an address in the user's browser.
    explicit UpdateMessageBoxes(std::function<void(const QUrl&)> openPage);
    ~UpdateMessageBoxes() override;

    void showUpdate(const UpdateRelease& release, const QString& installedVersion) override;
    void showUpToDate(const QString& installedVersion) override;
    void showTrouble(const QString& sentence) override;

private:
    QMessageBox* newBox(const QString& text);

    std::function<void(const QUrl&)> m_openPage;
    QPointer<QMessageBox> m_box; ///< deletes itself when it is closed
};

} // namespace stackreel
