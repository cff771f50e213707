#include "state/ItemModelSource.h"

#include <QTimer>

namespace TabulaControl::detail {

namespace {

// How close to the last loaded row a read must come to load more.
constexpr int32_t FetchMargin = 64;

}  // namespace

QString ItemModelSource::text(int32_t row, int32_t col) const
{
    if (!model_ || (row == 0 && col == 0))
        return {};
    if (row == 0)
        return model_->headerData(col - 1, Qt::Horizontal).toString();
    if (col == 0)
        return model_->headerData(row - 1, Qt::Vertical).toString();
    if (row + FetchMargin > model_->rowCount())
        fetchMoreSoon();
    return model_->index(row - 1, col - 1).data().toString();
}

bool ItemModelSource::setText(int32_t row, int32_t col, const QString& text)
{
    if (!model_ || (row == 0 && col == 0))
        return false;
    if (row == 0)
        return model_->setHeaderData(col - 1, Qt::Horizontal, text);
    if (col == 0)
        return model_->setHeaderData(row - 1, Qt::Vertical, text);
    return model_->setData(model_->index(row - 1, col - 1), text);
}

bool ItemModelSource::insertRows(int32_t first, int32_t count)
{
    return model_ && model_->insertRows(first - 1, count);
}

bool ItemModelSource::removeRows(int32_t first, int32_t count)
{
    return model_ && model_->removeRows(first - 1, count);
}

bool ItemModelSource::insertColumns(int32_t first, int32_t count)
{
    return model_ && model_->insertColumns(first - 1, count);
}

bool ItemModelSource::removeColumns(int32_t first, int32_t count)
{
    return model_ && model_->removeColumns(first - 1, count);
}

void ItemModelSource::fetchMoreSoon() const
{
    if (fetchPending_ || !model_->canFetchMore({}))
        return;
    fetchPending_ = true;
    QTimer::singleShot(0, &lifetime_, [this, model = model_] {
        fetchPending_ = false;
        if (model && model->canFetchMore({}))
            model->fetchMore({});
    });
}

// QAbstractItemModel::sort does nothing unless the model implements it;
// a model that cannot sort shows its rows as they were. A model that sorts
// by resetting itself, as QSqlTableModel does, leaves the lines as they were.
bool ItemModelSource::sortRows(int32_t col, bool descending, std::vector<int32_t>& followed)
{
    if (!model_)
        return false;
    std::vector<QPersistentModelIndex> records;
    for (const int32_t line : followed)
        records.emplace_back(line >= 1 ? model_->index(line - 1, 0) : QModelIndex());
    model_->sort(col - 1, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    for (size_t i = 0; i < followed.size(); ++i) {
        if (records[i].isValid())
            followed[i] = records[i].row() + 1;
    }
    return true;
}

}  // namespace TabulaControl::detail
