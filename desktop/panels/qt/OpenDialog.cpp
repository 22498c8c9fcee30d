#include "desktop/panels/qt/OpenDialog.h"

#include "desktop/panels/qt/PanelPaths.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>

namespace stackreel
{

OpenDialog::OpenDialog()
{
    setAcceptMode(QFileDialog::AcceptOpen);
    setOption(QFileDialog::ReadOnly);
    // This slot runs after Qt's own slot for the entered text, which disables the button. A native dialog of
    // the desktop has no such field.
    if (const auto* field = findChild<QLineEdit*>(QStringLiteral("fileNameEdit")); field != nullptr)
        connect(field, &QLineEdit::textChanged, this, &OpenDialog::enableOpenForQuotedFile);
}

QString OpenDialog::chosenFile() const
{
    const QString quoted = quotedFile();
    return quoted.isEmpty() ? selectedFiles().value(0) : quoted;
}

void OpenDialog::accept()
{
    if (quotedFile().isEmpty())
        QFileDialog::accept();
    else
        done(QDialog::Accepted);
}

void OpenDialog::enableOpenForQuotedFile()
{
    if (!quotedFile().isEmpty())
        findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->setEnabled(true);
}

QString OpenDialog::quotedFile() const
{
    const QString file = PanelPaths::enteredWithQuotationMarks(*this);
    return QFileInfo(file).isFile() ? file : QString();
}

} // namespace stackreel
