#pragma once

#include <TabulaControl/Tabula.h>

#include "state/GridListener.h"

#include <QAbstractTableModel>

namespace TabulaControl::detail {

// The grid's own cells as a Qt table model: model row r, column c is the
// grid's cell (r + 1, c + 1); the header row and column give the headers.
// It reads and writes through the grid's members and keeps its own copy of
// the counts, so that between the begin and end of a change it reports the
// counts the change started from.
class OwnCellsModel final : public QAbstractTableModel, public GridListener {
public:
    explicit OwnCellsModel(Tabula& grid);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    void cellChanged(int32_t row, int32_t col) override;
    void rowsAppended(int32_t first, int32_t last) override;
    void rowAboutToBeRemoved(int32_t row) override;
    void rowRemoved(int32_t row) override;
    void everythingChanged() override;

private:
    // The text of a grid cell; "" where the grid fails to read it.
    QString text(int32_t row, int32_t col) const;
    bool isCheckColumn(int32_t col) const;
    bool holds(const QModelIndex& index) const;

    Tabula& grid_;
    int rows_ = 0;
    int cols_ = 0;
    bool removing_ = false;
};

}  // namespace TabulaControl::detail
