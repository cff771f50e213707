#pragma once

#include "state/CellSource.h"

#include <QAbstractItemModel>
#include <QPointer>

namespace TabulaControl::detail {

// A host's Qt item model as the cells of a grid: model row r, column c is
// the grid's cell (r + 1, c + 1); the header data is the header row and
// column. A model that loads its rows in steps is asked for more once a
// row near its end is read, after the reading call.
class ItemModelSource final : public CellSource {
public:
    explicit ItemModelSource(QAbstractItemModel& model) : model_(&model) {}

    QAbstractItemModel* model() const { return model_; }

    int32_t rowCount() const override { return model_ ? model_->rowCount() : 0; }
    int32_t columnCount() const override { return model_ ? model_->columnCount() : 0; }
    QString text(int32_t row, int32_t col) const override;
    bool setText(int32_t row, int32_t col, const QString& text) override;
    bool insertRows(int32_t first, int32_t count) override;
    bool removeRows(int32_t first, int32_t count) override;
    bool insertColumns(int32_t first, int32_t count) override;
    bool removeColumns(int32_t first, int32_t count) override;
    bool sortRows(int32_t col, bool descending, std::vector<int32_t>& followed) override;

private:
    // Asks the model for more rows, once, when the current call is done.
    void fetchMoreSoon() const;

    QPointer<QAbstractItemModel> model_;
    mutable bool fetchPending_ = false;
    // Ends a pending fetch with the source.
    QObject lifetime_;
};

}  // namespace TabulaControl::detail
