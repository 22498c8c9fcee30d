#pragma once

#include <QFileDialog>
#include <QString>

#include <optional>

namespace stackreel
{

/// A file dialog for saving that adds the suffix a name lacks, and only then asks whether an existing file is
/// to be replaced; it stays open while it asks, and when the answer is no. A name under which nothing can be
/// written is refused with the reason, as an export that failed on it later would cost the user's work.
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
    void refuse(const QString& reason);
    void askToReplace(const QString& file);
    void choose(const QString& file);

    std::optional<QString> m_suffix;
    QString m_chosenFile;
};

} // namespace stackreel
