#include "bench/FullHdGrid.h"

#include <QAbstractTableModel>
#include <QList>
#include <QTableView>
#include <QTableWidget>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <memory>
#include <vector>

// Fills 32,767 x 10 text cells such as "R123C4 g5" (a new generation each
// time) into Tabula, a
// QTableWidget and a QTableView over a flat QList<QString> model, each
// through its ordinary per-cell interface. Reported per grid: the time of
// sizing and filling (the texts are made beforehand and not timed) and the
// heap the filled cells keep once the caller's texts are gone.

namespace {

constexpr int Rows = 32767;
constexpr int Cols = 10;
constexpr double Cells = double(Rows) * Cols;

size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

std::vector<QString> makeTexts()
{
    const int generation = TabulaBench::newGeneration();
    std::vector<QString> texts;
    texts.reserve(static_cast<size_t>(Rows) * Cols);
    for (int r = 1; r <= Rows; ++r) {
        for (int c = 1; c <= Cols; ++c) {
            QString text = QStringLiteral("R%1C%2 g%3").arg(r).arg(c).arg(generation);
            text.squeeze();
            texts.push_back(std::move(text));
        }
    }
    return texts;
}

const QString& textAt(const std::vector<QString>& texts, int row, int col)
{
    return texts[static_cast<size_t>(row) * Cols + static_cast<size_t>(col)];
}

// What a Qt user writes for a table of texts: one QString per cell.
class FlatTextModel : public QAbstractTableModel {
public:
    FlatTextModel(int rows, int cols) : rows_(rows), cols_(cols), texts_(qsizetype(rows) * cols) {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : cols_; }
    Qt::ItemFlags flags(const QModelIndex&) const override
    {
        return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return {};
        return texts_[offset(index)];
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        if (role != Qt::EditRole)
            return false;
        texts_[offset(index)] = value.toString();
        emit dataChanged(index, index, {role});
        return true;
    }

private:
    qsizetype offset(const QModelIndex& index) const { return qsizetype(index.row()) * cols_ + index.column(); }

    int rows_;
    int cols_;
    QList<QString> texts_;
};

struct TabulaGrid {
    TabulaControl::Tabula widget;
    TabulaGrid() { widget.setAutoRedraw(false); }
    void fill(const std::vector<QString>& texts)
    {
        widget.setCols(Cols);
        widget.setRows(Rows);
        for (int r = 0; r < Rows; ++r)
            for (int c = 0; c < Cols; ++c)
                widget.setTextMatrix(r + 1, c + 1, textAt(texts, r, c));
    }
    QString text(int row, int col) const { return widget.TextMatrix(row + 1, col + 1); }
};

struct TableWidgetGrid {
    QTableWidget widget;
    void fill(const std::vector<QString>& texts)
    {
        widget.setColumnCount(Cols);
        widget.setRowCount(Rows);
        for (int r = 0; r < Rows; ++r)
            for (int c = 0; c < Cols; ++c)
                widget.setItem(r, c, new QTableWidgetItem(textAt(texts, r, c)));
    }
    QString text(int row, int col) const { return widget.item(row, col)->text(); }
};

struct LeanModelGrid {
    QTableView widget;
    std::unique_ptr<FlatTextModel> model;
    void fill(const std::vector<QString>& texts)
    {
        model = std::make_unique<FlatTextModel>(Rows, Cols);
        widget.setModel(model.get());
        for (int r = 0; r < Rows; ++r)
            for (int c = 0; c < Cols; ++c)
                model->setData(model->index(r, c), textAt(texts, r, c), Qt::EditRole);
    }
    QString text(int row, int col) const { return model->index(row, col).data().toString(); }
};

template <class Grid>
void fillTextCells(benchmark::State& state)
{
    size_t keptBytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto grid = std::make_unique<Grid>();
        const size_t before = heapInUse();
        auto texts = makeTexts();
        state.ResumeTiming();

        grid->fill(texts);

        state.PauseTiming();
        const bool filled = grid->text(Rows - 1, Cols - 1) == textAt(texts, Rows - 1, Cols - 1);
        std::vector<QString>().swap(texts);
        keptBytes = heapInUse() - before;
        grid.reset();
        state.ResumeTiming();
        if (!filled) {
            state.SkipWithError("the last cell does not hold its text");
            return;
        }
    }
    state.counters["bytes_per_cell"] = double(keptBytes) / Cells;
    state.counters["ns_per_cell"] = benchmark::Counter(Cells * double(state.iterations()),
                                                       benchmark::Counter::kIsRate | benchmark::Counter::kInvert,
                                                       benchmark::Counter::kIs1000);
}

}  // namespace

BENCHMARK_TEMPLATE(fillTextCells, TabulaGrid)->Name("fillTextCells/Tabula")->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(fillTextCells, TableWidgetGrid)->Name("fillTextCells/QTableWidget")->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(fillTextCells, LeanModelGrid)->Name("fillTextCells/QTableView_flat_model")->Unit(benchmark::kMillisecond);
