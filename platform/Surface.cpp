#include "platform/Surface.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <optional>

namespace TabulaControl::platform {

namespace {

constexpr int kDotsPerMeter96Dpi = 3780;
constexpr QRgb kXorMask = 0x00FFFFFF;
constexpr OleColor kSystemColourBit = 0x80000000;

constexpr std::array<QRgb, 31> kSystemColours = {
    0xC0C0C0, 0x008080, 0x000080, 0x808080, 0xC0C0C0, 0xFFFFFF, 0x000000, 0x000000,
    0x000000, 0xFFFFFF, 0xC0C0C0, 0xC0C0C0, 0x808080, 0x000080, 0xFFFFFF, 0xC0C0C0,
    0x808080, 0x808080, 0x000000, 0xC0C0C0, 0xFFFFFF, 0x000000, 0xC0C0C0, 0x000000,
    0xFFFFE1, 0xC0C0C0, 0x0000FF, 0x1084D0, 0xB5B5B5, 0x316AC5, 0xECE9D8,
};

constexpr OleColor systemColour(unsigned index) { return kSystemColourBit + index; }

// A rectangle with right and bottom exclusive, wide enough that offsets and
// deflations of any 32-bit rectangle cannot overflow.
struct Box {
    int64_t left = 0;
    int64_t top = 0;
    int64_t right = 0;
    int64_t bottom = 0;

