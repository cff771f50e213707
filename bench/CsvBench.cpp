#include <TabulaControl/Tabula.h>

#include <QBuffer>
#include <QTableWidget>
#include <QTextStream>

#include <benchmark/benchmark.h>

// Loads a 32,767 x 30 comma-separated file of about 15 MB, with a header
// line, into Tabula through loadCsv and into a QTableWidget through the
// plain loop a Qt user writes: QTextStream::readLine, split by hand, setItem.
// The file is made beforehand and not timed.

namespace {

constexpr int Rows = 32767;
constexpr int Cols = 30;

const QByteArray& csvFile()
{
    static const QByteArray file = [] {
        QByteArray bytes;
        for (int c = 1; c <= Cols; ++c)
            bytes += "Column " + QByteArray::number(c) + (c < Cols ? "," : "\n");
        for (int r = 1; r <= Rows; ++r) {
            for (int c = 1; c <= Cols; ++c)
                bytes += "R" + QByteArray::number(r) + "C" + QByteArray::number(c) + " text" + (c < Cols ? "," : "\n");
        }
        return bytes;
    }();
    return file;
}

void loadIntoTabula(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        TabulaControl::Tabula grid;
        QBuffer buffer;
        buffer.setData(csvFile());
        buffer.open(QIODevice::ReadOnly);
        state.ResumeTiming();
        grid.loadCsv(buffer);
        grid.Picture();
        state.PauseTiming();
        if (grid.TextMatrix(Rows, Cols) != QStringLiteral("R%1C%2 text").arg(Rows).arg(Cols))
            state.SkipWithError("the last cell was not loaded");
        state.ResumeTiming();
    }
    state.counters["MB"] = double(csvFile().size()) / 1e6;
}

void loadIntoTableWidget(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        QTableWidget table;
        QBuffer buffer;
        buffer.setData(csvFile());
        buffer.open(QIODevice::ReadOnly);
        state.ResumeTiming();
        QTextStream in(&buffer);
        const QStringList header = in.readLine().split(u',');
        table.setColumnCount(static_cast<int>(header.size()));
        table.setHorizontalHeaderLabels(header);
        int row = 0;
        while (!in.atEnd()) {
            const QStringList fields = in.readLine().split(u',');
            table.insertRow(row);
            for (int c = 0; c < fields.size(); ++c)
                table.setItem(row, c, new QTableWidgetItem(fields[c]));
            ++row;
        }
        state.PauseTiming();
        if (table.item(Rows - 1, Cols - 1)->text() != QStringLiteral("R%1C%2 text").arg(Rows).arg(Cols))
            state.SkipWithError("the last cell was not loaded");
        state.ResumeTiming();
    }
}

}  // namespace

BENCHMARK(loadIntoTabula)->Name("CsvLoad/Tabula")->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(loadIntoTableWidget)->Name("CsvLoad/QTableWidget")->Unit(benchmark::kMillisecond)->Iterations(3);
