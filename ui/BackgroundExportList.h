#pragma once

#include "model/BackgroundExport.h"

#include <QAbstractListModel>

#include <vector>

namespace stackreel
{

class AppModel;

/// The background exports as a list for QML, with the role `fileName`. A row that stays keeps its delegate,
/// and so the keyboard focus, when another row goes away. The model must outlive the list. Main thread.
class BackgroundExportList : public QAbstractListModel
{
    Q_OBJECT
public:
    explicit BackgroundExportList(const AppModel& model, QObject* parent = nullptr);

    /// Cancels the export of a row. Its row stays until the export has ended. Does nothing if there is no
    /// such row.
    void cancel(int row);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    void update();
    void removeExport(std::size_t row);
    void insertExport(std::size_t row, const BackgroundExport& item);

    const AppModel& m_model;
    std::vector<BackgroundExport> m_rows;
};

} // namespace stackreel
