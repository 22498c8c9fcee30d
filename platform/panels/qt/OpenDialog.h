#pragma once

#include <QFileDialog>
#include <QString>

namespace stackreel
{

/// A file dialog for opening that also takes an entered name with quotation marks, which the toolkit's own
/// takes for several names, when there is such a file.
class OpenDialog : public QFileDialog
{
    Q_OBJECT
public:
    OpenDialog();

    /// What was confirmed, absolute; the first where several were, empty where nothing was.
    QString chosenFile() const;

public Q_SLOTS:
    void accept() override;

private:
    /// The file of the entered name with quotation marks; empty when there is none, or no such file.
    QString quotedFile() const;
    void enableForQuotedFile();
};

} // namespace stackreel
