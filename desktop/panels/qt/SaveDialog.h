#pragma once

#include <QFileDialog>
#include <QString>

#include <optional>

namespace stackreel
{

/// A file dialog for saving. It first adds a missing suffix and then asks whether to replace an existing
/// file. The dialog stays open while it asks, and also when the user declines. It rejects a file that cannot
/// be written and shows the reason: otherwise the export would only fail at its end.
class SaveDialog : public QFileDialog
{
    Q_OBJECT
public:
    /// `suffix` has no dot; with `std::nullopt` no suffix is added. `source` is a file that cannot be chosen;
    /// empty for none.
    SaveDialog(std::optional<QString> suffix, QString source);

    /// The absolute path of the file that the user confirmed; empty before that.
    const QString& chosenFile() const { return m_chosenFile; }

public Q_SLOTS:
    void accept() override;

private:
    QString enteredFile() const;
    QString reasonToReject(const QFileInfo& file) const;
    QString withSuffix(const QString& file) const;
    void showProblem(const QString& reason);
    void askToReplace(const QString& file);
    void choose(const QString& file);

    std::optional<QString> m_suffix;
    QString m_source;
    QString m_chosenFile;
};

} // namespace stackreel
