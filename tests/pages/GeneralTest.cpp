#include "tests/support/GridFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

using TabulaControl::General;

namespace {

class GeneralPage : public TabulaTest::GridFixture {
protected:
    void SetUp() override
    {
        GridFixture::SetUp();
        grid().setRows(4);
        grid().setAutoRedraw(false);
        grid().setSelectionMode(TabulaControl::SelectionByCol);
        page.PropertyPage_SelectionChanged({&grid()});
    }
    template <class W>
    W* field(const char* name)
    {
        auto* widget = page.findChild<W*>(name);
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    General page;
};

}  // namespace

TEST_F(GeneralPage, LoadsTheFirstSelectedGridAndEditsReachItOnlyWhenApplied)
{
    EXPECT_EQ(field<QLineEdit>("txtCols")->text(), "5");
    EXPECT_EQ(field<QLineEdit>("txtListBoxRows")->text(), "6");
    EXPECT_EQ(field<QComboBox>("cboSelectionMode")->currentIndex(), 2);
    EXPECT_EQ(field<QComboBox>("cboBorderStyle")->currentIndex(), 1);
    EXPECT_EQ(field<QCheckBox>("chkAutoRedraw")->checkState(), Qt::Unchecked);
    EXPECT_EQ(field<QCheckBox>("chkShowGrid")->checkState(), Qt::Checked);
    EXPECT_FALSE(page.Changed());
    QTest::keyClicks(field<QLineEdit>("txtRows"), "0");
    EXPECT_TRUE(page.Changed());
    field<QCheckBox>("chkShowGrid")->setCheckState(Qt::PartiallyChecked);
    page.PropertyPage_ApplyChanges();
    EXPECT_EQ(grid().Rows(), 40);
    EXPECT_FALSE(grid().ShowGrid()) << "a greyed check box applies false";
    EXPECT_EQ(grid().SelectionMode(), TabulaControl::SelectionByCol);
    EXPECT_FALSE(page.Changed());
}

TEST_F(GeneralPage, AnEmptyRowCountFailsAfterTheEarlierSettingsWereApplied)
{
    field<QLineEdit>("txtRows")->clear();
    field<QLineEdit>("txtCols")->setText("7");
    field<QLineEdit>("txtListBoxRows")->setText("3");
    const auto error = TabulaTest::errorOf([&] { page.PropertyPage_ApplyChanges(); });
    EXPECT_EQ(error.Source, "TabulaControl.General.PropertyPage_ApplyChanges");
    EXPECT_TRUE(error.Description.startsWith("General component failureat line "));
    EXPECT_EQ(grid().ListBoxRows(), 3);
    EXPECT_EQ(grid().Cols(), 7);
    EXPECT_EQ(grid().Rows(), 4);
}
