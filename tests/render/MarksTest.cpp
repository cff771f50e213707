#include "render/Marks.h"

#include <gtest/gtest.h>

#include <climits>
#include <variant>
#include <vector>

using TabulaControl::detail::render::Marks;
using namespace TabulaControl::platform;

namespace {

// Each step is done twice: on `pixels`, whose marks are exclusive-or
// operations on the pixels themselves, and on `surface`, whose marks are
// the state `marks` keeps. The two pictures must agree bit for bit.
struct Focus { Rect r; };
struct Invert { Rect r; };
struct Fill { Rect r; };
struct Line { int x1, y1, x2, y2; bool dotted; };
struct Scroll { int dx, dy; Rect area; };
struct Resize { int width, height; };
struct Clear {};
using Step = std::variant<Focus, Invert, Fill, Line, Scroll, Resize, Clear>;

struct Case {
    const char* name;
    std::vector<Step> steps;
};

constexpr Rect Whole{0, 0, 40, 30};

const Case cases[] = {
    {"marks_overlap", {Focus{{2, 2, 12, 9}}, Invert{{5, 4, 20, 15}}, Focus{{4, 3, 5, 30}}, Focus{{6, 6, 30, 7}}}},
    {"a_mark_shown_twice_goes", {Focus{{2, 2, 12, 9}}, Invert{{5, 4, 20, 15}}, Invert{{5, 4, 20, 15}}, Focus{{2, 2, 12, 9}}}},
    {"paint_takes_the_marks_it_covers", {Invert{{2, 2, 30, 20}}, Focus{{1, 1, 25, 25}}, Fill{{5, 0, 10, 40}}, Invert{{2, 2, 30, 20}}}},
    {"dotted_lines_across_marks",
     {Invert{{2, 2, 30, 20}}, Focus{{3, 3, 28, 12}}, Line{0, 8, 40, 8, true}, Line{12, 28, 12, -3, true},
      Line{35, 3, 1, 3, true}, Invert{{2, 2, 30, 20}}}},
    {"solid_lines_either_way", {Invert{{2, 2, 30, 20}}, Line{30, 5, 3, 5, false}, Line{6, 25, 6, 1, false}, Line{9, 9, 9, 9, false}}},
    {"odd_and_even_scrolls_carry_the_dots",
     {Focus{{3, 3, 20, 12}}, Invert{{10, 5, 14, 25}}, Scroll{1, 0, Whole}, Scroll{0, 3, {0, 2, 40, 30}},
      Scroll{-5, 2, {4, 4, 30, 20}}, Focus{{3, 3, 20, 12}}}},
    {"a_scroll_past_the_edge", {Invert{{0, 0, 40, 30}}, Scroll{0, 100, Whole}, Focus{{0, 0, 40, 30}}, Scroll{-17, -4, Whole}}},
    {"resizing_keeps_the_shared_area", {Invert{{5, 5, 35, 25}}, Focus{{0, 0, 40, 30}}, Resize{20, 10}, Resize{40, 30}, Resize{0, 30}, Resize{40, 30}}},
    {"clearing_takes_every_mark", {Invert{{5, 5, 35, 25}}, Focus{{0, 0, 40, 30}}, Clear{}, Focus{{1, 1, 9, 9}}}},
    {"rectangles_off_the_surface",
     {Invert{{-5, -5, 100, 3}}, Focus{{-3, 20, 50, 40}}, Focus{{INT_MIN, 4, INT_MAX, INT_MAX}}, Fill{{INT_MIN, 0, 2, INT_MAX}}}},
};

// Every pixel distinct, so a pixel flipped or moved wrongly shows.
void paintPattern(Surface& s)
{
    for (int y = 0; y < s.height(); ++y)
        s.fill({0, y, s.width(), y + 1}, static_cast<OleColor>(0x102030 + y * 0x010305));
    s.setPenColor(0x00FF00);
    s.line(0, 0, s.width(), s.height());
}

class MarksCase : public ::testing::TestWithParam<Case> {
protected:
    void apply(const Step& step)
    {
        std::visit([this](const auto& s) { apply(s); }, step);
    }
    void apply(const Focus& s)
    {
        pixels.focusRect(s.r);
        marks.toggleFocusRect(s.r);
    }
    void apply(const Invert& s)
    {
        pixels.invert(s.r);
        marks.toggleInversion(s.r);
    }
    void apply(const Fill& s)
    {
        for (Surface* each : {&pixels, &surface})
            each->fill(s.r, 0x4080C0);
        marks.covered(s.r);
    }
    void apply(const Line& s)
    {
        for (Surface* each : {&pixels, &surface}) {
            each->setPenStyle(s.dotted ? PenStyle::Dot : PenStyle::Solid);
            each->setPenColor(0x0000FF);
            each->line(s.x1, s.y1, s.x2, s.y2);
        }
        marks.coveredByLine(s.x1, s.y1, s.x2, s.y2, s.dotted);
    }
    void apply(const Scroll& s)
    {
        pixels.scroll(s.dx, s.dy, s.area, s.area);
        surface.scroll(s.dx, s.dy, s.area, s.area);
        marks.scrolled(s.dx, s.dy, s.area, s.area);
    }
    void apply(const Resize& s)
    {
        const int oldWidth = surface.width(), oldHeight = surface.height();
        pixels.resize(s.width, s.height);
        surface.resize(s.width, s.height);
        marks.resized(oldWidth, oldHeight);
    }
    void apply(const Clear&)
    {
        pixels.clear();
        surface.clear();
        marks.cleared();
    }

    Surface pixels{40, 30};
    Surface surface{40, 30};
    Marks marks{surface};
};

}  // namespace

TEST_P(MarksCase, PictureMatchesMarksDrawnIntoThePixels)
{
    paintPattern(pixels);
    paintPattern(surface);
    for (size_t i = 0; i < GetParam().steps.size(); ++i) {
        apply(GetParam().steps[i]);
        ASSERT_EQ(surface.image(), pixels.image()) << "after step " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Marks, MarksCase, ::testing::ValuesIn(cases),
                         [](const auto& info) { return std::string(info.param.name); });
