#include "updates/UpdateMessageBoxes.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace stackreel
{

namespace
{

constexpr int textWidth = 420; // points

QString translated(const char* text)
{
    return QCoreApplication::translate("UpdateMessageBoxes", text);
}

void addLabel(QDialog* box, const QString& sentence)
{
    auto* const label = new QLabel(sentence, box);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(textWidth);
    box->layout()->addWidget(label);
}

/// The height that the text needs, up to a limit. A longer text gets a scroll bar.
int heightFor(const QPlainTextEdit& edit, const QString& text)
{
    constexpr int maxLines = 12;
    constexpr int margins = 16;
    constexpr int maxMeasured = 2000; // characters
    const QFontMetrics metrics = edit.fontMetrics();
    const QRect bounds = metrics.boundingRect(QRect(0, 0, textWidth - 2 * margins, INT16_MAX),
                                              Qt::TextWrapAnywhere, text.left(maxMeasured));
    return std::min(bounds.height(), maxLines * metrics.lineSpacing()) + metrics.lineSpacing() + margins;
}

/// Adds a read-only field whose text can be selected and copied. The text and its words may be of any length.
void addReadOnlyText(QDialog* box, const QString& text, const QString& name)
{
    auto* const edit = new QPlainTextEdit(text, box);
    edit->setReadOnly(true);
    edit->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    edit->setTabChangesFocus(true);
    edit->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    edit->setAccessibleName(name);
    edit->setMinimumSize(textWidth, heightFor(*edit, text));
    box->layout()->addWidget(edit);
}

/// Adds a row of buttons. Each button closes the box.
QDialogButtonBox* addButtons(QDialog* box, QDialogButtonBox::StandardButtons buttons)
{
    auto* const row = new QDialogButtonBox(buttons, box);
    QObject::connect(row, &QDialogButtonBox::accepted, box, &QDialog::accept);
    QObject::connect(row, &QDialogButtonBox::rejected, box, &QDialog::reject);
    box->layout()->addWidget(row);
    return row;
}

} // namespace

UpdateMessageBoxes::UpdateMessageBoxes(PageOpener openPage) : m_openPage(std::move(openPage)) {}

UpdateMessageBoxes::~UpdateMessageBoxes()
{
    delete m_box;
}

void UpdateMessageBoxes::showUpdate(const UpdateRelease& release, const QString& installedVersion,
                                    bool userRequested)
{
    QDialog* const box = newBox();
    const QString version = QString::fromStdString(release.versionText);
    addLabel(box, translated("Stackreel %1 is available. You have %2.").arg(version, installedVersion));
    if (!release.notes.empty())
        addReadOnlyText(box, QString::fromStdString(release.notes), translated("What is new"));
    QDialogButtonBox* const row = addButtons(box, QDialogButtonBox::NoButton);
    QPushButton* const open = row->addButton(translated("Open Download Page"), QDialogButtonBox::AcceptRole);
    QPushButton* const later = row->addButton(translated("Later"), QDialogButtonBox::RejectRole);
    const QString page = QString::fromStdString(release.downloadPage);
    QObject::connect(box, &QDialog::accepted, [this, page] { showPage(page); });
    QPushButton* const defaultButton = userRequested ? open : later;
    defaultButton->setDefault(true);
    defaultButton->setFocus();
    box->setAttribute(Qt::WA_ShowWithoutActivating, !userRequested);
    box->show();
}

void UpdateMessageBoxes::showUpToDate(const QString& installedVersion)
{
    showSentence(translated("Stackreel %1 is the newest version.").arg(installedVersion));
}

void UpdateMessageBoxes::showError(const QString& sentence)
{
    showSentence(sentence);
}

QDialog* UpdateMessageBoxes::newBox()
{
    // Close the box instead of deleting it, because this function may have been called by one of its buttons.
    if (m_box)
        m_box->close();
    m_box = new QDialog;
    m_box->setWindowTitle(translated("Software Update"));
    m_box->setAttribute(Qt::WA_DeleteOnClose);
    new QVBoxLayout(m_box);
    return m_box;
}

void UpdateMessageBoxes::showSentence(const QString& sentence)
{
    QDialog* const box = newBox();
    addLabel(box, sentence);
    addButtons(box, QDialogButtonBox::Ok);
    box->show();
}

void UpdateMessageBoxes::showPage(const QString& page)
{
    if (m_openPage(QUrl(page, QUrl::StrictMode)))
        return;
    QDialog* const box = newBox();
    addLabel(box,
             translated("Stackreel found no browser to open the download page with. This is its address:"));
    addReadOnlyText(box, page, translated("Address of the download page"));
    addButtons(box, QDialogButtonBox::Ok)->button(QDialogButtonBox::Ok)->setFocus();
    box->show();
}

} // namespace stackreel
