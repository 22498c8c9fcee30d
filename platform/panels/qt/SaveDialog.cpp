#include "platform/panels/qt/SaveDialog.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace stackreel
{

SaveDialog::SaveDialog(std::optional<QString> suffix) : m_suffix(std::move(suffix))
{
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    // Asked here, for the name with its suffix.
    setOption(QFileDialog::DontConfirmOverwrite);
}

QString SaveDialog::enteredFile() const
{
    // The toolkit's own dialog takes quotation marks for separators between several names.
    const auto* field = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (field != nullptr && field->text().contains(u'"'))
        return directory().absoluteFilePath(field->text());
    return selectedFiles().value(0);
}

QString SaveDialog::withSuffix(const QString& file) const
{
    if (!m_suffix || file.endsWith(u'.' + *m_suffix, Qt::CaseInsensitive))
        return file;
    return file + u'.' + *m_suffix;
}

void SaveDialog::accept()
{
    const QString entered = enteredFile();
    if (entered.isEmpty() || QFileInfo(entered).isDir()) {
        QFileDialog::accept(); // goes into the folder
        return;
    }
    const QString file = withSuffix(entered);
    if (QFileInfo::exists(file))
        askToReplace(file);
    else
        choose(file);
}

void SaveDialog::askToReplace(const QString& file)
{
    auto* question = new QMessageBox(
        QMessageBox::Warning, windowTitle(),
        QStringLiteral("“%1” already exists. Do you want to replace it?").arg(QFileInfo(file).fileName()),
        QMessageBox::Cancel, this);
    question->setTextFormat(Qt::PlainText);
    question->setAttribute(Qt::WA_DeleteOnClose);
    QPushButton* replace = question->addButton(QStringLiteral("Replace"), QMessageBox::AcceptRole);
    question->setDefaultButton(QMessageBox::Cancel);
    connect(replace, &QPushButton::clicked, this, [this, file] { choose(file); });
    // A desktop's own dialog is gone by now.
    connect(question, &QDialog::rejected, this, &QWidget::show);
    question->open();
}

void SaveDialog::choose(const QString& file)
{
    m_chosenFile = QFileInfo(file).absoluteFilePath();
    done(QDialog::Accepted);
}

} // namespace stackreel
