#include "fuzz/Kinds.h"
#include "fuzz/Values.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <functional>

namespace TabulaFuzz {

using TabulaControl::Tabula;

namespace {

int64_t rows(const Harness& h) { return h.grid().Rows(); }
int64_t cols(const Harness& h) { return h.grid().Cols(); }

// Keys a user presses on the grid, the editor or the drop-down list.
struct Key {
    Qt::Key key;
    const char* name;
};
#define KEY(name) Key { Qt::Key_##name, "Key_" #name }
const std::vector<Key> keys{
    KEY(Up),     KEY(Down),   KEY(Left),      KEY(Right), KEY(PageUp), KEY(PageDown), KEY(Home),  KEY(End),  KEY(Tab),
    KEY(Backtab), KEY(Return), KEY(Enter),    KEY(Escape), KEY(Space), KEY(Delete),   KEY(Insert), KEY(Backspace),
    KEY(F2),     KEY(F4),     KEY(A),         KEY(Z),     KEY(0),      KEY(5),        KEY(Minus), KEY(Slash), KEY(Period),
    KEY(Y),      KEY(X),      KEY(V),         KEY(C),
};
// Shortcuts of the spreadsheet keys, each pressed with Ctrl.
const std::array<Qt::Key, 7> shortcuts{Qt::Key_Home, Qt::Key_End, Qt::Key_Z, Qt::Key_Y, Qt::Key_X, Qt::Key_V, Qt::Key_C};
#undef KEY

struct Modifiers {
    Qt::KeyboardModifiers value;
    const char* name;
};
struct Button {
    Qt::MouseButton value;
    const char* name;
};
#define NAMED(Type, value) Type { value, #value }
const std::vector<Modifiers> modifiers{
    NAMED(Modifiers, Qt::NoModifier),      NAMED(Modifiers, Qt::NoModifier),  NAMED(Modifiers, Qt::NoModifier),
    NAMED(Modifiers, Qt::ShiftModifier),   NAMED(Modifiers, Qt::ControlModifier), NAMED(Modifiers, Qt::AltModifier),
    NAMED(Modifiers, Qt::ShiftModifier | Qt::ControlModifier),
};
const std::vector<Button> buttons{
    NAMED(Button, Qt::LeftButton),  NAMED(Button, Qt::LeftButton),   NAMED(Button, Qt::LeftButton),
    NAMED(Button, Qt::RightButton), NAMED(Button, Qt::MiddleButton),
};
#undef NAMED

// Children that take mouse input, by the name a test finds them with.
const std::vector<const char*> targets{"picGrid", "picGrid", "picGrid", "picGrid", "scrVertical", "scrHorizontal",
                                       "txtEdit", "cmdButton", "cmdLookup", "List1"};

QWidget* target(const Harness& h, int64_t index)
{
    QWidget* w = h.child(targets.at(static_cast<size_t>(index)));
    if (w && QLatin1String(targets.at(static_cast<size_t>(index))) == QLatin1String("List1"))
        w = w->findChild<QWidget*>(QStringLiteral("qt_scrollarea_viewport"));
    return w && w->isVisible() ? w : nullptr;
}

QString targetLiteral(int64_t index)
{
    const QString name = QLatin1String(targets.at(static_cast<size_t>(index)));
    if (name == QLatin1String("List1"))
        return QStringLiteral("child(\"List1\")->findChild<QWidget*>(\"qt_scrollarea_viewport\")");
    return QStringLiteral("child(\"%1\")").arg(name);
}

// Picks a visible child to point at; packs a point inside it, with a margin,
// into one argument.
int64_t pickTarget(Rng& rng, const Harness& h)
{
    for (int attempt = 0; attempt < 4; ++attempt) {
        const auto index = rng.range(0, static_cast<int64_t>(targets.size()) - 1);
        if (target(h, index))
            return index;
    }
    return 0;
}

int64_t pointIn(Rng& rng, const Harness& h, int64_t index)
{
    QWidget* w = target(h, index);
    const int width = w ? w->width() : 400;
    const int height = w ? w->height() : 300;
    const int64_t x = rng.range(-3, width + 3);
    const int64_t y = rng.percent(30) ? rng.range(0, 20) : rng.range(-3, height + 3);
    return (x + 10000) * 100000 + (y + 10000);
}
QPoint unpack(int64_t packed) { return QPoint(int(packed / 100000 - 10000), int(packed % 100000 - 10000)); }
QString pointLiteral(int64_t packed)
{
    const QPoint p = unpack(packed);
    return QStringLiteral("QPoint(%1, %2)").arg(p.x()).arg(p.y());
}

void generatePointer(Rng& rng, const Harness& h, Operation& op)
{
    op.a = pickTarget(rng, h);
    op.b = pointIn(rng, h, op.a);
    op.c = pointIn(rng, h, op.a);
    op.d = rng.range(0, static_cast<int64_t>(buttons.size() * modifiers.size()) - 1);
}
const Button& buttonOf(const Operation& op) { return buttons.at(static_cast<size_t>(op.d) % buttons.size()); }
const Modifiers& modifiersOf(const Operation& op) { return modifiers.at(static_cast<size_t>(op.d) / buttons.size()); }

// A side of the top-level window: tiny, small, the usual or large.
int64_t extent(Rng& r, int64_t usual, int64_t large)
{
    switch (r.range(0, 3)) {
    case 0: return r.range(0, 5);
    case 1: return r.range(6, 120);
    case 2: return usual;
    default: return r.range(usual, large);
    }
}

void drag(QWidget* w, const Operation& op)
{
    const QPoint from = unpack(op.b);
    const QPoint to = unpack(op.c);
    QTest::mousePress(w, buttonOf(op).value, modifiersOf(op).value, from);
    QTest::mouseMove(w, (from + to) / 2);
    QTest::mouseMove(w, to);
    QTest::mouseRelease(w, buttonOf(op).value, modifiersOf(op).value, to);
}

void wheel(QWidget* w, const Operation& op)
{
    const QPoint at = unpack(op.b);
    const QPoint delta = op.d ? QPoint(int(op.c), 0) : QPoint(0, int(op.c));
    QWheelEvent event(at, w->mapToGlobal(at), QPoint(), delta, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &event);
}

// A press of a button at one point of a child, such as a click or a double click.
Kind clickKind(const char* name, int weight,
               void (*press)(QWidget*, Qt::MouseButton, Qt::KeyboardModifiers, QPoint, int), const char* call)
{
    return {QLatin1String(name), true, weight, generatePointer,
            [press](Harness& h, const Operation& op) {
                if (QWidget* w = target(h, op.a))
                    press(w, buttonOf(op).value, modifiersOf(op).value, unpack(op.b), -1);
            },
            [call](const Operation& op) {
                return QStringLiteral("%1(%2, %3, %4, %5);")
                    .arg(QLatin1String(call), targetLiteral(op.a), QLatin1String(buttonOf(op).name),
                         QLatin1String(modifiersOf(op).name), pointLiteral(op.b));
            }};
}

std::vector<Kind> inputKinds()
{
    std::vector<Kind> k;
    k.push_back({"key", true, 50,
                 [](Rng& r, const Harness&, Operation& op) {
                     op.a = r.range(0, static_cast<int64_t>(keys.size()) - 1);
                     op.b = r.range(0, static_cast<int64_t>(modifiers.size()) - 1);
                     if (r.percent(15)) {
                         const Qt::Key key = shortcuts[size_t(r.range(0, int64_t(shortcuts.size()) - 1))];
                         op.a = std::find_if(keys.begin(), keys.end(), [key](const Key& k) { return k.key == key; }) - keys.begin();
                         op.b = 4;  // Qt::ControlModifier
                     }
                 },
                 [](Harness& h, const Operation& op) {
                     QTest::keyClick(h.keyboardTarget(), keys.at(size_t(op.a)).key, modifiers.at(size_t(op.b)).value);
                 },
                 [](const Operation& op) {
                     return QStringLiteral("QTest::keyClick(focused(), Qt::%1, %2);")
                         .arg(QLatin1String(keys.at(size_t(op.a)).name), QLatin1String(modifiers.at(size_t(op.b)).name));
                 }});
    k.push_back(clickKind("click", 18, &QTest::mouseClick, "QTest::mouseClick"));
    k.push_back(clickKind("doubleClick", 5, &QTest::mouseDClick, "QTest::mouseDClick"));
    k.push_back({"drag", true, 10, generatePointer,
                 [](Harness& h, const Operation& op) {
                     if (QWidget* w = target(h, op.a))
                         drag(w, op);
                 },
                 [](const Operation& op) {
                     return QStringLiteral("drag(%1, %2, %3, %4, %5);")
                         .arg(targetLiteral(op.a), QLatin1String(buttonOf(op).name), QLatin1String(modifiersOf(op).name),
                              pointLiteral(op.b), pointLiteral(op.c));
                 }});
    k.push_back({"hover", true, 6, generatePointer,
                 [](Harness& h, const Operation& op) {
                     if (QWidget* w = target(h, op.a))
                         QTest::mouseMove(w, unpack(op.b));
                 },
                 [](const Operation& op) {
                     return QStringLiteral("QTest::mouseMove(%1, %2);").arg(targetLiteral(op.a), pointLiteral(op.b));
                 }});
    k.push_back({"wheel", true, 5,
                 [](Rng& r, const Harness& h, Operation& op) {
                     generatePointer(r, h, op);
                     static const std::array<int64_t, 6> deltas{120, -120, 240, -240, 1200, -1200};
                     op.c = deltas[size_t(r.range(0, 5))];
                     op.d = r.range(0, 1);
                 },
                 [](Harness& h, const Operation& op) {
                     if (QWidget* w = target(h, op.a))
                         wheel(w, op);
                 },
                 [](const Operation& op) {
                     return QStringLiteral("wheel(%1, %2, %3);")
                         .arg(targetLiteral(op.a), pointLiteral(op.b),
                              op.d ? QStringLiteral("QPoint(%1, 0)").arg(op.c) : QStringLiteral("QPoint(0, %1)").arg(op.c));
                 }});
    k.push_back({"resize", true, 4,
                 [](Rng& r, const Harness&, Operation& op) {
                     op.a = extent(r, 400, 2500);
                     op.b = extent(r, 300, 1600);
                 },
                 [](Harness& h, const Operation& op) { h.grid().resize(int(op.a), int(op.b)); },
                 [](const Operation& op) { return fill(QStringLiteral("grid->resize(%a, %b);"), op); }});
    k.push_back({"wait", true, 2, [](Rng& r, const Harness&, Operation& op) { op.a = r.range(0, 15); },
                 [](Harness&, const Operation& op) { QTest::qWait(int(op.a)); },
                 [](const Operation& op) { return fill(QStringLiteral("QTest::qWait(%a);"), op); }});
    return k;
}

// A host call whose printed line is the call with %a, %b and %s for the
// arguments it was given.
#define HOST_CALL(Name, weight, generate, arguments, printed)                                                   \
    Kind{#Name, false, weight, generate,                                                                        \
         [](Harness& h, [[maybe_unused]] const Operation& op) { (void)h.grid().Name arguments; }, host(#Name printed)}

// A host call with one row, column or count argument.
Kind indexCall(const char* name, void (Tabula::*call)(int32_t), Generate generate, int weight = 1)
{
    return oneArgument<int32_t>(name, call, weight, std::move(generate), i32, [](int64_t v) { return QString::number(v); });
}

// Host calls with row and column arguments.
std::vector<Kind> cellKinds()
{
    auto row = [](Rng& r, const Harness& h, Operation& op) { op.a = indexFor(r, rows(h)); };
    auto col = [](Rng& r, const Harness& h, Operation& op) { op.a = indexFor(r, cols(h)); };
    auto cell = [](Rng& r, const Harness& h, Operation& op) {
        op.a = indexFor(r, rows(h));
        op.b = indexFor(r, cols(h));
        op.text = text(r);
    };
    std::vector<Kind> k;
    k.push_back(indexCall("setRows", &Tabula::setRows,
                          [](Rng& r, const Harness&, Operation& op) { op.a = countFrom(r, {0, 1, 1, 2, 3, 10, 10, 40, 200, 3000}); }, 6));
    k.push_back(indexCall("setCols", &Tabula::setCols,
                          [](Rng& r, const Harness&, Operation& op) { op.a = countFrom(r, {0, 1, 2, 3, 5, 5, 8, 20, 60, 300}); }, 4));
    k.push_back(indexCall("setRow", &Tabula::setRow, row, 4));
    k.push_back(indexCall("setCol", &Tabula::setCol, col, 4));
    k.push_back(indexCall("setTopRow", &Tabula::setTopRow, row, 3));
    k.push_back(indexCall("setLeftCol", &Tabula::setLeftCol, col, 3));
    k.push_back(indexCall("setRow1", &Tabula::setRow1, row));
    k.push_back(indexCall("setCol1", &Tabula::setCol1, col));
    k.push_back(indexCall("setRow2", &Tabula::setRow2, row));
    k.push_back(indexCall("setCol2", &Tabula::setCol2, col));
    k.push_back(HOST_CALL(setText, 3, [](Rng& r, const Harness&, Operation& op) { op.text = text(r); }, (op.text), "(%s)"));
    k.push_back(HOST_CALL(setTextMatrix, 5, cell, (i32(op.a), i32(op.b), op.text), "(%a, %b, %s)"));
    k.push_back(HOST_CALL(TextMatrix, 1, cell, (i32(op.a), i32(op.b)), "(%a, %b)"));
    k.push_back(HOST_CALL(setCellTag, 1, cell, (i32(op.a), i32(op.b), op.text), "(%a, %b, %s)"));
    k.push_back(HOST_CALL(CellTag, 1, cell, (i32(op.a), i32(op.b)), "(%a, %b)"));
    // Sizes go to the header line, or with -1 to every line, now and then,
    // often negative there: lines past the view then come into it.
    auto line = [](Rng& r, Operation& op, int64_t count) {
        op.a = r.percent(25) ? r.range(-1, 0) : indexFor(r, count);
        op.b = op.a <= 0 && r.percent(40) ? r.range(-32768, -1) : pixels(r);
    };
    auto sizeSetter = [line](const char* name, int weight, void (Tabula::*set)(int32_t, int32_t), auto count) {
        return Kind{QLatin1String(name), false, weight, [=](Rng& r, const Harness& h, Operation& op) { line(r, op, count(h)); },
                    [set](Harness& h, const Operation& op) {
                        h.negativeSizes |= op.b < 0;
                        (h.grid().*set)(i32(op.a), i32(op.b));
                    },
                    host(QLatin1String(name) + QLatin1String("(%a, %b)"))};
    };
    k.push_back(sizeSetter("setRowHeight", 2, &Tabula::setRowHeight, rows));
    k.push_back(sizeSetter("setColWidth", 3, &Tabula::setColWidth, cols));
    auto rowAndValue = [row](Rng& r, const Harness& h, Operation& op) { row(r, h, op), op.b = r.range(0, variantCount() - 1); };
    k.push_back(HOST_CALL(setRowBookmark, 1, rowAndValue, (i32(op.a), variant(op.b)), "(%a, %B)"));
    k.push_back(HOST_CALL(RowEmpty, 1, row, (i32(op.a)), "(%a)"));
    k.push_back(indexCall("RemoveItem", &Tabula::RemoveItem, row, 3));
    auto item = [](Rng& r, const Harness&, Operation& op) {
        op.text = text(r);
        op.b = r.percent(80) ? 0 : r.range(0, variantCount() - 1);
        op.c = r.percent(80) ? 0 : r.range(0, variantCount() - 1);
    };
    k.push_back(HOST_CALL(AddItem, 4, item, (op.text, variant(op.b), variant(op.c)), "(%s, %B, %C)"));
    k.push_back(HOST_CALL(Clear, 1, {}, (), "()"));
    return k;
}

// Host calls on columns: alignment, masks, editing, lookups and buttons.
std::vector<Kind> columnKinds()
{
    auto col = [](Rng& r, const Harness& h, Operation& op) {
        op.a = r.percent(40) ? h.grid().Col() : indexFor(r, cols(h));
        op.b = smallEnum(r, 4);
        op.text = text(r);
        op.c = r.range(0, variantCount() - 1);
    };
    std::vector<Kind> k;
    k.push_back(HOST_CALL(setColAlign, 1, col, (i32(op.a), i32(op.b)), "(%a, %b)"));
    k.push_back(HOST_CALL(ColAlign, 1, col, (i32(op.a)), "(%a)"));
    k.push_back(HOST_CALL(setColMask, 2, col, (i32(op.a), i32(op.b)), "(%a, %b)"));
    k.push_back(HOST_CALL(setColAllowEdit, 1, col, (i32(op.a), (op.b & 1) != 0), "(%a, (%b & 1) != 0)"));
    auto editWidth = [](Rng& r, const Harness& h, Operation& op) {
        op.a = indexFor(r, cols(h));
        op.b = r.percent(20) ? boundaryInt(r) : r.range(-1, 80);
    };
    k.push_back(HOST_CALL(setColEditWidth, 1, editWidth, (i32(op.a), i16(op.b)), "(%a, int16_t(%b))"));
    k.push_back(HOST_CALL(AddLookup, 4, col, (i32(op.a), op.text, variant(op.c)), "(%a, %s, %C)"));
    k.push_back(HOST_CALL(LookupItemData, 1, col, (i32(op.a), op.text), "(%a, %s)"));
    k.push_back(HOST_CALL(RemoveLookupValue, 1, col, (i32(op.a), op.text), "(%a, %s)"));
    k.push_back(indexCall("RemoveLookup", &Tabula::RemoveLookup, col));
    k.push_back(indexCall("AddButton", &Tabula::AddButton, col, 2));
    k.push_back(indexCall("RemoveButton", &Tabula::RemoveButton, col));
    return k;
}

Kind colourSetter(const char* name, void (Tabula::*setter)(TabulaControl::OleColor))
{
    return oneArgument<TabulaControl::OleColor>(
        name, setter, 1, [](Rng& r, const Harness&, Operation& op) { op.a = colour(r); },
        [](int64_t v) { return static_cast<TabulaControl::OleColor>(v); }, [](int64_t v) { return QStringLiteral("0x%1").arg(v, 0, 16); });
}

Kind fontSetter(const char* name, void (Tabula::*setter)(TabulaControl::FontRef))
{
    return oneArgument<TabulaControl::FontRef>(
        name, setter, 1, [](Rng& r, const Harness&, Operation& op) { op.a = r.range(0, fontCount() - 1); },
        font, fontLiteral);
}

template <class E>
Kind enumSetter(const char* name, void (Tabula::*setter)(E), const char* type, int64_t last)
{
    return oneArgument<E>(
        name, setter, 1, [last](Rng& r, const Harness&, Operation& op) { op.a = smallEnum(r, last); },
        [](int64_t v) { return static_cast<E>(v); }, [type](int64_t v) { return QStringLiteral("%1(%2)").arg(QLatin1String(type)).arg(v); });
}

std::vector<Kind> appearanceKinds()
{
    std::vector<Kind> k{
        flag("setAutoRedraw", &Tabula::setAutoRedraw, 3),
        flag("setColHeader", &Tabula::setColHeader),
        flag("setRowHeader", &Tabula::setRowHeader),
        flag("setShowGrid", &Tabula::setShowGrid),
        flag("setGridSolid", &Tabula::setGridSolid),
        flag("setUseBackColorAlt", &Tabula::setUseBackColorAlt),
        flag("setAllowSelection", &Tabula::setAllowSelection),
        flag("setAllowUserResizing", &Tabula::setAllowUserResizing),
        flag("setSelectText", &Tabula::setSelectText),
        flag("setAutoNewRow", &Tabula::setAutoNewRow, 2),
        flag("setUseItemData", &Tabula::setUseItemData),
        flag("setEnabled", &Tabula::setEnabled),
        colourSetter("setGridLineColor", &Tabula::setGridLineColor),
        colourSetter("setBackColor", &Tabula::setBackColor),
        colourSetter("setBackColorAlt", &Tabula::setBackColorAlt),
        colourSetter("setBackColorFixed", &Tabula::setBackColorFixed),
        colourSetter("setBackColorBkg", &Tabula::setBackColorBkg),
        colourSetter("setForeColor", &Tabula::setForeColor),
        colourSetter("setForeColorFixed", &Tabula::setForeColorFixed),
        fontSetter("setFont", &Tabula::setFont),
        fontSetter("setFontEdit", &Tabula::setFontEdit),
        fontSetter("setFontFixed", &Tabula::setFontFixed),
        enumSetter("setBorderStyle", &Tabula::setBorderStyle, "TabulaControl::BorderStyles", 3),
        enumSetter("setFixedStyle", &Tabula::setFixedStyle, "TabulaControl::FixedStyles", 1),
        enumSetter("setSelectionMode", &Tabula::setSelectionMode, "TabulaControl::SelectModes", 2),
        enumSetter("setMousePointer", &Tabula::setMousePointer, "int16_t", 15),
        enumSetter("setListBoxRows", &Tabula::setListBoxRows, "int16_t", 12),
    };
    k.push_back(HOST_CALL(Refresh, 2, {}, (), "()"));
    k.push_back(HOST_CALL(Picture, 1, {}, (), "()"));
    k.push_back(HOST_CALL(setFormatString, 2, [](Rng& r, const Harness&, Operation& op) { op.text = formatString(r); },
                          (op.text), "(%s)"));
    auto setup = [](Rng& r, const Harness&, Operation& op) {
        op.a = r.range(0, variantCount() - 1), op.b = r.range(0, variantCount() - 1), op.c = r.range(0, 3);
        op.text = formatString(r);
    };
    k.push_back(HOST_CALL(AutoSetup, 1, setup, (variant(op.a), variant(op.b), op.c & 1, op.c & 2, QVariant(op.text)),
                          "(%A, %B, (%c & 1) != 0, (%c & 2) != 0, QVariant(%s))"));
    return k;
}

// The host's own calls of the input members.
std::vector<Kind> hostInputKinds()
{
    auto generate = [](Rng& r, const Harness& h, Operation& op) {
        op.a = r.range(0, 7);
        op.b = r.range(0, 7);
        op.c = coordinate(r, h.grid().width());
        op.d = coordinate(r, h.grid().height());
    };
    auto print = [](const char* name) {
        return [name](const Operation& op) {
            return QStringLiteral("call([&] { grid->%1(%2, %3, %4, %5); });")
                .arg(QLatin1String(name)).arg(op.a).arg(op.b).arg(coordinateLiteral(op.c), coordinateLiteral(op.d));
        };
    };
    using Mouse = void (Tabula::*)(int16_t, int16_t, float, float);
    auto mouse = [](Mouse m) {
        return [m](Harness& h, const Operation& op) {
            (h.grid().*m)(i16(op.a), i16(op.b), coordinateValue(op.c), coordinateValue(op.d));
        };
    };
    std::vector<Kind> k;
    k.push_back({"MouseDown", false, 2, generate, mouse(&Tabula::MouseDown), print("MouseDown")});
    k.push_back({"MouseMove", false, 1, generate, mouse(&Tabula::MouseMove), print("MouseMove")});
    k.push_back({"MouseUp", false, 2, generate, mouse(&Tabula::MouseUp), print("MouseUp")});
    k.push_back(HOST_CALL(DblClick, 1, {}, (), "()"));
    auto keyCode = [](Rng& r, const Harness&, Operation& op) {
        static const std::array<int64_t, 12> codes{9, 13, 27, 33, 34, 35, 36, 37, 38, 39, 40, 46};
        op.a = r.percent(10) ? boundaryInt(r) : codes[size_t(r.range(0, 11))];
        op.b = r.range(0, 7);
    };
    k.push_back(HOST_CALL(KeyDown, 2, keyCode, (i16(op.a), i16(op.b)), "(int16_t(%a), %b)"));
    return k;
}

#undef HOST_CALL

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all = [] {
        std::vector<Kind> k;
        for (auto group : {inputKinds(), cellKinds(), columnKinds(), appearanceKinds(), hostInputKinds(), savedSettingsKinds(),
                           sheetKinds()})
            k.insert(k.end(), group.begin(), group.end());
        return k;
    }();
    return all;
}

int kindIndex(const QString& name)
{
    for (size_t i = 0; i < kinds().size(); ++i)
        if (kinds()[i].name == name)
            return int(i);
    return -1;
}

const Kind& kindOf(const Operation& op) { return kinds().at(static_cast<size_t>(op.kind)); }

}  // namespace

Kind flag(const char* name, void (Tabula::*set)(bool), int weight)
{
    return oneArgument<bool>(
        name, set, weight, [](Rng& r, const Harness&, Operation& op) { op.a = r.range(0, 1); },
        [](int64_t v) { return v != 0; }, [](int64_t v) { return QLatin1String(v ? "true" : "false"); });
}

Operation restoreStep(Rng& rng)
{
    Operation op;
    op.kind = kindIndex(QStringLiteral("restore"));
    op.a = rng.percent(50) ? rng.range(1, 20) : rng.range(1, 500);
    op.b = rng.range(1, 12);
    op.c = rng.range(1, op.a);
    op.d = rng.range(1, op.b);
    return op;
}

Operation generate(Rng& rng, const Harness& harness)
{
    static const int total = [] {
        int sum = 0;
        for (const Kind& k : kinds())
            sum += k.weight;
        return sum;
    }();
    int64_t ticket = rng.range(0, total - 1);
    Operation op;
    for (size_t i = 0; i < kinds().size(); ++i) {
        ticket -= kinds()[i].weight;
        if (ticket < 0) {
            op.kind = int(i);
            break;
        }
    }
    if (kindOf(op).generate)
        kindOf(op).generate(rng, harness, op);
    // Only steps printed as a bare call can print chained.
    op.chained = !kindOf(op).input && rng.percent(25) && print(op).startsWith(QLatin1String("call("));
    return op;
}

void run(Harness& harness, const Operation& op) { kindOf(op).run(harness, op); }
QString print(const Operation& op) { return kindOf(op).print(op); }
bool isInput(const Operation& op) { return kindOf(op).input; }
QString nameOf(const Operation& op) { return kindOf(op).name; }

QString serialize(const Operation& op)
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6%7")
        .arg(kindOf(op).name)
        .arg(op.a)
        .arg(op.b)
        .arg(op.c)
        .arg(op.d)
        .arg(QString::fromLatin1(op.text.toUtf8().toHex()), QLatin1String(op.chained ? " chained" : ""));
}

std::optional<Operation> deserialize(const QString& line)
{
    const QStringList parts = line.split(QLatin1Char(' '));
    if (parts.size() < 5)
        return std::nullopt;
    Operation op;
    op.kind = kindIndex(parts[0]);
    if (op.kind < 0)
        return std::nullopt;
    op.a = parts[1].toLongLong();
    op.b = parts[2].toLongLong();
    op.c = parts[3].toLongLong();
    op.d = parts[4].toLongLong();
    if (parts.size() > 5)
        op.text = QString::fromUtf8(QByteArray::fromHex(parts[5].toLatin1()));
    op.chained = parts.size() > 6 && parts[6] == QLatin1String("chained");
    return op;
}

}  // namespace TabulaFuzz
