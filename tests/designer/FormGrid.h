#pragma once

#include <QMetaProperty>
#include <QObject>

#include <gtest/gtest.h>

#include <utility>

namespace TabulaTest {

// The grid of tests/designer/form.ui as the form sets it: every designable
// property, each away from its default, as QVariant::toString gives it.
inline const std::pair<const char*, const char*> formGridProperties[] = {
    {"Rows", "30"}, {"Cols", "12"}, {"ColHeader", "false"}, {"RowHeader", "false"},
    {"TopRow", "2"}, {"LeftCol", "3"}, {"ShowGrid", "false"}, {"GridSolid", "false"},
    {"Row", "2"}, {"Col", "5"}, {"AutoRedraw", "false"}, {"GridLineColor", "255"},
    {"BorderStyle", "ThinInset"}, {"MousePointer", "2"}, {"AllowSelection", "false"},
    {"UseBackColorAlt", "true"}, {"BackColor", "2147483653"}, {"BackColorAlt", "15790320"},
    {"BackColorFixed", "8421376"}, {"ForeColor", "255"}, {"ForeColorFixed", "2147483656"},
    {"FixedStyle", "Flat"}, {"SelectionMode", "SelectionByRow"},
    {"Font", "DejaVu Sans,12,-1,5,700,0,0,0,0,0,0,0,0,0,0,1"},
    {"FontEdit", "DejaVu Serif,10,-1,5,400,1,0,0,0,0,0,0,0,0,0,1"},
    {"FontFixed", "DejaVu Sans Mono,11,-1,5,400,0,1,0,0,0,0,0,0,0,0,1"},
    {"BackColorBkg", "16776960"}, {"AllowUserResizing", "false"}, {"FormatString", "<Name|^Qty|>Price"},
    {"AutoNewRow", "true"}, {"UseItemData", "true"}, {"ListBoxRows", "9"}, {"SelectText", "true"},
    {"Enabled", "false"}, {"clipboardShortcuts", "true"}};

inline void expectFormGridProperties(const QObject& grid)
{
    for (const auto& [name, value] : formGridProperties)
        EXPECT_EQ(grid.property(name).toString(), value) << name;
}

}  // namespace TabulaTest
