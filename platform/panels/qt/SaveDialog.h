#pragma once

#include <QFileDialog>
#include <QString>

#include <optional>

namespace stackreel
{

/// A file dialog for saving that adds the suffix a name lacks, and only then asks whether an existing file is
/// to be replaced; it stays open while it asks, and when the answer is no.
class SaveDialog : public QFileDialog
{
    Q_OBJECT
public:
    /// `suffix` without its dot; none adds nothing.
    explicit SaveDialog(std::optional<QString> suffix);

    /// What was confirmed, absolute; empty before.
    const QString& chosenFile() const { return m_chosenFile; }

public Q_SLOTS:
    void accept() override;

private:
    QString enteredFile() const;
    QString withSuffix(const QString& file) const;
    void askToReplace(const QString& file);
    void choose(const QString& file);

    std::optional<QString> m_suffix;
    QString m_chosenFile;
};

} // namespace stackreel
