#pragma once

#include "platform/updates/UpdateMessages.h"

#include <QPointer>
#include <QUrl>

#include <functional>

class QDialog;
class QPushButton;

namespace stackreel
{

/// The updater's messages as windows beside the main one, which hold nothing up. A new message takes the
/// place of the one before. All texts are plain: markup in them is shown as it is written.
class UpdateMessageBoxes : public UpdateMessages
{
public:
    /// Shows an address in the user's browser; false where that is not possible.
    using PageOpener = std::function<bool(const QUrl&)>;

    explicit UpdateMessageBoxes(PageOpener openPage);
    ~UpdateMessageBoxes() override;

    /// The answer that a single key gives opens the page for a user who asked, and puts the message off for
    /// one who did not; that one's window leaves the keyboard where it is.
    void showUpdate(const UpdateRelease& release, const QString& installedVersion, bool asked) override;
    void showUpToDate(const QString& installedVersion) override;
    void showTrouble(const QString& sentence) override;

private:
    QDialog* newBox();
    void showSentence(const QString& sentence);
    void showPage(const QString& page);

    PageOpener m_openPage;
    QPointer<QDialog> m_box; ///< deletes itself when it is closed
};

} // namespace stackreel
