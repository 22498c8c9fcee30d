#include "platform/updates/UpdateMessageBoxes.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

namespace stackreel
{

namespace
{

QString translated(const char* text)
{
    return QCoreApplication::translate("UpdateMessageBoxes", text);
}

/// Notes that fit into the box are shown at once, longer ones in its scrolling part.
void addNotes(QMessageBox* box, const QString& notes)
{
    constexpr int mostCharacters = 600;
    constexpr int mostLines = 12;
    if (notes.size() <= mostCharacters && notes.count(QLatin1Char('\n')) < mostLines)
        box->setInformativeText(notes);
    else
        box->setDetailedText(notes);
    // The box's own text format leaves its informative text out.
    for (QLabel* label : box->findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
}

} // namespace

UpdateMessageBoxes::UpdateMessageBoxes(std::function<void(const QUrl&)> openPage)
    : m_openPage(std::move(openPage))
{
}

UpdateMessageBoxes::~UpdateMessageBoxes()
{
    delete m_box;
}

void UpdateMessageBoxes::showUpdate(const UpdateRelease& release, const QString& installedVersion)
{
    const QString version = QString::fromStdString(release.versionText);
    QMessageBox* const box =
        newBox(translated("Stackreel %1 is available. You have %2.").arg(version, installedVersion));
    addNotes(box, QString::fromStdString(release.notes));
    const QPushButton* const open = box->addButton(translated("Open Download Page"), QMessageBox::AcceptRole);
    box->addButton(translated("Later"), QMessageBox::RejectRole);
    const QUrl page(QString::fromStdString(release.downloadPage), QUrl::StrictMode);
    QObject::connect(open, &QPushButton::clicked, box, [openPage = m_openPage, page] { openPage(page); });
    box->show();
}

void UpdateMessageBoxes::showUpToDate(const QString& installedVersion)
{
    newBox(translated("Stackreel %1 is the newest version.").arg(installedVersion))->show();
}

void UpdateMessageBoxes::showTrouble(const QString& sentence)
{
    newBox(sentence)->show();
}

QMessageBox* UpdateMessageBoxes::newBox(const QString& text)
{
    delete m_box;
    m_box = new QMessageBox(QMessageBox::NoIcon, translated("Software Update"), text);
    m_box->setAttribute(Qt::WA_DeleteOnClose);
    m_box->setTextFormat(Qt::PlainText);
    m_box->setWindowModality(Qt::NonModal);
    return m_box;
}

} // namespace stackreel
