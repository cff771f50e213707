// Paging and thumb jumps through a 32,767 x 10 sheet of distinct texts on a
// shown 1920 x 1080 grid, side by side: Tabula, QTableWidget and a
// QTableView over a flat QList<QString> model, each with its own default
// cell sizes. Every iteration moves the vertical bar and lets the event loop
// show the frame; every frame shows texts never drawn before (the sheet gets
// texts of a new generation, outside the measured time, before any row could
// show a second time).

#include "bench/FullHdGrid.h"

#include <QAbstractTableModel>
#include <QTableView>
#include <QTableWidget>

namespace {

using TabulaBench::distinctText;
using TabulaBench::newGeneration;

constexpr int SheetRows = 32767;
constexpr int SheetCols = 10;
// Jumps between two refills of the thumb-jump figure: spread by a stride
// prime to the range, so many places are reached before two frames overlap.
constexpr int JumpsPerGeneration = 200;
constexpr int JumpStride = 7919;

class FlatTextModel : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : SheetRows; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : SheetCols; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return {};
        return texts_[qsizetype(index.row()) * SheetCols + index.column()];
    }
    void fill(int generation)
    {
        beginResetModel();
        texts_.resize(qsizetype(SheetRows) * SheetCols);
        for (int r = 0; r < SheetRows; ++r)
            for (int c = 0; c < SheetCols; ++c)
                texts_[qsizetype(r) * SheetCols + c] = distinctText(generation, r, c);
        endResetModel();
    }

private:
    QList<QString> texts_;
};

struct TabulaSheet {
    TabulaControl::Tabula widget;
    TabulaSheet()
    {
        widget.resize(TabulaBench::ControlWidth, TabulaBench::ControlHeight);
        widget.setCols(SheetCols + 1);
        widget.setRows(SheetRows);
    }
    // Row and column 0 are the headers.
    void fill() { TabulaBench::writeNewTexts(widget, SheetRows - 1, SheetCols); }
    QScrollBar* bar() { return widget.findChild<QScrollBar*>("scrVertical"); }
};

struct TableWidgetSheet {
    QTableWidget widget{SheetRows, SheetCols};
    TableWidgetSheet() { widget.resize(TabulaBench::ControlWidth - 5, TabulaBench::ControlHeight - 5); }
    void fill()
    {
        const int generation = newGeneration();
        for (int r = 0; r < SheetRows; ++r)
            for (int c = 0; c < SheetCols; ++c)
                widget.setItem(r, c, new QTableWidgetItem(distinctText(generation, r, c)));
    }
    QScrollBar* bar() { return widget.verticalScrollBar(); }
};

struct LeanModelSheet {
    QTableView widget;
    FlatTextModel model;
    LeanModelSheet()
    {
        widget.resize(TabulaBench::ControlWidth - 5, TabulaBench::ControlHeight - 5);
        widget.setModel(&model);
    }
    void fill() { model.fill(newGeneration()); }
    QScrollBar* bar() { return widget.verticalScrollBar(); }
};

template <class Sheet>
std::unique_ptr<Sheet> shownSheet()
{
    auto sheet = std::make_unique<Sheet>();
    sheet->fill();
    sheet->widget.show();
    QApplication::processEvents();
    return sheet;
}

// A jump of one screenful on the vertical bar, then the frame shown.
template <class Sheet>
void pageDown(benchmark::State& state)
{
    auto sheet = shownSheet<Sheet>();
    QScrollBar* bar = sheet->bar();
    for (auto _ : state) {
        if (bar->value() >= bar->maximum()) {
            state.PauseTiming();
            sheet->fill();
            bar->setValue(bar->minimum());
            QApplication::processEvents();
            state.ResumeTiming();
        }
        bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        QApplication::processEvents();
    }
}

// The thumb dropped at far places of the sheet, then the frame shown.
template <class Sheet>
void thumbJump(benchmark::State& state)
{
    auto sheet = shownSheet<Sheet>();
    QScrollBar* bar = sheet->bar();
    const int span = bar->maximum() - bar->minimum() + 1;
    int jumps = 0;
    for (auto _ : state) {
        if (++jumps % JumpsPerGeneration == 0) {
            state.PauseTiming();
            sheet->fill();
            state.ResumeTiming();
        }
        bar->setValue(bar->minimum() + static_cast<int>((int64_t{jumps} * JumpStride) % span));
        QApplication::processEvents();
    }
}

}  // namespace

BENCHMARK_TEMPLATE(pageDown, TabulaSheet)->Name("pageDown/Tabula")->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(pageDown, TableWidgetSheet)->Name("pageDown/QTableWidget")->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(pageDown, LeanModelSheet)->Name("pageDown/QTableView_flat_model")->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(thumbJump, TabulaSheet)->Name("thumbJump/Tabula")->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(thumbJump, TableWidgetSheet)->Name("thumbJump/QTableWidget")->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(thumbJump, LeanModelSheet)
    ->Name("thumbJump/QTableView_flat_model")
    ->Unit(benchmark::kMillisecond);
