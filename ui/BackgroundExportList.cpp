#include "ui/BackgroundExportList.h"

#include "model/AppModel.h"

#include <algorithm>

namespace stackreel
{

namespace
{

constexpr int fileNameRole = Qt::UserRole;

} // namespace

BackgroundExportList::BackgroundExportList(const AppModel& model, QObject* parent)
    : QAbstractListModel(parent), m_model(model), m_rows(model.backgroundExports())
{
    connect(&m_model, &AppModel::backgroundExportsChanged, this, &BackgroundExportList::update);
}

void BackgroundExportList::cancel(int row)
{
    if (row >= 0 && row < rowCount())
        m_rows[static_cast<std::size_t>(row)].task->cancel();
}

int BackgroundExportList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant BackgroundExportList::data(const QModelIndex& index, int role) const
{
    if (role != fileNameRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto& file = m_rows[static_cast<std::size_t>(index.row())].destination;
    return QString::fromStdString(file.filename().string());
}

QHash<int, QByteArray> BackgroundExportList::roleNames() const
{
    return {{fileNameRole, "fileName"}};
}

void BackgroundExportList::update()
{
    const auto exports = m_model.backgroundExports();
    for (std::size_t row = m_rows.size(); row-- > 0;)
        if (std::find(exports.begin(), exports.end(), m_rows[row]) == exports.end())
            removeExport(row);
    for (std::size_t row = 0; row < exports.size(); ++row)
        if (row == m_rows.size() || m_rows[row] != exports[row])
            insertExport(row, exports[row]);
}

void BackgroundExportList::removeExport(std::size_t row)
{
    beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
    m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(row));
    endRemoveRows();
}

void BackgroundExportList::insertExport(std::size_t row, const BackgroundExport& item)
{
    beginInsertRows({}, static_cast<int>(row), static_cast<int>(row));
    m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(row), item);
    endInsertRows();
}

} // namespace stackreel
