#include "fuzz/Kinds.h"

#include <QTest>

namespace TabulaFuzz {

using TabulaControl::Tabula;

namespace {

// Reloads the grid from its own saved settings with one value corrupted.
const std::vector<const char*> savedNames{
    "Rows", "Cols", "Row", "Col", "Redraw", "FormatString", "Font", "FontFixed", "FontEdit", "BackColor",
    "GridLineColor", "BorderStyle", "SelectionMode", "ListBoxRows", "MousePointer", "Count", "1Column", "1Value", "FixedStyle",
};

void reload(Harness& h, const Operation& op)
{
    TabulaControl::MemoryPropertyBag bag;
    h.grid().WriteProperties(bag);
    bag.values[op.text] = variant(op.a);
    std::unique_ptr<Tabula> loaded;
    try {
        loaded = std::make_unique<Tabula>(bag);
    } catch (const TabulaControl::ComponentError&) {
        h.replaceGrid(std::make_unique<Tabula>());
        throw;
    }
    h.replaceGrid(std::move(loaded));
}

Kind reloadKind()
{
    return {"reload", false, 1,
            [](Rng& r, const Harness&, Operation& op) {
                op.text = QLatin1String(savedNames.at(size_t(r.range(0, int64_t(savedNames.size()) - 1))));
                op.a = r.range(0, variantCount() - 1);
            },
            reload,
            [](const Operation& op) {
                return QStringLiteral("reload(%1, %2);").arg(literal(op.text), variantLiteral(op.a));
            }};
}

// Sets valid counts and positions through the public setters, then expects
// the grid to paint, store text and follow the keyboard.
void restore(Harness& h, const Operation& op)
{
    Tabula& g = h.grid();
    const QString stale = invalidFields(g).join(QLatin1Char(','));
    const QString from = stale.isEmpty() ? QStringLiteral("restore") : QStringLiteral("restore from %1 outside").arg(stale);
    auto must = [&from](const char* what, const std::function<void()>& body) {
        try {
            body();
        } catch (const TabulaControl::ComponentError& e) {
            throw CheckFailure(QStringLiteral("%1: %2 raised %3").arg(from, QLatin1String(what), e.Source));
        }
    };
    const auto r = i32(op.c);
    const auto c = i32(op.d);
    const std::tuple<const char*, void (Tabula::*)(int32_t), int32_t> settings[] = {
        {"setRows", &Tabula::setRows, i32(op.a)}, {"setCols", &Tabula::setCols, i32(op.b)}, {"setTopRow", &Tabula::setTopRow, r},
        {"setLeftCol", &Tabula::setLeftCol, c},   {"setRow", &Tabula::setRow, r},           {"setCol", &Tabula::setCol, c},
        {"setRow1", &Tabula::setRow1, r},         {"setCol1", &Tabula::setCol1, c},         {"setRow2", &Tabula::setRow2, r},
        {"setCol2", &Tabula::setCol2, c}};
    for (const auto& [name, set, value] : settings)
        must(name, [&, set = set, value = value] { (g.*set)(value); });
    must("setAutoRedraw", [&] { g.setAutoRedraw(true); });
    settle();
    must("Refresh", [&] { g.Refresh(); });
    must("setColMask", [&] { g.setColMask(c, 0); });
    must("setTextMatrix", [&] { g.setTextMatrix(r, c, QStringLiteral("restored")); });
    QString stored;
    must("TextMatrix", [&] { stored = g.TextMatrix(r, c); });
    if (stored != QLatin1String("restored"))
        throw CheckFailure(QStringLiteral("restore: setTextMatrix did not store the text"));
    const QWidget* surface = h.child("picGrid");
    if (surface->width() > 0 && surface->height() > 0 && g.Picture().isNull())
        throw CheckFailure(QStringLiteral("restore: Picture() is empty"));
    h.reportedErrors.clear();
    QTest::keyClick(h.child("picGrid"), Qt::Key_Down);
    settle();
    if (!h.reportedErrors.isEmpty())
        throw CheckFailure(QStringLiteral("restore: a key press raised errorOccurred: %1").arg(h.reportedErrors.first()));
    if (!isValid(g))
        throw CheckFailure(QStringLiteral("restore: a key press left %1 outside the grid").arg(invalidFields(g).join(QLatin1Char(','))));
}

QString printRestore(const Operation& op)
{
    return fill(QStringLiteral(
                    "// restore: every call below must succeed\n"
                    "grid->setRows(%a); grid->setCols(%b); grid->setTopRow(%c); grid->setLeftCol(%d);\n"
                    "grid->setRow(%c); grid->setCol(%d); grid->setRow1(%c); grid->setCol1(%d); grid->setRow2(%c); grid->setCol2(%d);\n"
                    "grid->setAutoRedraw(true); settle(); grid->Refresh(); grid->setColMask(%d, 0);\n"
                    "grid->setTextMatrix(%c, %d, \"restored\"); EXPECT_EQ(grid->TextMatrix(%c, %d), \"restored\");\n"
                    "errors.clear(); QTest::keyClick(child(\"picGrid\"), Qt::Key_Down); settle(); EXPECT_TRUE(errors.isEmpty());"),
                op);
}

Kind restoreKind()
{
    return {"restore", false, 1,
            [](Rng& r, const Harness&, Operation& op) { op = restoreStep(r); },
            restore, printRestore};
}

// Builds a second grid from the grid's saved settings, as a host that
// copies a form does, and uses it a little while the first one lives on.
void copy(Harness& h, const Operation& op)
{
    TabulaControl::MemoryPropertyBag bag;
    h.grid().WriteProperties(bag);
    Tabula second(bag);
    second.resize(int(op.a), int(op.b)), second.show(), settle();
    second.setTextMatrix(1, 1, op.text), (void)second.Picture();
    QTest::keyClick(second.findChild<QWidget*>(QStringLiteral("picGrid")), Qt::Key_Down), settle();
}

Kind copyKind()
{
    const Generate sizes = [](Rng& r, const Harness&, Operation& op) {
        op.a = r.percent(70) ? 400 : r.range(0, 800), op.b = r.percent(70) ? 300 : r.range(0, 600), op.text = text(r);
    };
    const Print print = [](const Operation& op) { return fill(QStringLiteral("call([&] { copyGrid(%a, %b, %s); });"), op); };
    return {"copy", false, 1, sizes, copy, print};
}

// The calls a host makes to bring a grid back to a known state, each twice,
// whatever each of them raises.
struct RestoringCall {
    const char* text;
    void (*call)(Tabula&);
};
#define RESTORING(expression) {#expression, [](Tabula& g) { g.expression; }}
const RestoringCall restoringCalls[] = {
    RESTORING(setAutoRedraw(false)), RESTORING(setEnabled(true)), RESTORING(setCols(4)), RESTORING(setRows(6)),
    RESTORING(setTopRow(1)),         RESTORING(setLeftCol(1)),    RESTORING(setRow(1)),  RESTORING(setCol(1)),
    RESTORING(setRow1(1)),           RESTORING(setCol1(1)),       RESTORING(setRow2(1)), RESTORING(setCol2(1)),
    RESTORING(setColMask(2, 0)),     RESTORING(setAutoRedraw(true)), RESTORING(Refresh())};
#undef RESTORING

void restoreCalls(Harness& h, const Operation&)
{
    for (int round = 0; round < 2; ++round)
        for (const RestoringCall& c : restoringCalls)
            try {
                c.call(h.grid());
            } catch (const TabulaControl::ComponentError&) {
            }
}

QString printRestoreCalls(const Operation&)
{
    QStringList body;
    for (const RestoringCall& c : restoringCalls)
        body << QStringLiteral("try { grid->%1; } catch (const TabulaControl::ComponentError&) {}").arg(QLatin1String(c.text));
    return QStringLiteral("for (int round = 0; round < 2; ++round) {\n    %1\n}").arg(body.join(QStringLiteral("\n    ")));
}

Kind restoreCallsKind() { return {"restoreCalls", false, 1, {}, restoreCalls, printRestoreCalls}; }

}  // namespace

std::vector<Kind> savedSettingsKinds() { return {reloadKind(), restoreKind(), copyKind(), restoreCallsKind()}; }

}  // namespace TabulaFuzz
