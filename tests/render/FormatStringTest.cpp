#include "tests/support/EngineFixture.h"
#include "tests/support/GridFixture.h"

#include <QFontMetricsF>
#include <QImage>
#include <QSignalSpy>

#include <cmath>
#include <vector>

using TabulaTest::errorOf;

namespace {

// Caption width as the header parser measures it: the control's own widget
// font at 96 DPI.
double measured(const QWidget& control, const QString& text)
{
    QImage device(1, 1, QImage::Format_RGB32);
    device.setDotsPerMeterX(3780);
    device.setDotsPerMeterY(3780);
    return QFontMetricsF(QFont(control.font(), &device), &device).horizontalAdvance(text);
}

int captionWidth(const QWidget& control, const QString& text)
{
    return static_cast<int>(std::nearbyint(measured(control, text) + 5));
}

// Column 0 starts at base and grows to fit each row caption in turn.
int headerColumnWidth(const QWidget& control, int base, const std::vector<QString>& rowCaptions)
{
    int width = base;
    for (const QString& caption : rowCaptions) {
        if (measured(control, caption) + 5 > width)
            width = captionWidth(control, caption);
    }
    return width;
}

enum class Outcome { Kept, Reset, Caption };

struct ColumnExpectation {
    int col;
    Outcome outcome;
    QString caption = {};
    int align = 0;
    QString measuredText = {};
};

ColumnExpectation kept(int col) { return {col, Outcome::Kept}; }
ColumnExpectation reset(int col) { return {col, Outcome::Reset}; }
ColumnExpectation caption(int col, QString text, int align = 0, QString measuredText = {})
{
    const QString widthOf = measuredText.isNull() ? text : measuredText;
    return {col, Outcome::Caption, std::move(text), align, widthOf};
}

struct HeaderCase {
    const char* name;
    QString format;
    int cols;
    int rows;
    std::vector<ColumnExpectation> columns;
    std::vector<QString> rowCaptions = {};
    int headerColumnBase = 32;
    QString corner = QStringLiteral("corner");
};

void PrintTo(const HeaderCase& c, std::ostream* os) { *os << c.name << " \"" << c.format.toStdString() << '"'; }

// Before each case every data column carries the caption "old<c>", the
// width 70 + c and the alignment 2, and the corner cell carries "corner".
class FormatStringGrammar : public TabulaTest::EngineFixture, public ::testing::WithParamInterface<HeaderCase> {
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        for (int c = 1; c <= 5; ++c) {
            s().mCells.setText(0, static_cast<int16_t>(c), QStringLiteral("old%1").arg(c));
            s().mColWidth(c) = static_cast<int16_t>(70 + c);
            s().mColAlign(c) = 2;
        }
        s().mCells.setText(0, 0, QStringLiteral("corner"));
    }

    void expectColumn(const ColumnExpectation& e)
    {
        SCOPED_TRACE(testing::Message() << "column " << e.col);
        const auto col = static_cast<int16_t>(e.col);
        switch (e.outcome) {
        case Outcome::Kept:
            EXPECT_EQ(s().mCells.Text(0, col), QStringLiteral("old%1").arg(e.col));
            EXPECT_EQ(s().mColWidth(e.col), 70 + e.col);
            EXPECT_EQ(s().mColAlign(e.col), 2);
            break;
        case Outcome::Reset:
            EXPECT_EQ(s().mCells.Text(0, col), QString());
            EXPECT_EQ(s().mColWidth(e.col), 64);
            EXPECT_EQ(s().mColAlign(e.col), 2);
            break;
        case Outcome::Caption:
            EXPECT_EQ(s().mCells.Text(0, col), e.caption);
            EXPECT_EQ(s().mColWidth(e.col), captionWidth(host_, e.measuredText));
            EXPECT_EQ(s().mColAlign(e.col), e.align);
            break;
        }
    }
};

