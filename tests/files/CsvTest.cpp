#include "state/Csv.h"
#include "tests/support/GridFixture.h"

#include <QBuffer>

using namespace TabulaControl;
using namespace TabulaTest;
namespace csv = TabulaControl::detail::csv;

namespace {

using Records = std::vector<QStringList>;

Records recordsOf(const csv::Table& table)
{
    Records records;
    for (qsizetype r = 0; r < table.recordCount(); ++r) {
        records.emplace_back();
        for (qsizetype f = 0; f < table.fieldCount(r); ++f)
            records.back() << table.field(r, f).toString();
    }
    return records;
}

struct ParseCase {
    const char* name;
    QString text;
    Records expected;
};

class CsvParse : public ::testing::TestWithParam<ParseCase> {};

TEST_P(CsvParse, ReadsTheRecords) { EXPECT_EQ(recordsOf(csv::parse(GetParam().text)), GetParam().expected); }

INSTANTIATE_TEST_SUITE_P(Cases, CsvParse, ::testing::Values(
    ParseCase{"lf", "a,b\nc,d\n", {{"a", "b"}, {"c", "d"}}},
    ParseCase{"crlf_without_last_break", "a,b\r\nc,d", {{"a", "b"}, {"c", "d"}}},
    ParseCase{"cr", "a\rb\r", {{"a"}, {"b"}}},
    ParseCase{"empty_line_and_fields", "a,,\n\n,b\n", {{"a", "", ""}, {""}, {"", "b"}}},
    ParseCase{"quoted_breaks_quotes_separators", "\"x,\"\"y\"\"\r\nz\",\"\t\"\n", {{"x,\"y\"\r\nz", "\t"}}},
    ParseCase{"quote_inside_unquoted_field", "a\"b,c\n", {{"a\"b", "c"}}},
    ParseCase{"semicolons_detected", "a;b,c;d\ne;f,g;h\n", {{"a", "b,c", "d"}, {"e", "f,g", "h"}}},
    ParseCase{"tabs_detected", "a\tb,c\td\n", {{"a", "b,c", "d"}}}),
    [](const auto& info) { return std::string(info.param.name); });

struct MalformedCase {
    const char* name;
    QString text;
    qsizetype line;
};

class CsvMalformed : public ::testing::TestWithParam<MalformedCase> {};

TEST_P(CsvMalformed, FailsAtItsLine)
{
    try {
        csv::parse(GetParam().text);
        FAIL() << "parsed";
    } catch (const csv::MalformedError& error) {
        EXPECT_EQ(error.line(), GetParam().line);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, CsvMalformed, ::testing::Values(
    MalformedCase{"unterminated_quote", "a\r\nb\r\n\"c\nd", 3},
    MalformedCase{"text_after_closing_quote", "a\n\"b\nc\"d,e\n", 3}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(CsvParse, PiecesCutAnywhereReadAsTheWhole)
{
    const QString text = QStringLiteral("h1;h2\r\n\"a;\"\"\r\nb\";c\r\nd;e\r\n");
    for (qsizetype cut = 1; cut < text.size(); ++cut) {
        csv::Parser parser;
        parser.feed(QStringView(text).first(cut));
        parser.feed(QStringView(text).sliced(cut));
        EXPECT_EQ(recordsOf(parser.finish()), recordsOf(csv::parse(text))) << cut;
    }
}

class CsvFile : public GridFixture {
protected:
    void load(const QByteArray& bytes, const CsvOptions& options = {})
    {
        QBuffer buffer;
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
        grid().loadCsv(buffer, options);
    }
    QByteArray saved(const CsvOptions& options = {})
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        grid().saveCsv(buffer, options);
        return buffer.data();
    }
};

TEST_F(CsvFile, HeaderRowBomAndCountsComeFromTheFile)
{
    load("\xEF\xBB\xBFName,Qty\r\nP\xC3\xA9n,2\r\nInk\r\n");
    EXPECT_EQ(grid().Rows(), 2);
    EXPECT_EQ(grid().Cols(), 2);
    EXPECT_EQ(rowTexts(0), QStringList({"Name", "Qty"}));
    EXPECT_EQ(rowTexts(1), QStringList({QStringLiteral("P\u00e9n"), "2"}));
    EXPECT_EQ(rowTexts(2), QStringList({"Ink", ""}));
    load("a;b\n", {QChar(u';'), false});
    EXPECT_EQ(rowTexts(0), QStringList({"", ""}));
    EXPECT_EQ(rowTexts(1), QStringList({"a", "b"}));
}

TEST_F(CsvFile, SaveThenLoadGivesBackEveryText)
{
    const QStringList awkward = {"a,b", "\"q\"", "line\r\nbreak", "tab\there", "semi;colon", "", " lead", "\u00e9\u20ac"};
    grid().setRows(2);
    grid().setCols(static_cast<int32_t>(awkward.size()));
    for (int32_t c = 1; c <= grid().Cols(); ++c) {
        grid().setTextMatrix(0, c, awkward[c - 1]);
        grid().setTextMatrix(2, c, awkward[awkward.size() - c]);
    }
    const QByteArray file = saved();
    grid().setRows(7);
    load(file);
    EXPECT_EQ(grid().Rows(), 2);
    EXPECT_EQ(rowTexts(0), awkward);
    EXPECT_EQ(rowTexts(2), QStringList(awkward.rbegin(), awkward.rend()));
}

TEST_F(CsvFile, MalformedFileFailsWithItsLineAndChangesNothing)
{
    fillWithPositions(3, 3);
    try {
        load("a,b\nc,\"d\"x\n");
        FAIL() << "loaded";
    } catch (const ComponentError& error) {
        EXPECT_EQ(error.Source, "TabulaControl.Tabula.loadCsv");
        EXPECT_TRUE(error.Description.contains("line 2")) << error.Description.toStdString();
    }
    EXPECT_EQ(rowTexts(3), QStringList({"3,1", "3,2", "3,3"}));
}

TEST_F(CsvFile, CancelFromProgressLeavesTheGridUnchanged)
{
    fillWithPositions(3, 3);
    QByteArray big;
    while (big.size() < 1'000'000)
        big += "alpha,beta,gamma\n";
    int reports = 0;
    QObject::connect(&grid(), &Tabula::csvProgress, [&](qint64 done, qint64 total) {
        EXPECT_EQ(total, big.size());
        if (++reports == 2 && done < total)
            grid().cancelCsv();
    });
    load(big);
    EXPECT_EQ(reports, 2);
    EXPECT_EQ(grid().Rows(), 3);
    EXPECT_EQ(rowTexts(3), QStringList({"3,1", "3,2", "3,3"}));
}

}  // namespace
