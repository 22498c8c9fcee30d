#include "desktop/panels/qt/SaveDialog.h"

#include "desktop/panels/qt/PanelPaths.h"

#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace stackreel
{

namespace
{

/// The longest file name that common file systems allow, in bytes.
constexpr qsizetype maxNameBytes = 255;

/// The reason why the file cannot be written, for the user; empty if it can be written.
QString reasonNotWritable(const QFileInfo& file)
{
    const QFileInfo folder(file.absolutePath());
    if (!folder.isDir())
        return QStringLiteral("The folder “%1” does not exist.").arg(file.absolutePath());
    if (QFile::encodeName(file.fileName()).size() > maxNameBytes)
        return QStringLiteral("The name is too long. Choose a shorter one.");
    if (file.exists() && !file.isWritable())
        return QStringLiteral("“%1” cannot be written to.").arg(file.fileName());
    // A file is replaced by another one of its folder.
    if (!folder.isWritable())
        return QStringLiteral("“%1” cannot be written to.").arg(file.absolutePath());
    return {};
}

} // namespace

SaveDialog::SaveDialog(std::optional<QString> suffix, QString source)
    : m_suffix(std::move(suffix)), m_source(std::move(source))
{
    setAcceptMode(QFileDialog::AcceptSave);
    setFileMode(QFileDialog::AnyFile);
    // Qt would look for a file without the suffix. `accept` adds the suffix and then asks.
    setOption(QFileDialog::DontConfirmOverwrite);
}

QString SaveDialog::enteredFile() const
{
    const QString quoted = PanelPaths::enteredWithQuotationMarks(*this);
    return quoted.isEmpty() ? selectedFiles().value(0) : quoted;
}

/// The reason why the file cannot be chosen, for the user; empty if it can be.
QString SaveDialog::reasonToReject(const QFileInfo& file) const
{
    if (!m_source.isEmpty() && file.exists() && file == QFileInfo(m_source))
        return QStringLiteral("“%1” is the video that is exported. Choose another name.")
            .arg(file.fileName());
    return reasonNotWritable(file);
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
        QFileDialog::accept(); // shows the folder
        return;
    }
    const QString file = withSuffix(entered);
    if (const QString reason = reasonToReject(QFileInfo(file)); !reason.isEmpty())
        showProblem(reason);
    else if (QFileInfo::exists(file))
        askToReplace(file);
    else
        choose(file);
}

void SaveDialog::showProblem(const QString& reason)
{
    auto* message = new QMessageBox(QMessageBox::Warning, windowTitle(), reason, QMessageBox::Ok, this);
    message->setTextFormat(Qt::PlainText);
    message->setAttribute(Qt::WA_DeleteOnClose);
    // A desktop's native dialog has closed by now.
    connect(message, &QDialog::finished, this, &QWidget::show);
    message->open();
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
    // A desktop's native dialog has closed by now.
    connect(question, &QDialog::rejected, this, &QWidget::show);
    question->open();
}

void SaveDialog::choose(const QString& file)
{
    m_chosenFile = QFileInfo(file).absoluteFilePath();
    done(QDialog::Accepted);
}

} // namespace stackreel