TEST_P(FormatStringGrammar, SetsCaptionsAlignmentsWidthsAndCounts)
{
    const HeaderCase& c = GetParam();
    g().setFormatString(c.format);

    EXPECT_EQ(s().mFormatString, c.format);
    EXPECT_EQ(s().mCols, c.cols);
    EXPECT_EQ(s().mRows, c.rows);
    for (const ColumnExpectation& column : c.columns)
        expectColumn(column);
    for (size_t i = 0; i < c.rowCaptions.size(); ++i)
        EXPECT_EQ(s().mCells.Text(static_cast<int16_t>(i + 1), 0), c.rowCaptions[i]) << "row " << i + 1;
    EXPECT_EQ(s().mCells.Text(0, 0), c.corner);
    EXPECT_EQ(s().mColWidth(0), headerColumnWidth(host_, c.headerColumnBase, c.rowCaptions));
}

const HeaderCase headerCases[] = {
    {"MarksSetAlignmentsAndTheResetStartsOneColumnLate", "Name|^Qty|>Price", 5, 1,
     {caption(1, "Name"), caption(2, "Qty", 1), caption(3, "Price", 2), kept(4), reset(5)}},
    {"MoreCaptionsThanColumnsGrowCols", "A|B|C|D|E|F|G", 7, 1,
     {caption(1, "A"), caption(2, "B"), caption(3, "C"), caption(4, "D"), caption(5, "E"), caption(6, "F"),
      caption(7, "G")}},
    {"LeadingSeparatorClearsColumnOne", "|X", 5, 1, {reset(1), caption(2, "X"), kept(3), reset(4), reset(5)}},
    {"RowCaptionsFollowTheSemicolon", "Name;Row one;Row two", 5, 2,
     {caption(1, "Name"), kept(2), kept(3), kept(4), kept(5)},
     {"Row one", "Row two"}},
    {"EmptyFinalTokenSkipsTheReset", "A|B|", 5, 1, {caption(1, "A"), caption(2, "B"), kept(3), kept(4), kept(5)}},
    {"TrailingBlanksWidenButAreNotStored", "Pad  |B", 5, 1,
     {caption(1, "Pad", 0, "Pad  "), caption(2, "B"), kept(3), reset(4), reset(5)}},
    {"OnlyTheFirstMarkIsAMark", "^^Mid", 5, 1, {caption(1, "^Mid", 1), kept(2), reset(3), reset(4), reset(5)}},
    {"LeadingBlanksStay", "  Lead  ", 5, 1, {caption(1, "  Lead", 0, "  Lead  "), kept(2), reset(3)}},
    {"RowCaptionsHaveNoMarks", "<Left;<r1", 5, 1, {caption(1, "Left", 0), kept(2), kept(5)}, {"<r1"}},
    {"EmptyTokenAfterARowCaptionClearsTheCorner", "A;X;;Y", 5, 2,
     {caption(1, "A"), kept(2), kept(5)},
     {"X", "Y"},
     64,
     ""},
    {"EmptyStringChangesNothing", "", 5, 1, {kept(1), kept(2), kept(3), kept(4), kept(5)}},
    {"SemicolonAloneEndsAColumnCaption", "A;", 5, 1, {caption(1, "A"), kept(2), kept(3), kept(4), kept(5)}},
    {"SingleCaptionResetsFromColumnThree", "A", 5, 1, {caption(1, "A"), kept(2), reset(3), reset(4), reset(5)}},
    {"EmptyRowTokenClearsTheNextColumn", "x;;", 5, 1, {caption(1, "x"), reset(2), kept(3), kept(4), kept(5)}},
    {"RowCaptionsGrowRowsAndNarrowCaptionsKeepColumnZero", "A;1;2;3;4", 5, 4,
     {caption(1, "A"), kept(2)},
     {"1", "2", "3", "4"}},
    {"BarsSeparateRowCaptionsToo", "A|B;R1|R2", 5, 2, {caption(1, "A"), caption(2, "B"), kept(3), kept(5)},
     {"R1", "R2"}},
    {"MarkWithoutText", "^", 5, 1, {caption(1, "", 1, ""), kept(2), reset(3), reset(4), reset(5)}},
    {"LongRowCaptionWidensColumnZero", "x;A rather long row caption", 5, 1, {caption(1, "x"), kept(2)},
     {"A rather long row caption"}},
};

