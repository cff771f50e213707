#include "tests/navigation/NavigationFixture.h"

#include <QRegularExpression>

#include <stdexcept>

using TabulaControl::ComponentError;
using TabulaControl::Tabula;

namespace {

// The innermost failure under error, found as a host finds it.
std::string innermost(const std::exception& error)
{
    try {
        std::rethrow_if_nested(error);
    } catch (const std::exception& inner) {
        return innermost(inner);
    }
    return error.what();
}

// The warnings logged under "tabula.errors" while an ErrorLog lives.
QStringList logged;
struct ErrorLog {
    ErrorLog() { logged.clear(); }
    ~ErrorLog() { qInstallMessageHandler(previous); }
    QtMessageHandler previous = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& at,
                                                          const QString& text) {
        if (type == QtWarningMsg && qstrcmp(at.category, "tabula.errors") == 0)
            logged << text;
    });
};

void failOnRowColChange(Tabula& grid)
{
    QObject::connect(grid.events(), &TabulaControl::TabulaEvents::RowColChange,
                     [] { throw std::runtime_error("host failure"); });
}

struct Failure {
    const char* name;
    const char* member;
    const char* cause;
    std::function<void(Tabula&)> body;
    // A property the same failure is written to through the meta-object.
    const char* property = nullptr;
    int value = 0;
};

const char *const Range = "Subscript out of range", *const Overflow = "Overflow", *const Host = "host failure",
                 *const Invalid = "Invalid procedure call or argument";

const Failure failures[] = {
    {"text_matrix_row_past_the_end", "TextMatrix", Range, [](Tabula& g) { g.TextMatrix(11, 1); }},
    {"set_text_matrix_col_past_the_end", "TextMatrix", Range, [](Tabula& g) { g.setTextMatrix(1, 6, "x"); }},
    {"col_width_past_the_end", "ColWidth", Range, [](Tabula& g) { g.ColWidth(6); }},
    {"col_width_below_minus_one", "ColWidth", Range, [](Tabula& g) { g.setColWidth(-2, 10); }},
    {"col_width_of_all_over_sixteen_bits", "ColWidth", Overflow, [](Tabula& g) { g.setColWidth(-1, -40000); }},
    {"row_height_negative", "RowHeight", Range, [](Tabula& g) { g.RowHeight(-1); }},
    {"row_height_over_sixteen_bits", "RowHeight", Overflow, [](Tabula& g) { g.setRowHeight(1, 70000); }},
    {"row_bookmark_past_the_end", "RowBookmark", Range, [](Tabula& g) { g.setRowBookmark(11, 1); }},
    {"row_empty_past_the_end", "RowEmpty", Range, [](Tabula& g) { g.RowEmpty(12); }},
    {"cell_tag_past_the_end", "CellTag", Range, [](Tabula& g) { g.setCellTag(0, 7, "x"); }},
    {"col_align_past_the_end", "ColAlign", Range, [](Tabula& g) { g.ColAlign(9); }},
    {"text_of_a_negative_row", "Text", Range, [](Tabula& g) { g.setRow(-5), g.Text(); }},
    {"rows_over_sixteen_bits", "Rows", Overflow, [](Tabula& g) { g.setRows(40000); }, "Rows", 40000},
    {"rows_negative", "Rows", Range, [](Tabula& g) { g.setRows(-1); }, "Rows", -1},
    {"cols_over_sixteen_bits", "Cols", Overflow, [](Tabula& g) { g.setCols(32768); }, "Cols", 32768},
    {"border_style_over_sixteen_bits", "BorderStyle", Overflow,
     [](Tabula& g) { g.setBorderStyle(static_cast<TabulaControl::BorderStyles>(70000)); }, "BorderStyle", 70000},
    {"fixed_style_over_sixteen_bits", "FixedStyle", Overflow,
     [](Tabula& g) { g.setFixedStyle(static_cast<TabulaControl::FixedStyles>(-40000)); }},
    {"add_button_past_sixteen_bits", "AddButton", Overflow, [](Tabula& g) { g.AddButton(40000); }},
    {"add_lookup_past_sixteen_bits", "AddLookup", Overflow, [](Tabula& g) { g.AddLookup(40000, "v"); }},
    {"font_null", "Font", Invalid, [](Tabula& g) { g.setFont(nullptr); }},
    {"font_edit_null", "FontEdit", Invalid, [](Tabula& g) { g.setFontEdit(nullptr); }},
    {"font_fixed_null", "FontFixed", Invalid, [](Tabula& g) { g.setFontFixed(nullptr); }},
    {"add_item_colour_not_a_number", "AddItem", "Type mismatch", [](Tabula& g) { g.AddItem("a", QVariant("red")); }},
    {"host_handler_throws", "MouseDown", Host, [](Tabula& g) { failOnRowColChange(g), g.MouseDown(1, 0, 150, 25); }},
    {"host_fails_on_a_bare_store", "AllowSelection", Host,
     [](Tabula& g) {
         QObject::connect(&g, &Tabula::propertyChanged, [] { throw std::runtime_error("host failure"); });
         g.setAllowSelection(false);
     }},
};

