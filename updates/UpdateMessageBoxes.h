#pragma once

#include "updates/UpdateNotifier.h"

#include <QPointer>
#include <QUrl>

#include <functional>

class QDialog;
class QPushButton;

namespace stackreel
{

/// Shows the updater's messages in non-modal dialogs. A new message replaces the previous one. All texts are
/// plain text: markup in them is not interpreted.
class UpdateMessageBoxes : public UpdateNotifier
{
public:
    /// Opens an address in the user's browser; returns false when that is not possible.
    using PageOpener = std::function<bool(const QUrl&)>;

    explicit UpdateMessageBoxes(PageOpener openPage);
    ~UpdateMessageBoxes() override;

    /// The default button opens the download page if the user requested the check; otherwise it closes the
    /// message. A message that the user did not request does not take the keyboard focus.
    void showUpdate(const UpdateRelease& release, const QString& installedVersion,
                    bool userRequested) override;
    void showUpToDate(const QString& installedVersion) override;
    void showError(const QString& sentence) override;

private:
    QDialog* newBox();
    void showSentence(const QString& sentence);
    void showPage(const QString& page);

    PageOpener m_openPage;
    QPointer<QDialog> m_box; ///< deletes itself when it is closed
};

} // namespace stackreel