INSTANTIATE_TEST_SUITE_P(Strings, FormatStringGrammar, ::testing::ValuesIn(headerCases),
                         [](const auto& info) { return std::string(info.param.name); });

class FormatStringEngine : public TabulaTest::EngineFixture {};

TEST_F(FormatStringEngine, WidthsFollowTheControlsOwnFontNotTheGridFont)
{
    QFont large = host_.font();
    large.setPointSize(30);
    host_.setFont(large);
    s().mFont->Size = 4;

    g().setFormatString("Wide caption");

    EXPECT_EQ(s().mColWidth(1), captionWidth(host_, "Wide caption"));
    EXPECT_GT(s().mColWidth(1), 100);
}

TEST_F(FormatStringEngine, RemovesEveryLookupList)
{
    s().mLookups.push_back({2, "one", {}});
    s().mLookups.push_back({4, "two", 7});
    ASSERT_TRUE(g().ColHasLookup(2));

    g().setFormatString("A");

    EXPECT_TRUE(s().mLookups.empty());
    EXPECT_FALSE(g().ColHasLookup(2));
    EXPECT_FALSE(g().ColHasLookup(4));
}

TEST_F(FormatStringEngine, AutoSetupRemovesEveryLookupList)
{
    s().mLookups.push_back({1, "one", {}});

    g().AutoSetup(2, 3, true, true, QString("A|B|C"));

    EXPECT_TRUE(s().mLookups.empty());
    EXPECT_EQ(s().mCells.Text(0, 3), "C");
}

TEST_F(FormatStringEngine, UpdateHeaderParsesTheStoredStringWithoutNotifying)
{
    QStringList notified;
    g().onPropertyChanged = [&](const QString& name) { notified.append(name); };
    s().mFormatString = ">Total";

    g().UpdateHeader();

    EXPECT_EQ(s().mCells.Text(0, 1), "Total");
    EXPECT_EQ(s().mColAlign(1), 2);
    EXPECT_TRUE(notified.isEmpty());
}

TEST_F(FormatStringEngine, CaptionTooWideForSixteenBitsOverflows)
{
    s().mFormatString = QString(20000, QLatin1Char('W'));
    try {
        g().UpdateHeader();
        ADD_FAILURE() << "no overflow";
    } catch (const TabulaControl::detail::RuntimeError& error) {
        EXPECT_EQ(error.code(), TabulaControl::detail::RuntimeError::Overflow);
    }
}

class FormatStringProperty : public TabulaTest::GridFixture {};

TEST_F(FormatStringProperty, ReadsBackAsGivenAndNotifiesOnce)
{
    QSignalSpy spy(&grid(), &TabulaControl::Tabula::propertyChanged);
    grid().setFormatString("A|B|C|D|E|F");

    EXPECT_EQ(grid().FormatString(), "A|B|C|D|E|F");
    EXPECT_EQ(grid().Cols(), 6);
    EXPECT_EQ(grid().TextMatrix(0, 6), "F");
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0).at(0).toString(), "FormatString");
}

TEST_F(FormatStringProperty, EmptyTokensPastTheLastColumnFailButKeepTheString)
{
    const auto error = errorOf([&] { grid().setFormatString("||||||"); });

    EXPECT_EQ(error.Number, TabulaControl::ComponentError::ErrorNumber);
    EXPECT_EQ(error.Source, "TabulaControl.Tabula.FormatString");
    EXPECT_TRUE(error.Description.startsWith("Tabula component failureat line "));
    EXPECT_EQ(grid().FormatString(), "||||||");
    EXPECT_EQ(grid().Cols(), 5);
    EXPECT_EQ(grid().ColWidth(5), 64);
}

TEST_F(FormatStringProperty, CaptionsAppearOnTheSurface)
{
    auto darkPixelsInHeaderCell = [&](int col) {
        int x = 1 + grid().ColWidth(0) + 1;
        for (int c = 1; c < col; ++c)
            x += grid().ColWidth(c) + 1;
        int count = 0;
        for (int px = x + 2; px < x + grid().ColWidth(col) - 2; ++px) {
            for (int py = 3; py < 1 + grid().RowHeight(0) - 2; ++py)
                count += pixel(px, py) == 0x000000 ? 1 : 0;
        }
        return count;
    };

    grid().setFormatString("|WWWW");
    EXPECT_EQ(darkPixelsInHeaderCell(1), 0);
    EXPECT_GT(darkPixelsInHeaderCell(2), 0);
}