class ErrorBoundary : public TabulaTest::NavigationFixture {};

// Ten rows of the default five columns.
class MemberFailure : public TabulaTest::WithRows<ErrorBoundary, 10>, public ::testing::WithParamInterface<Failure> {
protected:
    QString shape()
    {
        const auto fonts = QString("%1 %2 %3").arg(quintptr(grid().Font().get())).arg(quintptr(grid().FontEdit().get()))
                               .arg(quintptr(grid().FontFixed().get()));
        return QString("%1x%2 %3/%4 %5 %6 ").arg(grid().Rows()).arg(grid().Cols()).arg(grid().RowHeight(1))
                   .arg(grid().ColWidth(0)).arg(grid().BorderStyle()).arg(grid().FixedStyle()) + fonts;
    }
};

}  // namespace

TEST_P(MemberFailure, RaisesTheComponentErrorWithItsCauseLogsNothingAndKeepsTheShape)
{
    const ErrorLog log;
    const QString before = shape();
    QSignalSpy changes(&grid(), &Tabula::propertyChanged);
    try {
        GetParam().body(grid());
        ADD_FAILURE() << "no component error was raised";
    } catch (const ComponentError& error) {
        EXPECT_EQ(error.Number, -2147221404);
        EXPECT_EQ(error.Source, QString("TabulaControl.Tabula.") + GetParam().member);
        EXPECT_TRUE(error.Description.contains(QRegularExpression("^Tabula component failureat line \\d+$")));
        EXPECT_EQ(innermost(error), GetParam().cause);
        EXPECT_TRUE(error.causeText().endsWith(GetParam().cause)) << qPrintable(error.causeText());
    }
    EXPECT_EQ(logged, QStringList());
    EXPECT_EQ(shape(), before);
    // Only the bare store has notified when the host's handler fails.
    EXPECT_EQ(changes.count(), QByteArray(GetParam().member) == "AllowSelection" ? 1 : 0);
    if (!GetParam().property)
        return;
    // Qt's property system, QUiLoader and Designer get false; the host hears of it.
    const auto reported = errorSources();
    EXPECT_FALSE(grid().setProperty(GetParam().property, GetParam().value));
    EXPECT_EQ(shape(), before);
    EXPECT_EQ(*reported, QStringList{QString("TabulaControl.Tabula.") + GetParam().member});
    EXPECT_EQ(logged.size(), 1);
}

INSTANTIATE_TEST_SUITE_P(ErrorBoundary, MemberFailure, ::testing::ValuesIn(failures), TabulaTest::caseName);

TEST_F(ErrorBoundary, AFailingHandlerReachesErrorOccurredAndTheLogWithItsCause)
{
    QStringList reported;
    QObject::connect(&grid(), &Tabula::errorOccurred, [&](const ComponentError& error) {
        reported << error.Source + " <- " + QString::fromStdString(innermost(error));
    });
    failOnRowColChange(grid());
    const ErrorLog log;
    clickCell(1, 2);
    EXPECT_EQ(reported, QStringList{"TabulaControl.Tabula.picGrid_MouseDown <- host failure"});
    ASSERT_EQ(logged.size(), 1);
    EXPECT_TRUE(logged[0].contains(QRegularExpression(
        "^TabulaControl\\.Tabula\\.picGrid_MouseDown: Tabula component failureat line \\d+; caused by: host failure$")))
        << qPrintable(logged[0]);
}
