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
};

const Failure failures[] = {
    {"cell_past_the_end", "TextMatrix", "Subscript out of range", [](Tabula& g) { g.TextMatrix(9, 1); }},
    {"height_over_sixteen_bits", "RowHeight", "Overflow", [](Tabula& g) { g.setRowHeight(1, 70000); }},
    {"colour_not_a_number", "AddItem", "Type mismatch", [](Tabula& g) { g.AddItem("a", QVariant("red")); }},
    {"host_handler_throws", "MouseDown", "host failure",
     [](Tabula& g) { failOnRowColChange(g), g.MouseDown(1, 0, 150, 25); }},
    {"host_fails_on_a_bare_store", "AllowSelection", "host failure",
     [](Tabula& g) {
         QObject::connect(&g, &Tabula::propertyChanged, [] { throw std::runtime_error("host failure"); });
         g.setAllowSelection(false);
     }},
};

class ErrorBoundary : public TabulaTest::NavigationFixture {};
class MemberFailure : public ErrorBoundary, public ::testing::WithParamInterface<Failure> {};

}  // namespace

TEST_P(MemberFailure, RaisesTheComponentErrorWithItsCauseAndLogsNothing)
{
    const ErrorLog log;
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
}

INSTANTIATE_TEST_SUITE_P(ErrorBoundary, MemberFailure, ::testing::ValuesIn(failures),
                         [](const auto& info) { return std::string(info.param.name); });

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
