#include "tests/designer/FormGrid.h"
#include "ui_form.h"

#include <TabulaControl/Tabula.h>

#include <QApplication>

#include <algorithm>

using TabulaControl::Tabula;

TEST(UicForm, SetsEveryDesignablePropertyOfTheGrid)
{
    QWidget form;
    Ui::Form ui;
    ui.setupUi(&form);
    TabulaTest::expectFormGridProperties(*ui.grid);

    const QMetaObject& meta = Tabula::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        const auto& set = TabulaTest::formGridProperties;
        EXPECT_TRUE(!property.isDesignable() || std::ranges::any_of(set, [&](const auto& entry) {
            return qstrcmp(entry.first, property.name()) == 0;
        })) << property.name() << " is designable but the form leaves it out";
    }
}

// A font set on the grid as a widget becomes its Font; one it inherits from
// its parent or the application does not.
TEST(WidgetFont, SetsTheGridFontButAnInheritedOneDoesNot)
{
    QWidget parent;
    auto* grid = new Tabula(&parent);
    const auto initial = grid->Font();
    const QFont application = QApplication::font();
    QApplication::setFont(QFont("DejaVu Serif", 15));
    parent.setFont(QFont("DejaVu Sans Mono", 13));
    QApplication::setFont(application);
    EXPECT_EQ(grid->Font(), initial);

    static_cast<QWidget*>(grid)->setFont(QFont("DejaVu Sans", 14, QFont::Bold));
    EXPECT_EQ(*grid->Font(), (TabulaControl::StdFont{"DejaVu Sans", 14, true}));
    grid->setFont(QFont("DejaVu Serif", 10));
    QFont stretched;  // reaches the grid: its own font sets no stretch
    stretched.setStretch(QFont::Expanded);
    parent.setFont(stretched);
    EXPECT_EQ(*grid->Font(), (TabulaControl::StdFont{"DejaVu Serif", 10}));
}
