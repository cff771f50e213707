// A grid bound to a host's model beside QTableView on the same model: ten
// million computed rows, and an SQLite table through QSqlTableModel. The
// memory a widget adds is the heap in use after showing its first page
// minus before binding (mallinfo2), reported as the counter added_kB.

#include <TabulaControl/Tabula.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QKeyEvent>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QTableView>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>

namespace {

using TabulaControl::Tabula;

constexpr int Width = 1280, Height = 720;
constexpr int SqlRows = 20'000;

class Computed : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 10'000'000; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 10; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return {};
        return QStringLiteral("%1:%2").arg(index.row()).arg(index.column());
    }
};

size_t heapInUse() { return mallinfo2().uordblks; }

template <class Widget>
std::unique_ptr<Widget> shown()
{
    auto widget = std::make_unique<Widget>();
    widget->resize(Width, Height);
    widget->show();
    QApplication::processEvents();
    return widget;
}

void showFirstPage(Tabula& grid) { benchmark::DoNotOptimize(grid.Picture().constBits()); }
void showFirstPage(QTableView& view) { benchmark::DoNotOptimize(view.grab().cacheKey()); }

// Times binding model and showing the first page; the widget is made and
// dropped outside the timing.
template <class Widget>
void bindAndShow(benchmark::State& state, QAbstractItemModel& model)
{
    size_t added = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto widget = shown<Widget>();
        const size_t before = heapInUse();
        state.ResumeTiming();
        widget->setModel(&model);
        showFirstPage(*widget);
        state.PauseTiming();
        added = heapInUse() - before;
        widget.reset();
        state.ResumeTiming();
    }
    state.counters["added_kB"] = static_cast<double>(added) / 1024;
}

void bindComputedTabula(benchmark::State& state)
{
    Computed model;
    bindAndShow<Tabula>(state, model);
}

void bindComputedTableView(benchmark::State& state)
{
    Computed model;
    bindAndShow<QTableView>(state, model);
}

void pressPageDown(QWidget& target)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_PageDown, Qt::NoModifier);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_PageDown, Qt::NoModifier);
    QApplication::sendEvent(&target, &press);
    QApplication::sendEvent(&target, &release);
}

void pageDownTabula(benchmark::State& state)
{
    Computed model;
    auto grid = shown<Tabula>();
    grid->setModel(&model);
    showFirstPage(*grid);
    QWidget& surface = *grid->findChild<QWidget*>(QStringLiteral("picGrid"));
    for (auto _ : state) {
        pressPageDown(surface);
        showFirstPage(*grid);
    }
}

void pageDownTableView(benchmark::State& state)
{
    Computed model;
    auto view = shown<QTableView>();
    view->setModel(&model);
    view->setFocus();
    showFirstPage(*view);
    for (auto _ : state) {
        pressPageDown(*view);
        showFirstPage(*view);
    }
}

// An SQLite file of SqlRows orders in a temporary folder, open as "orders".
class OrdersFile {
public:
    OrdersFile()
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("orders"));
        db.setDatabaseName(dir_.filePath(QStringLiteral("orders.sqlite")));
        db.open();
        QSqlQuery query(db);
        query.exec(QStringLiteral("create table orders (id integer primary key, customer text, product text, "
                                  "quantity integer, price text)"));
        db.transaction();
        query.prepare(QStringLiteral("insert into orders values (?, ?, ?, ?, ?)"));
        for (int id = 1; id <= SqlRows; ++id) {
            for (const QVariant& value : {QVariant(id), QVariant(QStringLiteral("Customer %1").arg(id % 97)),
                                          QVariant(QStringLiteral("Product %1").arg(id % 13)), QVariant(id % 50),
                                          QVariant(QStringLiteral("%1.50").arg(id % 300))})
                query.addBindValue(value);
            query.exec();
        }
        db.commit();
    }
    ~OrdersFile() { QSqlDatabase::removeDatabase(QStringLiteral("orders")); }

private:
    QTemporaryDir dir_;
};

template <class Widget>
void sqlFirstPage(benchmark::State& state)
{
    OrdersFile file;
    {
        QSqlTableModel model(nullptr, QSqlDatabase::database(QStringLiteral("orders")));
        model.setTable(QStringLiteral("orders"));
        model.select();
        bindAndShow<Widget>(state, model);
    }
}

void sqlFirstPageTabula(benchmark::State& state) { sqlFirstPage<Tabula>(state); }
void sqlFirstPageTableView(benchmark::State& state) { sqlFirstPage<QTableView>(state); }

}  // namespace

BENCHMARK(bindComputedTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(bindComputedTableView)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(pageDownTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(pageDownTableView)->Unit(benchmark::kMillisecond);
BENCHMARK(sqlFirstPageTabula)->Unit(benchmark::kMillisecond);
BENCHMARK(sqlFirstPageTableView)->Unit(benchmark::kMillisecond);
