#include "api/OwnCellsModel.h"

namespace TabulaControl::detail {

OwnCellsModel::OwnCellsModel(Tabula& grid) : QAbstractTableModel(&grid), grid_(grid), rows_(grid.Rows()), cols_(grid.Cols())
{
}

int OwnCellsModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int OwnCellsModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : cols_; }

QVariant OwnCellsModel::data(const QModelIndex& index, int role) const
{
    if (!holds(index))
        return {};
    const QString cell = text(index.row() + 1, index.column() + 1);
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return cell;
    if (role == Qt::CheckStateRole && isCheckColumn(index.column() + 1))
        return cell == QLatin1String("1") ? Qt::Checked : Qt::Unchecked;
    return {};
}

bool OwnCellsModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!holds(index))
        return false;
    QString stored;
    if (role == Qt::EditRole || role == Qt::DisplayRole)
        stored = value.toString();
    else if (role == Qt::CheckStateRole && isCheckColumn(index.column() + 1))
        stored = value.toInt() == Qt::Checked ? QStringLiteral("1") : QStringLiteral("0");
    else
        return false;
    try {
        grid_.setTextMatrix(index.row() + 1, index.column() + 1, stored);
        return true;
    } catch (const ComponentError&) {
        return false;
    }
}

QVariant OwnCellsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    if (orientation == Qt::Horizontal)
        return section >= 0 && section < cols_ ? QVariant(text(0, section + 1)) : QVariant();
    return section >= 0 && section < rows_ ? QVariant(text(section + 1, 0)) : QVariant();
}

Qt::ItemFlags OwnCellsModel::flags(const QModelIndex& index) const
{
    if (!holds(index))
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable;
    if (isCheckColumn(index.column() + 1))
        result |= Qt::ItemIsUserCheckable;
    return result;
}

void OwnCellsModel::cellChanged(int32_t row, int32_t col)
{
    if (row == 0 && col >= 1 && col <= cols_)
        emit headerDataChanged(Qt::Horizontal, col - 1, col - 1);
    else if (col == 0 && row >= 1 && row <= rows_)
        emit headerDataChanged(Qt::Vertical, row - 1, row - 1);
    else if (row >= 1 && row <= rows_ && col >= 1 && col <= cols_)
        emit dataChanged(index(row - 1, col - 1), index(row - 1, col - 1));
}

void OwnCellsModel::rowsAppended(int32_t first, int32_t last)
{
    if (first != rows_ + 1 || grid_.Cols() != cols_) {
        everythingChanged();
        return;
    }
    beginInsertRows({}, first - 1, last - 1);
    rows_ = grid_.Rows();
    endInsertRows();
}

void OwnCellsModel::rowAboutToBeRemoved(int32_t row)
{
    if (row > rows_)
        return;
    beginRemoveRows({}, row - 1, row - 1);
    removing_ = true;
}

void OwnCellsModel::rowRemoved(int32_t)
{
    if (!removing_) {
        everythingChanged();
        return;
    }
    removing_ = false;
    rows_ = grid_.Rows();
    endRemoveRows();
    if (grid_.Cols() != cols_)
        everythingChanged();
}

void OwnCellsModel::everythingChanged()
{
    beginResetModel();
    rows_ = grid_.Rows();
    cols_ = grid_.Cols();
    endResetModel();
}

QString OwnCellsModel::text(int32_t row, int32_t col) const
{
    try {
        return grid_.TextMatrix(row, col);
    } catch (const ComponentError&) {
        return {};
    }
}

bool OwnCellsModel::holds(const QModelIndex& index) const
{
    return index.isValid() && index.model() == this && index.row() < rows_ && index.column() < cols_;
}

bool OwnCellsModel::isCheckColumn(int32_t col) const
{
    try {
        return grid_.ColMask(col) == checkmark;
    } catch (const ComponentError&) {
        return false;
    }
}

}  // namespace TabulaControl::detail
