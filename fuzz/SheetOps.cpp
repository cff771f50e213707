#include "fuzz/Kinds.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QScopeGuard>
#include <QStandardItemModel>
#include <QUndoStack>

namespace TabulaFuzz {

using TabulaControl::Tabula;

namespace {

// Lines of random fields, some quoted, joined by one of the separators.
QString csvText(Rng& r)
{
    static const QString separators = QStringLiteral(",;\t");
    const QChar separator = separators[r.range(0, 2)];
    QString csv;
    for (int64_t line = r.range(0, 6), fields = r.range(1, 5); line > 0; --line) {
        for (int64_t f = r.percent(10) ? r.range(1, 8) : fields; f > 0; --f)
            csv += (r.percent(20) ? QLatin1Char('"') + text(r) + QLatin1Char('"') : text(r)) + (f > 1 ? QString(separator) : QString());
        csv += r.percent(90) ? QStringLiteral("\n") : QStringLiteral("\r\n");
    }
    return csv;
}

TabulaControl::CsvOptions csvOptions(const Operation& op)
{
    static const QString separators = QStringLiteral(",;\t|");
    TabulaControl::CsvOptions options;
    options.separator = op.a == 0 ? QChar() : separators[int(op.a - 1)];
    options.headerRow = op.b != 0;
    return options;
}

void loadCsv(Harness& h, const Operation& op)
{
    QByteArray bytes = op.text.toUtf8();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const auto cancel = op.c ? QObject::connect(&h.grid(), &Tabula::csvProgress, &h.grid(), &Tabula::cancelCsv)
                             : QMetaObject::Connection();
    const auto disconnect = qScopeGuard([&cancel] { QObject::disconnect(cancel); });
    h.grid().loadCsv(buffer, csvOptions(op));
}

// A layout as saved, with one byte changed, or random bytes.
void restoreLayout(Harness& h, const Operation& op)
{
    QByteArray layout = op.a == 2 ? op.text.toLatin1() : h.grid().saveLayout();
    if (op.a == 1 && !layout.isEmpty())
        layout[op.b % layout.size()] = char(op.c);
    (void)h.grid().restoreLayout(layout);
}

// A host model that keeps every cell in memory and, like such a store,
// refuses to grow past what it can hold (Qt's own model would try and fail):
// more than the restoring step asks for, 500 rows of 32,767 columns.
class HostModel : public QStandardItemModel {
public:
    using QStandardItemModel::QStandardItemModel;
    bool insertRows(int row, int count, const QModelIndex& parent = {}) override
    {
        return holds(rowCount() + int64_t{count}, columnCount()) && QStandardItemModel::insertRows(row, count, parent);
    }
    bool insertColumns(int col, int count, const QModelIndex& parent = {}) override
    {
        return holds(rowCount(), columnCount() + int64_t{count}) && QStandardItemModel::insertColumns(col, count, parent);
    }

private:
    static bool holds(int64_t rows, int64_t cols) { return std::max<int64_t>(rows, 1) * std::max<int64_t>(cols, 1) <= 20'000'000; }
};

// A host model of its own size, kept by the grid; or none.
void setModel(Harness& h, const Operation& op)
{
    QStandardItemModel* model = nullptr;
    if (op.a > 0) {
        model = new HostModel(int(op.a), int(op.b), &h.grid());
        for (int r = 0; r < model->rowCount(); ++r)
            for (int c = 0; c < model->columnCount(); ++c)
                model->setItem(r, c, new QStandardItem(QStringLiteral("%1-%2").arg(r).arg(c) + op.text));
    }
    h.grid().setModel(model);
}

}  // namespace

// The sheet editing, file, paper, palette, layout and model members.
std::vector<Kind> sheetKinds()
{
    std::vector<Kind> k;
    k.push_back(flag("setSpreadsheetKeys", &Tabula::setSpreadsheetKeys, 3));
    k.push_back(flag("setSortOnHeaderClick", &Tabula::setSortOnHeaderClick, 2));
    k.push_back(flag("setFollowPalette", &Tabula::setFollowPalette, 1));
    k.push_back({"undo", false, 3, {}, [](Harness& h, const Operation&) { h.grid().undoStack()->undo(); },
                 host("undoStack()->undo()")});
    k.push_back({"redo", false, 2, {}, [](Harness& h, const Operation&) { h.grid().undoStack()->redo(); },
                 host("undoStack()->redo()")});
    k.push_back({"cut", false, 2, {}, [](Harness& h, const Operation&) { h.grid().cut(); }, host("cut()")});
    k.push_back({"sort", false, 3,
                 [](Rng& r, const Harness& h, Operation& op) { op.a = indexFor(r, h.grid().Cols()), op.b = r.range(0, 1); },
                 [](Harness& h, const Operation& op) { h.grid().sort(i32(op.a), Qt::SortOrder(op.b)); },
                 host("sort(%a, Qt::SortOrder(%b))")});
    k.push_back({"loadCsv", false, 3,
                 [](Rng& r, const Harness&, Operation& op) {
                     op.a = r.range(0, 4), op.b = r.range(0, 1), op.c = r.percent(15);
                     op.text = csvText(r);
                 },
                 loadCsv, [](const Operation& op) { return fill(QStringLiteral("loadCsv(%s, %a, %b, %c);"), op); }});
    k.push_back({"saveCsv", false, 1, [](Rng& r, const Harness&, Operation& op) { op.a = r.range(0, 4), op.b = r.range(0, 1); },
                 [](Harness& h, const Operation& op) {
                     QBuffer buffer;
                     buffer.open(QIODevice::WriteOnly);
                     h.grid().saveCsv(buffer, csvOptions(op));
                 },
                 [](const Operation& op) { return fill(QStringLiteral("saveCsv(%a, %b);"), op); }});
    k.push_back({"print", false, 1, {},
                 [](Harness& h, const Operation&) {
                     if (h.grid().Rows() > 60 || h.grid().Cols() > 12)
                         return;
                     QBuffer buffer;
                     buffer.open(QIODevice::WriteOnly);
                     QPdfWriter pdf(&buffer);
                     h.grid().print(&pdf);
                 },
                 [](const Operation&) { return QStringLiteral("printToPdf();"); }});
    k.push_back({"palette", false, 1, [](Rng& r, const Harness&, Operation& op) { op.a = colour(r) & 0xffffff; },
                 [](Harness& h, const Operation& op) { h.grid().setPalette(QPalette(QColor(QRgb(op.a)))); },
                 [](const Operation& op) { return QStringLiteral("grid->setPalette(QPalette(QColor(QRgb(0x%1))));").arg(op.a, 0, 16); }});
    k.push_back({"restoreLayout", false, 2,
                 [](Rng& r, const Harness&, Operation& op) {
                     op.a = r.range(0, 2), op.b = r.range(0, 4000), op.c = r.range(0, 255);
                     for (int64_t n = op.a == 2 ? r.range(0, 40) : 0; n > 0; --n)
                         op.text += QChar(char16_t(r.range(0, 255)));
                 },
                 restoreLayout, [](const Operation& op) { return fill(QStringLiteral("restoreLayout(%a, %b, %c, %s);"), op); }});
    k.push_back({"modelSetData", false, 2,
                 [](Rng& r, const Harness& h, Operation& op) {
                     op.a = indexFor(r, h.grid().Rows()) - 1, op.b = indexFor(r, h.grid().Cols()) - 1, op.text = text(r);
                 },
                 [](Harness& h, const Operation& op) {
                     QAbstractItemModel* m = h.grid().model();
                     m->setData(m->index(i32(op.a), i32(op.b)), op.text);
                     (void)m->data(m->index(i32(op.b), i32(op.a)));
                 },
                 [](const Operation& op) { return fill(QStringLiteral("setModelData(%a, %b, %s);"), op); }});
    k.push_back({"setModel", false, 2,
                 [](Rng& r, const Harness&, Operation& op) {
                     op.a = r.percent(40) ? 0 : r.range(0, 30), op.b = r.range(0, 6), op.text = text(r);
                 },
                 setModel, [](const Operation& op) { return fill(QStringLiteral("setStandardModel(%a, %b, %s);"), op); }});
    return k;
}

}  // namespace TabulaFuzz