// AutoSetup -------------------------------------------------------------

class AutoSetupMethod : public TabulaTest::GridFixture {};

TEST_F(AutoSetupMethod, BuildsTheWholeGridInOneCall)
{
    grid().setRows(4);
    grid().setTextMatrix(2, 2, "stale");

    grid().AutoSetup(3, 4, false, true, QStringLiteral("^Name|>Qty;First;Second"));

    EXPECT_EQ(grid().Rows(), 3);
    EXPECT_EQ(grid().Cols(), 4);
    EXPECT_FALSE(grid().RowHeader());
    EXPECT_TRUE(grid().ColHeader());
    EXPECT_EQ(grid().FormatString(), "^Name|>Qty;First;Second");
    EXPECT_EQ(grid().TextMatrix(0, 1), "Name");
    EXPECT_EQ(grid().TextMatrix(0, 2), "Qty");
    EXPECT_EQ(grid().TextMatrix(1, 0), "First");
    EXPECT_EQ(grid().TextMatrix(2, 0), "Second");
    EXPECT_EQ(grid().TextMatrix(2, 2), "");
    EXPECT_TRUE(grid().AutoRedraw());
}

TEST_F(AutoSetupMethod, NotifiesTheHeaderFlagsButNotTheFormatString)
{
    QSignalSpy spy(&grid(), &TabulaControl::Tabula::propertyChanged);
    grid().AutoSetup(2, 2, true, false, QStringLiteral("A|B"));

    QStringList names;
    for (const auto& args : spy)
        names.append(args.at(0).toString());
    EXPECT_EQ(names, QStringList({"RowHeader", "ColHeader"}));
}

TEST_F(AutoSetupMethod, KeepsAutoRedrawOffWhenItWasOff)
{
    grid().setAutoRedraw(false);
    grid().AutoSetup(2, 2, true, true, QStringLiteral("A"));
    EXPECT_FALSE(grid().AutoRedraw());
}

struct CountCase {
    const char* name;
    QVariant given;
    int32_t count;
};

class AutoSetupCounts : public TabulaTest::GridFixture, public ::testing::WithParamInterface<CountCase> {};

TEST_P(AutoSetupCounts, ConvertsVariantsAsTheCountSettersTakeThem)
{
    grid().AutoSetup(GetParam().given, GetParam().given, true, true, QVariant());
    EXPECT_EQ(grid().Rows(), GetParam().count);
    EXPECT_EQ(grid().Cols(), GetParam().count);
}

INSTANTIATE_TEST_SUITE_P(Variants, AutoSetupCounts,
                         ::testing::Values(CountCase{"Integer", 6, 6}, CountCase{"NumericText", QString(" 7 "), 7},
                                           CountCase{"HalfRoundsDownToEven", 2.5, 2},
                                           CountCase{"HalfRoundsUpToEven", 3.5, 4},
                                           CountCase{"Empty", QVariant(), 0}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(AutoSetupMethod, FormatStringVariantIsTakenAsText)
{
    grid().AutoSetup(1, 3, true, true, 42);
    EXPECT_EQ(grid().FormatString(), "42");
    EXPECT_EQ(grid().TextMatrix(0, 1), "42");
}

TEST_F(AutoSetupMethod, NonNumericCountFailsAndLeavesAutoRedrawOff)
{
    grid().setRows(5);
    const auto error = errorOf([&] { grid().AutoSetup(QString("many"), 3, true, true, QString("A")); });

    EXPECT_EQ(error.Source, "TabulaControl.Tabula.AutoSetup");
    EXPECT_FALSE(grid().AutoRedraw());
    EXPECT_EQ(grid().Rows(), 0);
    EXPECT_EQ(grid().FormatString(), "");
}

}  // namespace