    bool empty() const { return right <= left || bottom <= top; }
    int64_t width() const { return right - left; }
    int64_t height() const { return bottom - top; }
};

Box toBox(Rect r) { return {r.Left, r.Top, r.Right, r.Bottom}; }

Rect toRect(const Box& b)
{
    return {static_cast<int32_t>(b.left), static_cast<int32_t>(b.top),
            static_cast<int32_t>(b.right), static_cast<int32_t>(b.bottom)};
}

Box intersect(const Box& a, const Box& b)
{
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

Box translated(const Box& b, int64_t dx, int64_t dy)
{
    return {b.left + dx, b.top + dy, b.right + dx, b.bottom + dy};
}

Box boundsOf(const QImage& image) { return {0, 0, image.width(), image.height()}; }

Box unite(const Box& a, const Box& b)
{
    if (a.empty())
        return b;
    if (b.empty())
        return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

// Bounding box of the part of whole that lies outside cut.
Box boundsOfDifference(const Box& whole, const Box& cut)
{
    const Box inner = intersect(whole, cut);
    if (inner.empty())
        return whole;
    Box result;
    result = unite(result, {whole.left, whole.top, whole.right, inner.top});
    result = unite(result, {whole.left, inner.bottom, whole.right, whole.bottom});
    result = unite(result, {whole.left, inner.top, inner.left, inner.bottom});
    result = unite(result, {inner.right, inner.top, whole.right, inner.bottom});
    return result;
}

QRgb* rowOf(QImage& image, int64_t y) { return reinterpret_cast<QRgb*>(image.scanLine(static_cast<int>(y))); }

void fillBox(QImage& image, const Box& box, QRgb pixel)
{
    const Box visible = intersect(box, boundsOf(image));
    if (visible.empty())
        return;
    for (int64_t y = visible.top; y < visible.bottom; ++y) {
        QRgb* row = rowOf(image, y);
        std::fill(row + visible.left, row + visible.right, pixel);
    }
}

void invertBox(QImage& image, const Box& box)
{
    const Box visible = intersect(box, boundsOf(image));
    if (visible.empty())
        return;
    for (int64_t y = visible.top; y < visible.bottom; ++y) {
        QRgb* row = rowOf(image, y);
        for (int64_t x = visible.left; x < visible.right; ++x)
            row[x] ^= kXorMask;
    }
}

void invertEvenPixels(QImage& image, const Box& box)
{
    const Box visible = intersect(box, boundsOf(image));
    for (int64_t y = visible.top; y < visible.bottom; ++y) {
        QRgb* row = rowOf(image, y);
        for (int64_t x = visible.left + ((visible.left + y) & 1); x < visible.right; x += 2)
            row[x] ^= kXorMask;
    }
}

void focusRectBox(QImage& image, const Box& b)
{
    if (b.empty())
        return;
    invertEvenPixels(image, {b.left, b.top, b.right, b.top + 1});
    if (b.height() > 1)
        invertEvenPixels(image, {b.left, b.bottom - 1, b.right, b.bottom});
    invertEvenPixels(image, {b.left, b.top + 1, b.left + 1, b.bottom - 1});
    if (b.width() > 1)
        invertEvenPixels(image, {b.right - 1, b.top + 1, b.right, b.bottom - 1});
}

int64_t signOf(int64_t v) { return (v > 0) - (v < 0); }

bool isDrawnDot(int64_t step) { return step % 6 < 3; }

// The steps [first, last) of a walk from start by direction, one pixel per
// step, that land inside [0, extent).
std::pair<int64_t, int64_t> stepsInside(int64_t start, int64_t direction, int64_t steps, int64_t extent)
{
    if (direction > 0)
        return {std::max<int64_t>(0, -start), std::min(steps, extent - start)};
    return {std::max<int64_t>(0, start - extent + 1), std::min(steps, start + 1)};
}

// Walks the major axis one pixel per step; the minor offset at step i is
// i * minor / steps rounded to nearest, halves away from the start point.
// Only steps whose major coordinate is inside the image are visited, so the
// cost is bounded by the image size whatever the end points.
void walkLine(QImage& image, int64_t x1, int64_t y1, int64_t x2, int64_t y2, QRgb pixel, bool dotted)
{
    const int64_t dx = x2 - x1;
    const int64_t dy = y2 - y1;
    const bool xMajor = std::abs(dx) >= std::abs(dy);
    const int64_t steps = std::max(std::abs(dx), std::abs(dy));
    if (steps == 0)
        return;
    const int64_t majorStart = xMajor ? x1 : y1;
    const int64_t minorStart = xMajor ? y1 : x1;
    const int64_t majorDirection = signOf(xMajor ? dx : dy);
    const int64_t minorDirection = signOf(xMajor ? dy : dx);
    const uint64_t minorLength = static_cast<uint64_t>(std::abs(xMajor ? dy : dx));
    const uint64_t stepCount = static_cast<uint64_t>(steps);
    const int64_t majorExtent = xMajor ? image.width() : image.height();
    const int64_t minorExtent = xMajor ? image.height() : image.width();

    const auto [first, last] = stepsInside(majorStart, majorDirection, steps, majorExtent);
    if (first >= last)
        return;
    uint64_t quotient = static_cast<uint64_t>(first) * minorLength / stepCount;
    uint64_t remainder = static_cast<uint64_t>(first) * minorLength % stepCount;
    for (int64_t i = first; i < last; ++i) {
        const int64_t minorOffset = static_cast<int64_t>(quotient + (2 * remainder >= stepCount ? 1 : 0));
        const int64_t minor = minorStart + minorDirection * minorOffset;
        const int64_t major = majorStart + majorDirection * i;
        if (minor >= 0 && minor < minorExtent && (!dotted || isDrawnDot(i))) {
            if (xMajor)
                rowOf(image, minor)[major] = pixel;
            else
                rowOf(image, major)[minor] = pixel;
        }
        remainder += minorLength;
        if (remainder >= stepCount) {
            remainder -= stepCount;
            ++quotient;
        }
    }
}

// The pixels a line visits along one axis, from `from` towards `to` with
// `to` itself excluded, as a half-open range; one pixel when they are equal.
std::pair<int64_t, int64_t> axisSpan(int64_t from, int64_t to)
{
    if (to > from)
        return {from, to};
    if (to < from)
        return {to + 1, from + 1};
    return {from, from + 1};
}

Box axisLineBox(int64_t x1, int64_t y1, int64_t x2, int64_t y2)
{
    const auto [left, right] = axisSpan(x1, x2);
    const auto [top, bottom] = axisSpan(y1, y2);
    return {left, top, right, bottom};
}

struct EdgeColours {
    OleColor topLeft;
    OleColor bottomRight;
};

std::optional<EdgeColours> outerColours(unsigned kinds)
{
    if (kinds & RaisedOuter)
        return EdgeColours{systemColour(22), systemColour(21)};
    if (kinds & SunkenOuter)
        return EdgeColours{systemColour(16), systemColour(20)};
    return std::nullopt;
}

std::optional<EdgeColours> innerColours(unsigned kinds)
{
    if (kinds & RaisedInner)
        return EdgeColours{systemColour(20), systemColour(16)};
    if (kinds & SunkenInner)
        return EdgeColours{systemColour(21), systemColour(22)};
    return std::nullopt;
}

void drawRing(QImage& image, const Box& ring, EdgeColours colours, unsigned sides)
{
    if (ring.empty())
        return;
    const QRgb light = translateColor(colours.topLeft);
    const QRgb dark = translateColor(colours.bottomRight);
    if (sides & SideTop)
        fillBox(image, {ring.left, ring.top, ring.right, ring.top + 1}, light);
    if (sides & SideLeft)
        fillBox(image, {ring.left, ring.top, ring.left + 1, ring.bottom}, light);
    if (sides & SideBottom)
        fillBox(image, {ring.left, ring.bottom - 1, ring.right, ring.bottom}, dark);
    if (sides & SideRight)
        fillBox(image, {ring.right - 1, ring.top, ring.right, ring.bottom}, dark);
}

Box deflated(const Box& b, unsigned sides)
{
    return {b.left + ((sides & SideLeft) ? 1 : 0), b.top + ((sides & SideTop) ? 1 : 0),
            b.right - ((sides & SideRight) ? 1 : 0), b.bottom - ((sides & SideBottom) ? 1 : 0)};
}

constexpr int kTickSize = 7;
constexpr std::array<const char*, kTickSize> kTickRows = {
    "......x", ".....xx", "x...xxx", "xx.xxx.", "xxxxx..", ".xxx...", "..x....",
};

void drawTick(QImage& image, const Box& interior)
{
    const int64_t offset = (interior.width() - kTickSize) / 2;
    const Box visible = intersect(interior, boundsOf(image));
    const int64_t left = interior.left + offset;
    const int64_t top = interior.top + offset;
    for (int row = 0; row < kTickSize; ++row) {
        for (int column = 0; column < kTickSize; ++column) {
            const int64_t x = left + column;
            const int64_t y = top + row;
            const bool inside = x >= visible.left && x < visible.right && y >= visible.top && y < visible.bottom;
            if (inside && kTickRows[row][column] == 'x')
                rowOf(image, y)[x] = translateColor(0);
        }
    }
}

QImage makeImage(int width, int height)
{
    QImage image(std::max(0, width), std::max(0, height), QImage::Format_RGB32);
    image.setDotsPerMeterX(kDotsPerMeter96Dpi);
    image.setDotsPerMeterY(kDotsPerMeter96Dpi);
    return image;
}

// Fonts are resolved and measured against this when the surface has no
// pixels yet; it has the same resolution as every surface image.
const QImage& referenceDevice()
{
    static const QImage device = makeImage(1, 1);
    return device;
}

// Which point of a rectangle's side the text is aligned to.
enum class Anchor { Start, Centre, End };

Anchor horizontalAnchor(unsigned flags)
{
    switch (flags & 3) {
    case TextCenter: return Anchor::Centre;
    case TextRight: return Anchor::End;
    default: return Anchor::Start;
    }
}

Anchor verticalAnchor(unsigned flags)
{
    switch (flags & 12) {
    case TextVCenter: return Anchor::Centre;
    case TextBottom: return Anchor::End;
    default: return Anchor::Start;
    }
}

Qt::Alignment alignmentOf(unsigned flags)
{
    constexpr Qt::AlignmentFlag across[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    constexpr Qt::AlignmentFlag down[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom};
    return across[static_cast<int>(horizontalAnchor(flags))] | down[static_cast<int>(verticalAnchor(flags))];
}

// Qt lays text out in 26.6 fixed point, which overflows a little beyond
// 2^25 pixels; rectangles within this bound are passed on unchanged.
constexpr int64_t kLayoutSafeCoordinate = int64_t{1} << 22;

bool isLayoutSafe(const Box& b)
{
    const auto safe = [](int64_t v) { return std::abs(v) <= kLayoutSafeCoordinate; };
    return safe(b.left) && safe(b.top) && safe(b.right) && safe(b.bottom);
}

struct Stretch {
    double low;
    double high;
};

// One axis of a stand-in layout rectangle: it keeps the point the text is
// anchored to, so the text lands where it would in [low, high), but stays
// near the visible range. Returns nothing when text of this size cannot
// reach [visibleLow, visibleHigh).
std::optional<Stretch> nearbyStretch(int64_t low, int64_t high, Anchor anchor, double size, double margin,
                                     int64_t visibleLow, int64_t visibleHigh)
{
    const double lowEdge = static_cast<double>(low);
    const double highEdge = static_cast<double>(high);
    const double centre = (lowEdge + highEdge) / 2;
    const double start = anchor == Anchor::Start ? lowEdge : anchor == Anchor::End ? highEdge - size : centre - size / 2;
    if (start > static_cast<double>(visibleHigh) + margin || start + size + margin < static_cast<double>(visibleLow))
        return std::nullopt;
    const double span = size + 2 * margin;
    switch (anchor) {
    case Anchor::Start: return Stretch{lowEdge, lowEdge + span};
    case Anchor::End: return Stretch{highEdge - span, highEdge};
    default: return Stretch{centre - span / 2, centre + span / 2};
    }
}

std::optional<QRectF> layoutRect(const Box& r, const Box& visible, unsigned flags, const QFont& font,
                                 const QPaintDevice& device, const QString& s)
{
    if (isLayoutSafe(r))
        return QRectF(static_cast<double>(r.left), static_cast<double>(r.top), static_cast<double>(r.width()),
                      static_cast<double>(r.height()));
    const QFontMetricsF metrics(font, &device);
    const double margin = metrics.height();
    const auto across = nearbyStretch(r.left, r.right, horizontalAnchor(flags), metrics.horizontalAdvance(s),
                                      margin, visible.left, visible.right);
    const auto down = nearbyStretch(r.top, r.bottom, verticalAnchor(flags), metrics.height(), margin,
                                    visible.top, visible.bottom);
    if (!across || !down)
        return std::nullopt;
    return QRectF(QPointF(across->low, down->low), QPointF(across->high, down->high));
}

// Simple text: characters that are never zero-width, never combine with their
// neighbours and never run right to left, so each glyph's place depends only
// on the characters before it (and, from the right edge, after it).
bool isSimpleText(const QString& s)
{
    return std::all_of(s.begin(), s.end(), [](QChar ch) {
        const char16_t u = ch.unicode();
        return (u >= 0x20 && u < 0x7F) || (u >= 0xA0 && u < 0x300 && u != 0xAD);
    });
}

// A long line of simple text aligned to one side is cut to the characters
// that can reach the visible part, so that a long cell costs what shows of
// it. The glyphs kept land exactly where they would in the whole line.
QString visibleText(const QString& s, const QRectF& layout, const Box& visible, unsigned flags, const QFont& font,
                    const QPaintDevice& device)
{
    constexpr qsizetype LongText = 256;
    const Anchor anchor = horizontalAnchor(flags);
    if (s.size() <= LongText || anchor == Anchor::Centre || !isSimpleText(s))
        return s;
    const QFontMetricsF metrics(font, &device);
    const double reach = anchor == Anchor::Start ? static_cast<double>(visible.right) - layout.left()
                                                 : layout.right() - static_cast<double>(visible.left);
    for (qsizetype length = LongText; length < s.size(); length *= 2) {
        const QString part = anchor == Anchor::Start ? s.left(length) : s.right(length);
        if (metrics.horizontalAdvance(part) > reach + metrics.height())
            return part;
    }
    return s;
}

QRect toQRect(const Box& b)
{
    return QRect(static_cast<int>(b.left), static_cast<int>(b.top), static_cast<int>(b.width()),
                 static_cast<int>(b.height()));
}

// Copies the pixels of destination from (x - dx, y - dy), row by row in
// the order that reads every source row before it is overwritten.
void movePixels(QImage& image, const Box& destination, int64_t dx, int64_t dy)
{
    const size_t bytes = static_cast<size_t>(destination.width()) * sizeof(QRgb);
    const auto copyRow = [&](int64_t y) {
        std::memmove(rowOf(image, y) + destination.left, rowOf(image, y - dy) + destination.left - dx, bytes);
    };
    if (dy > 0) {
        for (int64_t y = destination.bottom - 1; y >= destination.top; --y)
            copyRow(y);
        return;
    }
    for (int64_t y = destination.top; y < destination.bottom; ++y)
        copyRow(y);
}

}  // namespace

QRgb translateColor(OleColor colour)
{
    if (colour & kSystemColourBit) {
        const OleColor index = colour - kSystemColourBit;
        return index < kSystemColours.size() ? 0xFF000000 | kSystemColours[index] : qRgb(0, 0, 0);
    }
    return qRgb(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

Surface::Surface(int width, int height)
    : image_(makeImage(width, height)),
      font_(QFont(), &referenceDevice())
{
    font_.setStyleStrategy(QFont::NoAntialias);
    clear();
}

const QImage& Surface::image() const
{
    settle();
    if (!marksShown_) {
        flipMarks();
        marksShown_ = true;
    }
    return image_;
}

void Surface::setMarks(std::vector<Mark> marks)
{
    liftMarks();
    marks_ = std::move(marks);
}

void Surface::flipMarks() const
{
    for (const Mark& mark : marks_) {
        if (mark.kind == Mark::Kind::Inversion)
            invertBox(image_, toBox(mark.rect));
        else
            focusRectBox(image_, toBox(mark.rect));
    }
}

void Surface::liftMarks()
{
    if (!marksShown_)
        return;
    flipMarks();
    marksShown_ = false;
}

void Surface::settle() const
{
    if (!pendingRender_)
        return;
    const std::function<void()> render = std::move(pendingRender_);
    pendingRender_ = nullptr;
    render();
}

bool Surface::readyToDraw()
{
    if (discarding_)
        return false;
    settle();
    liftMarks();
    return true;
}

void Surface::resize(int width, int height)
{
    settle();
    width = std::max(0, width);
    height = std::max(0, height);
    if (width == image_.width() && height == image_.height())
        return;
    liftMarks();
    QImage resized = makeImage(width, height);
    resized.fill(translateColor(backColor_));
    const int keptWidth = std::min(width, image_.width());
    const int keptHeight = keptWidth > 0 ? std::min(height, image_.height()) : 0;
    for (int y = 0; y < keptHeight; ++y)
        std::memcpy(resized.scanLine(y), image_.constScanLine(y), static_cast<size_t>(keptWidth) * sizeof(QRgb));
    image_ = std::move(resized);
}

void Surface::clear()
{
    if (readyToDraw())
        image_.fill(translateColor(backColor_));
}

void Surface::fill(Rect r, OleColor colour)
{
    if (readyToDraw())
        fillBox(image_, toBox(r), translateColor(colour));
}

void Surface::line(int32_t x1, int32_t y1, int32_t x2, int32_t y2)
{
    if (!readyToDraw())
        return;
    const QRgb pixel = translateColor(penColor_);
    const bool dotted = penStyle_ == PenStyle::Dot;
    if (!dotted && (x1 == x2 || y1 == y2)) {
        if (x1 != x2 || y1 != y2)
            fillBox(image_, axisLineBox(x1, y1, x2, y2), pixel);
        return;
    }
    walkLine(image_, x1, y1, x2, y2, pixel, dotted);
}

void Surface::edge(Rect r, unsigned kinds, unsigned sides)
{
    if (!readyToDraw())
        return;
    const auto paletteOf = [sides](EdgeColours colours) {
        return (sides & EdgeMono) ? EdgeColours{systemColour(6), systemColour(6)} : colours;
    };
    Box ring = toBox(r);
    if (const auto outer = outerColours(kinds)) {
        drawRing(image_, ring, paletteOf(*outer), sides);
        ring = deflated(ring, sides);
    }
    if (const auto inner = innerColours(kinds))
        drawRing(image_, ring, paletteOf(*inner), sides);
}

void Surface::checkBox(Rect r, bool checked)
{
    if (!readyToDraw())
        return;
    const Box bounds = toBox(r);
    const int64_t side = std::min(bounds.width(), bounds.height());
    if (side <= 0)
        return;
    const Box square{bounds.left, bounds.top, bounds.left + side, bounds.top + side};
    drawRing(image_, square, *outerColours(SunkenOuter), SideAll);
    drawRing(image_, deflated(square, SideAll), *innerColours(SunkenInner), SideAll);
    const Box interior = deflated(deflated(square, SideAll), SideAll);
    if (interior.empty())
        return;
    fillBox(image_, interior, translateColor(0xFFFFFF));
    if (checked)
        drawTick(image_, interior);
}

void Surface::setFontName(const QString& name) { font_.setFamily(name); }

void Surface::setFontSize(double points)
{
    if (points > 0 && std::isfinite(points))
        font_.setPointSizeF(points);
}

void Surface::setFontBold(bool on) { font_.setBold(on); }
void Surface::setFontItalic(bool on) { font_.setItalic(on); }
void Surface::setFontUnderline(bool on) { font_.setUnderline(on); }
void Surface::setFontStrikethrough(bool on) { font_.setStrikeOut(on); }

void Surface::text(const QString& s, Rect r, unsigned flags)
{
    if (!readyToDraw())
        return;
    const Box bounds = toBox(r);
    const Box visible = intersect(bounds, boundsOf(image_));
    if (visible.empty() || s.isEmpty())
        return;
    const auto layout = layoutRect(bounds, visible, flags, font_, image_, s);
    if (!layout)
        return;
    const QString shown = visibleText(s, *layout, visible, flags, font_, image_);
    QPainter painter(&image_);
    painter.setClipRect(toQRect(visible));
    painter.setFont(font_);
    painter.setPen(QColor::fromRgb(translateColor(textColor_)));
    painter.drawText(*layout, static_cast<int>(alignmentOf(flags)) | Qt::TextSingleLine | Qt::TextDontClip, shown);
}

double Surface::textWidth(const QString& s) const
{
    const QPaintDevice& device = image_.isNull() ? referenceDevice() : image_;
    return QFontMetricsF(font_, &device).horizontalAdvance(s);
}

void Surface::focusRect(Rect r)
{
    if (readyToDraw())
        focusRectBox(image_, toBox(r));
}

void Surface::invert(Rect r)
{
    if (readyToDraw())
        invertBox(image_, toBox(r));
}

Rect Surface::scroll(int32_t dx, int32_t dy, Rect scroll, Rect clip)
{
    if (!readyToDraw())
        return {};
    const Box image = boundsOf(image_);
    const Box source = toBox(scroll);
    const Box target = intersect(toBox(clip), image);
    const Box moved = intersect(intersect(translated(source, dx, dy), target), translated(image, dx, dy));
    if (!moved.empty())
        movePixels(image_, moved, dx, dy);
    const Box uncovered = boundsOfDifference(intersect(source, target), moved);
    return uncovered.empty() ? Rect{} : toRect(uncovered);
}

}  // namespace TabulaControl::platform
