#include "tests/support/GridFixture.h"

#include <QFontMetricsF>
#include <QStandardItemModel>

#include <cmath>
#include <vector>

using TabulaControl::Tabula;
using TabulaTest::errorOf;

namespace {

// Caption width as the header parser measures it: the control's own widget
// font at 96 DPI, plus 5.
double measured(const QWidget& control, const QString& text)
{
    QImage device(1, 1, QImage::Format_RGB32);
    device.setDotsPerMeterX(3780);
    device.setDotsPerMeterY(3780);
    return QFontMetricsF(QFont(control.font(), &device), &device).horizontalAdvance(text) + 5;
}

int captionWidth(const QWidget& control, const QString& text)
{
    return static_cast<int>(std::nearbyint(measured(control, text)));
}

// A data column after parsing: kept as it was ("old<c>", width 70 + c),
// reset (no caption, width 64) or captioned. Alignments show in the golden
// pictures.
struct Column {
    enum { Kept, Reset, Caption } outcome;
    QString caption = {};
    QString measuredText = {};
};
const Column K{Column::Kept}, R{Column::Reset};
Column cap(const QString& text, const QString& measuredText = {})
{
    return {Column::Caption, text, measuredText.isNull() ? text : measuredText};
}

struct HeaderCase {
    const char* name;
    QString format;
    int cols, rows;
    std::vector<Column> columns;  // from column 1
    std::vector<QString> rowCaptions = {};
    int headerColumnBase = 32;
    QString corner = QStringLiteral("corner");
};

class FormatStringGrammar : public TabulaTest::GridFixture, public ::testing::WithParamInterface<HeaderCase> {};

TEST_P(FormatStringGrammar, SetsCaptionsWidthsAndCounts)
{
    for (int32_t c = 1; c <= 5; ++c) {
        grid().setTextMatrix(0, c, QStringLiteral("old%1").arg(c));
        grid().setColWidth(c, 70 + c);
    }
    grid().setTextMatrix(0, 0, QStringLiteral("corner"));
    const HeaderCase& h = GetParam();
    grid().setFormatString(h.format);

    EXPECT_EQ(grid().FormatString(), h.format);
    EXPECT_EQ(grid().Cols(), h.cols);
    EXPECT_EQ(grid().Rows(), h.rows);
    for (int32_t c = 1; c <= int32_t(h.columns.size()); ++c) {
        const Column& e = h.columns[size_t(c - 1)];
        const bool kept = e.outcome == Column::Kept, captioned = e.outcome == Column::Caption;
        EXPECT_EQ(grid().TextMatrix(0, c), kept ? QStringLiteral("old%1").arg(c) : e.caption) << "column " << c;
        EXPECT_EQ(grid().ColWidth(c), kept ? 70 + c : captioned ? captionWidth(grid(), e.measuredText) : 64)
            << "column " << c;
    }
    int headerColumn = h.headerColumnBase;
    for (size_t i = 0; i < h.rowCaptions.size(); ++i) {
        EXPECT_EQ(grid().TextMatrix(int32_t(i + 1), 0), h.rowCaptions[i]) << "row " << i + 1;
        if (measured(grid(), h.rowCaptions[i]) > headerColumn)
            headerColumn = captionWidth(grid(), h.rowCaptions[i]);
    }
    EXPECT_EQ(grid().TextMatrix(0, 0), h.corner);
    EXPECT_EQ(grid().ColWidth(0), headerColumn);
}

const HeaderCase headerCases[] = {
    {"MarksSetAlignmentsAndTheResetStartsOneColumnLate", "Name|^Qty|>Price", 5, 1,
     {cap("Name"), cap("Qty"), cap("Price"), K, R}},
    {"MoreCaptionsThanColumnsGrowCols", "A|B|C|D|E|F|G", 7, 1,
     {cap("A"), cap("B"), cap("C"), cap("D"), cap("E"), cap("F"), cap("G")}},
    {"LeadingSeparatorClearsColumnOne", "|X", 5, 1, {R, cap("X"), K, R, R}},
    {"RowCaptionsFollowTheSemicolon", "Name;Row one;Row two", 5, 2, {cap("Name"), K, K, K, K}, {"Row one", "Row two"}},
    {"EmptyFinalTokenSkipsTheReset", "A|B|", 5, 1, {cap("A"), cap("B"), K, K, K}},
    {"TrailingBlanksWidenButAreNotStored", "Pad  |B", 5, 1, {cap("Pad", "Pad  "), cap("B"), K, R, R}},
    {"OnlyTheFirstMarkIsAMark", "^^Mid", 5, 1, {cap("^Mid"), K, R, R, R}},
    {"LeadingBlanksStay", "  Lead  ", 5, 1, {cap("  Lead", "  Lead  "), K, R}},
    {"RowCaptionsHaveNoMarks", "<Left;<r1", 5, 1, {cap("Left"), K, K, K, K}, {"<r1"}},
    {"EmptyTokenAfterARowCaptionClearsTheCorner", "A;X;;Y", 5, 2, {cap("A"), K, K, K, K}, {"X", "Y"}, 64, ""},
    {"EmptyStringChangesNothing", "", 5, 1, {K, K, K, K, K}},
    {"SemicolonAloneEndsAColumnCaption", "A;", 5, 1, {cap("A"), K, K, K, K}},
    {"SingleCaptionResetsFromColumnThree", "A", 5, 1, {cap("A"), K, R, R, R}},
    {"EmptyRowTokenClearsTheNextColumn", "x;;", 5, 1, {cap("x"), R, K, K, K}},
    {"RowCaptionsGrowRowsAndNarrowCaptionsKeepColumnZero", "A;1;2;3;4", 5, 4, {cap("A"), K}, {"1", "2", "3", "4"}},
    {"BarsSeparateRowCaptionsToo", "A|B;R1|R2", 5, 2, {cap("A"), cap("B"), K, K, K}, {"R1", "R2"}},
    {"MarkWithoutText", "^", 5, 1, {cap("", ""), K, R, R, R}},
    {"LongRowCaptionWidensColumnZero", "x;A rather long row caption", 5, 1, {cap("x"), K},
     {"A rather long row caption"}},
};

INSTANTIATE_TEST_SUITE_P(Strings, FormatStringGrammar, ::testing::ValuesIn(headerCases), TabulaTest::caseName);

class FormatStringProperty : public TabulaTest::GridFixture {};

TEST_F(FormatStringProperty, WidthsFollowTheControlsOwnFontNotTheGridFont)
{
    QFont large = grid().QWidget::font();
    large.setPointSize(30);
    grid().QWidget::setFont(large);
    grid().Font()->Size = 4;
    grid().setFormatString("Wide caption");
    EXPECT_EQ(grid().ColWidth(1), captionWidth(grid(), "Wide caption"));
    EXPECT_GT(grid().ColWidth(1), 100);
}

TEST_F(FormatStringProperty, FormatStringAndAutoSetupRemoveEveryLookupList)
{
    grid().AddLookup(2, "one");
    grid().AddLookup(4, "two", 7);
    grid().setFormatString("A");
    EXPECT_FALSE(grid().ColHasLookup(2));
    EXPECT_FALSE(grid().ColHasLookup(4));
    grid().AddLookup(1, "one");
    grid().AutoSetup(2, 3, true, true, QString("A|B|C"));
    EXPECT_FALSE(grid().ColHasLookup(1));
    EXPECT_EQ(grid().TextMatrix(0, 3), "C");
}

TEST_F(FormatStringProperty, AWidthPastSixteenBitsOrEmptyTokensPastTheLastColumnFailButKeepTheString)
{
    EXPECT_EQ(errorOf([&] { grid().setFormatString(QString(20000, QLatin1Char('W'))); }).Source,
              "TabulaControl.Tabula.FormatString");
    EXPECT_EQ(errorOf([&] { grid().setFormatString("||||||"); }).Source, "TabulaControl.Tabula.FormatString");
    EXPECT_EQ(grid().FormatString(), "||||||");
    EXPECT_EQ(grid().Cols(), 5);
    EXPECT_EQ(grid().ColWidth(5), 64);
}

// A bound model hears of one insertion however many captions there are; a
// failing caption leaves the columns grown as far as the captions reached.
TEST_F(FormatStringProperty, GrowsTheColumnsOnceUpToTheFailingCaption)
{
    QStandardItemModel records(40, 1);
    grid().setModel(&records);
    QSignalSpy inserted(&records, &QAbstractItemModel::columnsInserted);
    grid().setFormatString("A|B|C||E;one;two");
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(records.columnCount(), 5);
    grid().setModel(nullptr);

    grid().setCols(2);
    const QString tooWide(20000, QLatin1Char('W'));
    EXPECT_EQ(errorOf([&] { grid().setFormatString("A|B|" + tooWide + "|D|E"); }).Source,
              "TabulaControl.Tabula.FormatString");
    EXPECT_EQ(grid().Cols(), 3);
    EXPECT_EQ(grid().TextMatrix(0, 2), "B");
}

class AutoSetupMethod : public TabulaTest::GridFixture {};

TEST_F(AutoSetupMethod, BuildsTheWholeGridInOneCallNotifyingTheHeaderFlagsOnly)
{
    grid().setRows(4);
    grid().setTextMatrix(2, 2, "stale");
    QSignalSpy spy(&grid(), &Tabula::propertyChanged);
    grid().AutoSetup(3, 4, false, true, QStringLiteral("^Name|>Qty;First;Second"));
    EXPECT_EQ(TabulaTest::namesIn(spy), QStringList({"RowHeader", "ColHeader"}));
    EXPECT_EQ(grid().Rows(), 3);
    EXPECT_EQ(grid().Cols(), 4);
    EXPECT_FALSE(grid().RowHeader());
    EXPECT_TRUE(grid().ColHeader());
    EXPECT_EQ(grid().FormatString(), "^Name|>Qty;First;Second");
    const std::pair<QPoint, QString> texts[] = {
        {{0, 1}, "Name"}, {{0, 2}, "Qty"}, {{1, 0}, "First"}, {{2, 0}, "Second"}, {{2, 2}, ""}};
    for (const auto& [at, text] : texts)
        EXPECT_EQ(grid().TextMatrix(at.x(), at.y()), text) << at.x() << "," << at.y();
    EXPECT_TRUE(grid().AutoRedraw());
}

TEST_F(AutoSetupMethod, ConvertsCountAndFormatVariantsAsTheSettersTakeThemAndKeepsAutoRedrawOff)
{
    const std::pair<QVariant, int32_t> cases[] = {
        {6, 6}, {QString(" 7 "), 7}, {2.5, 2}, {3.5, 4}, {QVariant(), 0}};  // halves round to even
    for (const auto& [given, count] : cases) {
        grid().AutoSetup(given, given, true, true, QVariant());
        EXPECT_EQ(grid().Rows(), count) << given.toString().toStdString();
        EXPECT_EQ(grid().Cols(), count) << given.toString().toStdString();
    }
    grid().setAutoRedraw(false);
    grid().AutoSetup(1, 3, true, true, 42);
    EXPECT_FALSE(grid().AutoRedraw()) << "AutoRedraw stays off when it was off";
    EXPECT_EQ(grid().FormatString(), "42");
    EXPECT_EQ(grid().TextMatrix(0, 1), "42");
}

// A count fails before anything is set up; a caption after the repaint and
// the column it adds. Either leaves AutoRedraw off, so the picture stays
// that of the repaint.
TEST_F(AutoSetupMethod, ANonNumericCountOrACaptionTooWideFailsAndLeavesAutoRedrawOff)
{
    const QString source = "TabulaControl.Tabula.AutoSetup";
    grid().setRows(5);
    EXPECT_EQ(errorOf([&] { grid().AutoSetup(QString("many"), 3, true, true, QString("A")); }).Source, source);
    EXPECT_FALSE(grid().AutoRedraw());
    EXPECT_EQ(grid().Rows(), 0);
    EXPECT_EQ(grid().FormatString(), "");
    grid().setAutoRedraw(true);
    grid().AutoSetup(3, QVariant(), false, false, QString());
    const QImage repainted = picture();
    EXPECT_EQ(errorOf([&] { grid().AutoSetup(3, QVariant(), false, false, QString(10000, 'H')); }).Source, source);
    EXPECT_EQ(grid().Cols(), 1);
    EXPECT_EQ(picture(), repainted);
}

}  // namespace
