#pragma once

#include <QFileDialog>
#include <QString>

#include <optional>

namespace stackreel
{

/// A file dialog for saving. It first adds a missing suffix and then asks whether to replace an existing
/// file. It stays open while it asks, and when the answer is no. It rejects a file that cannot be written and
/// shows the reason: otherwise the export would fail at its end.
class SaveDialog : public QFileDialog
{
    Q_OBJECT
public:
    /// `suffix` is given without its dot; none adds nothing.
    explicit SaveDialog(std::optional<QString> suffix);

    /// The absolute path of the confirmed file; empty before.
    const QString& chosenFile() const { return m_chosenFile; }

public Q_SLOTS:
    void accept() override;

private:
    QString enteredFile() const;
    QString withSuffix(const QString& file) const;
    void showProblem(const QString& reason);
    void askToReplace(const QString& file);
    void choose(const QString& file);

    std::optional<QString> m_suffix;
    QString m_chosenFile;
};

} // namespace stackreel
