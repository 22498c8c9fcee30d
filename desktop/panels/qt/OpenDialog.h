#pragma once

#include <QFileDialog>
#include <QString>

namespace stackreel
{

/// A file dialog for opening that also accepts an entered name with quotation marks if such a file exists.
/// Qt's own dialog interprets the marks as separators between several names.
class OpenDialog : public QFileDialog
{
    Q_OBJECT
public:
    OpenDialog();

    /// The absolute path of the file that the user confirmed; the first one if there are several. Empty if
    /// nothing was confirmed.
    QString chosenFile() const;

public Q_SLOTS:
    void accept() override;

private:
    /// The file whose entered name has quotation marks. Empty when the name has none, or no such file exists.
    QString quotedFile() const;
    void enableOpenForQuotedFile();
};

} // namespace stackreel
