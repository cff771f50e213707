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

// A grid that loads and saves CSV text through memory.
class CsvFile : public GridFixture {
protected:
    void load(const QByteArray& bytes, const CsvOptions& options = {})
    {
        QBuffer buffer;
        buffer.setData(bytes);
        buffer.open(QIODevice::ReadOnly);
        grid().loadCsv(buffer, options);
    }
    QByteArray saved()
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        grid().saveCsv(buffer, {});
        return buffer.data();
    }
    // The captions and every data row, as the records of a file.
    Records shown()
    {
        Records records;
        for (int32_t row = 0; row <= grid().Rows(); ++row)
            records.push_back(rowTexts(row));
        return records;
    }
};

// Records padded with empty fields to the longest, as a grid holds them.
Records padded(Records records)
{
    qsizetype width = 0;
    for (const QStringList& record : records)
        width = std::max(width, record.size());
    for (QStringList& record : records)
        record.resize(width);
    return records;
}

struct ParseCase {
    const char* name;
    QString text;
    Records expected;
};

class CsvParse : public CsvFile, public ::testing::WithParamInterface<ParseCase> {};

// The grid takes the first record as its captions, and what it saves loads
// back as the same cells.
TEST_P(CsvParse, ReadsTheRecordsWhichTheGridLoadsAndSaves)
{
    EXPECT_EQ(recordsOf(csv::parse(GetParam().text)), GetParam().expected);
    load(GetParam().text.toUtf8());
    EXPECT_EQ(shown(), padded(GetParam().expected));
    load(saved());
    EXPECT_EQ(shown(), padded(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(Cases, CsvParse, ::testing::Values(
    ParseCase{"lf_lead_space_and_non_latin", "a, b\n\u00e9\u20ac,d\n", {{"a", " b"}, {"\u00e9\u20ac", "d"}}},
    ParseCase{"crlf_without_last_break", "a,b\r\nc,d", {{"a", "b"}, {"c", "d"}}},
    ParseCase{"cr", "a\rb\r", {{"a"}, {"b"}}},
    ParseCase{"empty_line_and_fields", "a,,\n\n,b\n", {{"a", "", ""}, {""}, {"", "b"}}},
    ParseCase{"quoted_separators_quotes_and_breaks", "\"a,\",\"\"\"q\"\"\",\"l\r\nb\",\"\t\",\"s;\"\n",
              {{"a,", "\"q\"", "l\r\nb", "\t", "s;"}}},
    ParseCase{"quote_inside_unquoted_field", "a\"b,c\n", {{"a\"b", "c"}}},
    ParseCase{"semicolons_detected", "a;b,c;d\ne;f,g;h\n", {{"a", "b,c", "d"}, {"e", "f,g", "h"}}},
    ParseCase{"tabs_detected", "a\tb,c\td\n", {{"a", "b,c", "d"}}}),
    TabulaTest::caseName);

TEST_F(CsvFile, MalformedTextFailsWithItsLineAndChangesNothing)
{
    fillWithPositions(3, 3);
    // An unterminated quote, and text after a closing quote.
    for (const QByteArray& text : {QByteArray("a\r\nb\r\n\"c\nd"), QByteArray("a\n\"b\nc\"d,e\n")}) {
        const auto error = errorOf([&] { load(text); });
        EXPECT_EQ(error.Source, "TabulaControl.Tabula.loadCsv");
        EXPECT_TRUE(error.Description.contains("line 3")) << qPrintable(error.Description);
    }
    EXPECT_EQ(rowTexts(3), QStringList({"3,1", "3,2", "3,3"}));
}

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

TEST_F(CsvFile, AByteOrderMarkIsSkippedAndWithoutAHeaderRowTheCaptionsStayEmpty)
{
    load("\xEF\xBB\xBFName\r\n");
    EXPECT_EQ(rowTexts(0), QStringList({"Name"}));
    load("a;b\n", {QChar(u';'), false});
    EXPECT_EQ(rowTexts(0), QStringList({"", ""}));
    EXPECT_EQ(rowTexts(1), QStringList({"a", "b"}));
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
