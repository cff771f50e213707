// A surface leaves a cell's pixels alone when the same cell is drawn again
// where its pixels still are. Each row draws cells, disturbs them, and draws
// the final cells again: wherever those cover, the pixels must be exactly
// what drawing the final cells on a fresh surface gives.

#include "pixels/Surface.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace TabulaControl::platform;

namespace {

constexpr int Width = 60, Height = 48;

struct Cell {
    Rect box;
    OleColor back;
    QString text;
};

void draw(Surface& s, const Cell& cell)
{
    s.drawCell([&] {
        s.fill(cell.box, cell.back);
        s.edge({cell.box.Left, cell.box.Top, cell.box.Left + 6, cell.box.Top + 6}, RaisedOuter, SideAll);
        s.setTextColor(0x000000);
        s.text(cell.text, cell.box, TextSingleLine | TextVCenter);
    });
}

struct Scenario {
    const char* name;
    std::vector<Cell> first;
    std::function<void(Surface&)> disturb;
    std::vector<Cell> last;
};

const Cell Top{{4, 4, 40, 20}, 0xFFFFFF, "Ab"};
const Cell Lower{{4, 24, 40, 40}, 0xE0E0E0, "Cd"};

Cell movedBy(Cell cell, int dy)
{
    cell.box.Top += dy;
    cell.box.Bottom += dy;
    return cell;
}

std::vector<Scenario> scenarios()
{
    const auto nothing = [](Surface&) {};
    return {
        {"DrawnAgainUntouched", {Top}, nothing, {Top}},
        {"OtherTextInTheSamePlace", {Top}, nothing, {{Top.box, Top.back, "Xy"}}},
        {"OtherColourInTheSamePlace", {Top}, nothing, {{Top.box, 0x00FFFF, Top.text}}},
        {"FilledOver", {Top}, [](Surface& s) { s.fill({10, 8, 20, 12}, 0xFF0000); }, {Top}},
        {"LineAcross", {Top}, [](Surface& s) { s.line(0, 10, Width, 10); }, {Top}},
        {"Inverted", {Top}, [](Surface& s) { s.invert({6, 6, 30, 18}); }, {Top}},
        {"FocusRectangle", {Top}, [](Surface& s) { s.focusRect({5, 5, 35, 15}); }, {Top}},
        {"TextOverlapping", {Top}, [](Surface& s) { s.text("Zz", {20, 0, 50, 12}, TextSingleLine); }, {Top}},
        {"Cleared", {Top}, [](Surface& s) { s.clear(); }, {Top}},
        {"Resized", {Top}, [](Surface& s) { s.resize(Width + 8, Height + 8); }, {Top}},
        {"MovedWholeUp", {Lower}, [](Surface& s) { s.scroll(0, -20, {0, 2, Width, Height}, {0, 2, Width, Height}); },
         {movedBy(Lower, -20)}},
        {"MovedByAnOddStep", {Lower}, [](Surface& s) { s.scroll(0, -19, {0, 2, Width, Height}, {0, 2, Width, Height}); },
         {movedBy(Lower, -19)}},
        {"PartlyOutsideTheMovedArea", {Top, Lower},
         [](Surface& s) { s.scroll(0, -20, {0, 10, Width, Height}, {0, 10, Width, Height}); },
         {movedBy(Lower, -20), Top}},
        {"MovedPixelsLandOnACell", {Top, Lower},
         [](Surface& s) { s.scroll(0, -8, {0, 0, Width, Height}, {0, 0, Width, Height}); }, {Top, Lower}},
        {"LeftInTheUncoveredStrip", {Lower}, [](Surface& s) { s.scroll(0, -4, {0, 30, Width, Height}, {0, 0, Width, Height}); },
         {Lower}},
        {"CoveredByACellThatReachesPastItsBox", {Top},
         [](Surface& s) {
             s.drawCell([&] {
                 s.fill({4, 16, 40, 30}, 0x00FF00);
                 s.fill({4, 30, 40, 34}, 0x0000FF);
             });
         },
         {Top}},
    };
}

class RememberedCells : public testing::TestWithParam<Scenario> {};

TEST_P(RememberedCells, FinalCellsShowAsOnAFreshSurface)
{
    const Scenario& scenario = GetParam();
    Surface surface(Width, Height);
    surface.clear();
    for (const Cell& cell : scenario.first)
        draw(surface, cell);
    scenario.disturb(surface);
    for (const Cell& cell : scenario.last)
        draw(surface, cell);

    Surface fresh(surface.width(), surface.height());
    fresh.clear();
    for (const Cell& cell : scenario.last)
        draw(fresh, cell);
    for (const Cell& cell : scenario.last) {
        const QRect r(cell.box.Left, cell.box.Top, cell.box.Right - cell.box.Left, cell.box.Bottom - cell.box.Top);
        EXPECT_EQ(surface.image().copy(r), fresh.image().copy(r)) << "cell at " << cell.box.Left << "," << cell.box.Top;
    }
}

INSTANTIATE_TEST_SUITE_P(Surface, RememberedCells, testing::ValuesIn(scenarios()),
                         [](const auto& info) { return std::string(info.param.name); });

// A cell that fails part-way shows what it drew before the failure, as
// drawing without the memo would, even where the memo holds the cell.
TEST(RememberedCellsFailure, CallsBeforeTheFailureAreDrawn)
{
    Surface surface(Width, Height);
    surface.clear();
    draw(surface, Top);
    surface.fill(Top.box, 0x0000FF);
    draw(surface, Top);
    const auto failing = [&] {
        surface.fill(Top.box, 0x00FF00);
        throw std::runtime_error("cell outside the store");
    };
    EXPECT_THROW(surface.drawCell(failing), std::runtime_error);
    EXPECT_EQ(surface.image().pixel(20, 10) & 0xFFFFFF, 0x00FF00u);
}

}  // namespace
