#include "state/CellArray.h"

#include <QStringList>

#include <gtest/gtest.h>

using TabulaControl::detail::CellArray;

TEST(CellArray, AFullGridOfDefaultCellsIsUsable)
{
    CellArray store;
    store.setCols(32767);
    store.setRows(32767);
    store.setText(32767, 32767, u"corner");
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
