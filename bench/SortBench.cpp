#include <TabulaControl/Tabula.h>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using TabulaControl::Tabula;

constexpr int32_t MostRows = 32767;

enum class Keys { Numbers, Words };

// A shown grid of the most rows a count holds, column 1 filled with keys in
// no order: numbers, or words with numbers inside.
std::unique_ptr<Tabula> filledGrid(Keys keys)
{
    auto grid = std::make_unique<Tabula>();
    grid->resize(800, 600);
    grid->show();
    grid->setAutoRedraw(false);
    grid->setRows(MostRows);
    grid->setCols(3);
    for (int32_t row = 1; row <= MostRows; ++row) {
        const int32_t key = (row * 7919) % MostRows;
        grid->setTextMatrix(row, 1, keys == Keys::Numbers ? QString::number(key) : QStringLiteral("item %1").arg(key));
        grid->setTextMatrix(row, 2, QString::number(row));
    }
    grid->setAutoRedraw(true);
    return grid;
}

// Each iteration sorts the other way, so every sort moves every row.
void sortRows(benchmark::State& state, Keys keys)
{
    auto grid = filledGrid(keys);
    bool descending = false;
    for (auto _ : state) {
        grid->sort(1, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
        benchmark::DoNotOptimize(grid->Picture().constBits());
        descending = !descending;
    }
}

}  // namespace

BENCHMARK_CAPTURE(sortRows, rows32767_numbers, Keys::Numbers)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sortRows, rows32767_words, Keys::Words)->Unit(benchmark::kMillisecond);
