#include "ui_form.h"

#include <TabulaControl/Tabula.h>

#include <QMetaProperty>

#include <gtest/gtest.h>

using TabulaControl::StdFont;
using TabulaControl::Tabula;

// designer/form.ui sets every designable property of its grid away from its
// default; these are the values, as QVariant::toString gives them.
TEST(UicForm, SetsEveryDesignablePropertyOfTheGrid)
{
    const std::pair<const char*, const char*> expected[] = {
        {"Rows", "30"}, {"Cols", "12"}, {"ColHeader", "false"}, {"RowHeader", "false"}, {"TopRow", "2"},
        {"LeftCol", "3"}, {"ShowGrid", "false"}, {"GridSolid", "false"}, {"Row", "2"}, {"Col", "5"},
        {"AutoRedraw", "false"}, {"GridLineColor", "255"}, {"BorderStyle", "ThinInset"}, {"MousePointer", "2"},
        {"AllowSelection", "false"}, {"UseBackColorAlt", "true"}, {"BackColor", "2147483653"},
        {"BackColorAlt", "15790320"}, {"BackColorFixed", "8421376"}, {"ForeColor", "255"},
        {"ForeColorFixed", "2147483656"}, {"FixedStyle", "Flat"}, {"SelectionMode", "SelectionByRow"},
        {"Font", "DejaVu Sans,12,-1,5,700,0,0,0,0,0,0,0,0,0,0,1"},
        {"FontEdit", "DejaVu Serif,10,-1,5,400,1,0,0,0,0,0,0,0,0,0,1"},
        {"FontFixed", "DejaVu Sans Mono,11,-1,5,400,0,1,0,0,0,0,0,0,0,0,1"}, {"BackColorBkg", "16776960"},
        {"AllowUserResizing", "false"}, {"FormatString", "<Name|^Qty|>Price"}, {"AutoNewRow", "true"},
        {"UseItemData", "true"}, {"ListBoxRows", "9"}, {"SelectText", "true"}, {"Enabled", "false"},
        {"clipboardShortcuts", "true"}, {"spreadsheetKeys", "true"}, {"sortOnHeaderClick", "true"},
        {"followPalette", "true"}};
    QWidget form;
    Ui::Form ui;
    ui.setupUi(&form);
    for (const auto& [name, value] : expected)
        EXPECT_EQ(ui.grid->property(name).toString(), value) << name;

    const QMetaObject& meta = Tabula::staticMetaObject;
    size_t designable = 0;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        designable += meta.property(i).isDesignable();
    EXPECT_EQ(designable, std::size(expected));

    TabulaControl::MemoryPropertyBag bag;
    ui.grid->WriteProperties(bag);
    const Tabula loaded(bag);
    for (const char* name : {"spreadsheetKeys", "sortOnHeaderClick", "followPalette"})
        EXPECT_TRUE(loaded.property(name).toBool()) << "saved and read back: " << name;
}

// A font set on the grid as a widget becomes its Font; one it inherits does not.
TEST(WidgetFont, SetsTheGridFontButAnInheritedOneDoesNot)
{
    QWidget parent;
    auto* grid = new Tabula(&parent);
    const auto initial = grid->Font();
    parent.setFont(QFont("DejaVu Sans Mono", 13));
    EXPECT_EQ(grid->Font(), initial);

    static_cast<QWidget*>(grid)->setFont(QFont("DejaVu Sans", 14, QFont::Bold));
    EXPECT_EQ(*grid->Font(), (StdFont{"DejaVu Sans", 14, true}));
    grid->setFont(QFont("DejaVu Serif", 10));
    QFont stretched;  // reaches the grid: its own font sets no stretch
    stretched.setStretch(QFont::Expanded);
    parent.setFont(stretched);
    EXPECT_EQ(*grid->Font(), (StdFont{"DejaVu Serif", 10}));
}
