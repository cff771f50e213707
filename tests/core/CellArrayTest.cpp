#include "core/CellArray.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>

using TabulaControl::detail::CellArray;

namespace {

// A store of rows 0..rows and columns 0..cols whose cell (r, c) holds "r,c".
CellArray filledStore(int16_t rows, int16_t cols)
{
    CellArray store;
    store.setCols(cols);
    store.setRows(rows);
    for (int16_t r = 0; r <= rows; ++r)
        for (int16_t c = 0; c <= cols; ++c)
            store.setText(r, c, QString("%1,%2").arg(r).arg(c));
    return store;
}

QStringList columnOne(const CellArray& store)
{
    QStringList texts;
    for (int16_t r = 0; r <= store.Rows(); ++r)
        texts << store.Text(r, 1);
    return texts;
}

}  // namespace

TEST(CellArray, ResizingAndRemovingMoveWholeRecords)
{
    struct Case {
        const char* name;
        std::function<void(CellArray&)> change;
        QStringList column1;
    };
    const Case cases[] = {
        {"shrink keeps the rows that remain", [](CellArray& s) { s.setRows(2); }, {"0,1", "1,1", "2,1"}},
        {"grow after shrink gives fresh rows", [](CellArray& s) { s.setRows(2), s.setRows(4); },
         {"0,1", "1,1", "2,1", "", ""}},
        {"cols shrink then grow gives fresh cells", [](CellArray& s) { s.setCols(0), s.setCols(2); },
         {"", "", "", "", ""}},
        {"remove leaves the last two rows equal", [](CellArray& s) { s.Remove(2); },
         {"0,1", "1,1", "3,1", "4,1", "4,1"}},
        {"remove row 0 shifts the header away", [](CellArray& s) { s.Remove(0); },
         {"1,1", "2,1", "3,1", "4,1", "4,1"}},
        {"remove then drop the last row", [](CellArray& s) { s.Remove(1), s.setRows(3); },
         {"0,1", "2,1", "3,1", "4,1"}},
        {"remove of the last row or beyond does nothing", [](CellArray& s) { s.Remove(4), s.Remove(9); },
         {"0,1", "1,1", "2,1", "3,1", "4,1"}},
    };
    for (const Case& c : cases) {
        CellArray store = filledStore(4, 2);
        for (int16_t r = 0; r <= 4; ++r)
            store.setBackColor(r, 1, r);
        c.change(store);
        EXPECT_EQ(columnOne(store), c.column1) << c.name;
        for (int16_t r = 0; r <= store.Rows(); ++r) {
            const bool fresh = store.Text(r, 1).isEmpty();
            EXPECT_EQ(store.BackColor(r, 1), fresh ? -1 : store.Text(r, 1).section(',', 0, 0).toInt()) << c.name;
        }
    }
    CellArray empty;
    empty.Remove(0);
    EXPECT_EQ(empty.Rows(), 0);
}

TEST(CellArray, AFullGridOfDefaultCellsIsUsable)
{
    CellArray store;
    store.setCols(32767);
    store.setRows(32767);
    store.setText(32767, 32767, "corner");
    store.Remove(32766);
    EXPECT_EQ(store.Text(32766, 32767), "corner");
    EXPECT_EQ(store.Text(20000, 30000), "");
}

TEST(CellArray, EveryTextComesBackExactly)
{
    const QChar nul(0), highSurrogate(0xD83D), lowSurrogate(0xDE00);
    const QStringList samples = {
        "R%1 plain",           "Ünïcødé ß %1",  "漢字テキスト %1",        "😀👍🏽 %1",
        "שלום עולם مرحبا %1", "long Latin-1 text in row %1, well past fifteen characters",
        QString(nul) + "%1" + nul, QString(highSurrogate) + "%1", "%1" + QString(lowSurrogate) + "x",
        "",
    };
    constexpr int Rows = 32767, Cols = 10;
    CellArray store;
    store.setCols(Cols);
    store.setRows(Rows);
    auto expected = [&](int r, int c) { return QString(samples[(r * Cols + c) % samples.size()]).replace("%1", QString::number(r)); };
    for (int r = 1; r <= Rows; ++r)
        for (int c = 1; c <= Cols; ++c)
            store.setText(int16_t(r), int16_t(c), expected(r, c));
    int mismatches = 0;
    for (int r = 1; r <= Rows; ++r)
        for (int c = 1; c <= Cols; ++c)
            if (store.Text(int16_t(r), int16_t(c)) != expected(r, c) && ++mismatches == 1)
                ADD_FAILURE() << "cell " << r << "," << c;
    EXPECT_EQ(mismatches, 0);
}
