#include "pixels/Surface.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

using namespace TabulaControl::platform;

namespace {

constexpr OleColor kBack = 0x563412;

Surface blank(int width = 24, int height = 20)
{
    Surface s(width, height);
    s.setBackColor(kBack);
    s.clear();
    return s;
}

// Every pixel distinct, so moved or inverted pixels are recognisable.
Surface patterned(int width, int height)
{
    Surface s(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            s.fill({x, y, x + 1, y + 1}, static_cast<OleColor>(y * 256 + x));
    return s;
}

QRegion changedPixels(const QImage& before, const QImage& after)
{
    QRegion region;
    for (int y = 0; y < before.height(); ++y)
        for (int x = 0; x < before.width(); ++x)
            if (before.pixel(x, y) != after.pixel(x, y))
                region += QRect(x, y, 1, 1);
    return region;
}

}  // namespace

TEST(SurfaceFill, RightAndBottomExclusiveAndClipped)
{
    const std::vector<std::pair<Rect, QRect>> cases = {
        {{2, 3, 5, 7}, QRect(2, 3, 3, 4)},   {{-5, -5, 3, 2}, QRect(0, 0, 3, 2)},
        {{20, 15, 99, 99}, QRect(20, 15, 4, 5)}, {{5, 5, 5, 9}, QRect()},
        {{6, 6, 2, 2}, QRect()},             {{INT_MIN, 0, INT_MAX, 1}, QRect(0, 0, 24, 1)},
    };
    for (const auto& [r, expected] : cases) {
        Surface s = blank();
        s.fill(r, 0x00FF00);
        EXPECT_EQ(changedPixels(blank().image(), s.image()), QRegion(expected)) << r.Left << "," << r.Top;
    }
}

TEST(SurfaceText, FarRectanglesPlaceTextLikeNearOnes)
{
    const std::vector<std::tuple<Rect, Rect, unsigned>> cases = {
        {{0, 0, INT_MAX, 30}, {0, 0, 1000, 30}, TextLeft},
        {{INT_MIN, 0, 50, 30}, {-1000, 0, 50, 30}, TextRight},
        {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {-1001, -1001, 1000, 1000}, TextCenter | TextVCenter},
        {{10, INT_MIN, 100, 30}, {10, -1000, 100, 30}, TextBottom},
        {{INT_MIN, 0, -10000000, 30}, {0, 0, 0, 0}, TextLeft},
    };
    for (const auto& [far, near, flags] : cases) {
        Surface a = blank(), b = blank();
        a.text("Far", far, flags);
        b.text("Far", near, flags);
        EXPECT_EQ(a.image(), b.image()) << far.Left << "," << far.Top << "," << far.Right << "," << far.Bottom;
    }
    Surface s = blank();
    s.text("Far", {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, TextCenter | TextVCenter);
    EXPECT_NE(s.image(), blank().image());
}

// A text drawn again comes from its mask, even one wider than it measures.
TEST(SurfaceText, DrawnAgainTheSame)
{
    Surface s = blank(120, 30);
    s.setFontSize(12);
    s.setFontBold(true);
    const auto draw = [&] {
        s.fill({36, 9, 96, 24}, kBack);
        s.text(QStringLiteral("line\nbreak\r"), {36, 9, 96, 24}, TextCenter);
        return s.image();
    };
    EXPECT_EQ(draw(), draw());
}

TEST(SurfaceExtremes, EveryPrimitiveSurvivesAnyCoordinates)
{
    const std::vector<int32_t> values = {INT_MIN, INT_MIN + 1, -1000000000, -1, 0, 7, 1000000000, INT_MAX};
    Surface s = blank(16, 12);
    for (const int32_t a : values)
        for (const int32_t b : values) {
            s.fill({a, a, b, b}, 0x00FF00);
            s.line(a, b, b, a);
            s.edge({a, a, b, b}, SunkenOuter | RaisedInner, SideAll);
            s.checkBox({a, a, b, b}, true);
            s.focusRect({a, b, b, a});
            s.invert({a, a, b, b});
            s.text("x", {a, a, b, b}, TextCenter | TextVCenter);
            s.scroll(a, b, {a, a, b, b}, {a, b, b, a});
        }
    s = blank(16, 12);
    s.line(-100000, 2, 1000000000, 2);
    s.line(INT_MIN, INT_MIN, INT_MAX, INT_MAX);
    s.line(5, INT_MIN, 5, INT_MAX);
    Surface expected = blank(16, 12);
    expected.fill({0, 2, 16, 3}, 0);
    expected.fill({5, 0, 6, 12}, 0);
    for (int i = 0; i < 12; ++i)
        expected.fill({i, i, i + 1, i + 1}, 0);
    EXPECT_EQ(s.image(), expected.image());
}

namespace {

// r grown out to the tiles the changed region is kept in.
QRegion tilesAround(const QRect& r)
{
    const int tile = DirtyTiles::TileSize;
    const int left = r.left() / tile * tile, top = r.top() / tile * tile;
    return QRect(left, top, (r.right() / tile + 1) * tile - left, (r.bottom() / tile + 1) * tile - top);
}

}  // namespace

TEST(SurfaceChangedRegion, HoldsWhatEachDrawingChangedAndLittleElse)
{
    const std::vector<std::tuple<const char*, std::function<void(Surface&)>, QRect>> drawings = {
        {"fill", [](Surface& s) { s.fill({40, 10, 60, 20}, 0xFF); }, {40, 10, 20, 10}},
        {"dotted line", [](Surface& s) { s.setPenStyle(PenStyle::Dot); s.line(5, 70, 90, 75); }, {5, 70, 86, 6}},
        {"edge", [](Surface& s) { s.edge({70, 40, 90, 60}, SunkenOuter | SunkenInner, SideAll); }, {70, 40, 20, 20}},
        {"check box", [](Surface& s) { s.checkBox({66, 2, 79, 15}, true); }, {66, 2, 13, 13}},
        {"text", [](Surface& s) { s.text(QStringLiteral("Wg"), {3, 40, 30, 60}, TextLeft); }, {3, 40, 27, 20}},
        {"focus rect", [](Surface& s) { s.focusRect({33, 33, 64, 47}); }, {33, 33, 31, 14}},
        {"scroll", [](Surface& s) { s.scroll(0, 16, {0, 0, 100, 40}, {0, 0, 100, 40}); }, {0, 16, 100, 24}},
        {"marks", [](Surface& s) { s.setMarks({{Surface::Mark::Kind::Inversion, {50, 50, 60, 60}}}); }, {50, 50, 10, 10}},
        {"clear", [](Surface& s) { s.setBackColor(0x010203); s.clear(); }, {0, 0, 100, 80}},
    };
    for (const auto& [name, draw, reach] : drawings) {
        Surface s = patterned(100, 80);
        s.takeChangedRegion();
        const QImage before = s.image();
        draw(s);
        const QRegion changed = s.takeChangedRegion();
        const QRegion pixels = changedPixels(before, s.image());
        EXPECT_FALSE(pixels.isEmpty()) << name;
        EXPECT_TRUE((pixels - changed).isEmpty()) << name;
        EXPECT_TRUE((changed - tilesAround(reach)).isEmpty()) << name;
        EXPECT_TRUE(s.takeChangedRegion().isEmpty()) << name;
    }
}

// A band that a frame fills again where it was stays as it is: only what
// the frame draws around it changes.
TEST(SurfaceRememberedFill, DrawsAsFillAndLeavesARepeatedBandAlone)
{
    struct Frame {
        const char* name;
        Rect band;
        OleColor back;
        bool corner;
        QRegion mostChanged;
    };
    const QRegion all = QRect(0, 0, 100, 80);
    const QRegion textAndCorner = tilesAround({0, 0, 40, 20}) + tilesAround({90, 70, 10, 10});
    const std::vector<Frame> frames = {
        {"first frame", {40, 0, 100, 80}, kBack, true, all},
        {"same frame", {40, 0, 100, 80}, kBack, true, textAndCorner},
        {"without the corner", {40, 0, 100, 80}, kBack, false, textAndCorner},
        {"narrower band", {50, 0, 100, 80}, kBack, true, all},
        {"other back colour", {50, 0, 100, 80}, 0x00FF00, true, all},
        {"band reaching the text", {30, 0, 100, 80}, 0x00FF00, false, all},
    };
    const auto draw = [](Surface& s, bool remembered, const Frame& f) {
        s.setBackColor(f.back);
        s.clear();
        s.text(QStringLiteral("Wg"), {0, 0, 40, 20}, TextLeft);
        std::invoke(remembered ? &Surface::fillRemembered : &Surface::fill, s, f.band, 0x808080);
        if (f.corner)
            s.fill({90, 70, 100, 80}, 0xC0C0C0);
    };
    Surface plain(100, 80), kept(100, 80);
    for (const Frame& f : frames) {
        kept.takeChangedRegion();
        draw(plain, false, f);
        draw(kept, true, f);
        EXPECT_EQ(kept.image(), plain.image()) << f.name;
        EXPECT_TRUE((kept.takeChangedRegion() - f.mostChanged).isEmpty()) << f.name;
    }
}

// A cell that fails part-way shows what it drew before the failure, as
// drawing without the memo would, even where the memo holds the cell.
TEST(RememberedCellsFailure, CallsBeforeTheFailureAreDrawn)
{
    const Rect box{4, 4, 40, 20};
    Surface surface(60, 48);
    surface.clear();
    const auto draw = [&](OleColor back, bool fails) {
        surface.drawCell([&] {
            surface.fill(box, back);
            if (fails)
                throw std::runtime_error("cell outside the store");
            surface.text("Ab", box, TextSingleLine | TextVCenter);
        });
    };
    draw(0xFFFFFF, false);
    surface.fill(box, 0x0000FF);
    draw(0xFFFFFF, false);
    EXPECT_THROW(draw(0x00FF00, true), std::runtime_error);
    EXPECT_EQ(surface.image().pixel(20, 10) & 0xFFFFFF, 0x00FF00u);
}
