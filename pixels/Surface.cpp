#include "pixels/Surface.h"

#include "pixels/Box.h"
#include "pixels/Digest.h"

#include "pixels/TextCache.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <type_traits>

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

// The image's pixels addressed in surface pixels. At a device pixel ratio r
// the surface pixel x covers the device pixels from round(x * r) up to
// round((x + 1) * r): every edge lands on a whole device pixel, so nothing
// is blended, and at ratio 1 the two are the same pixels.
class DevicePixels {
public:
    DevicePixels(QImage& image, qreal ratio, int width, int height)
        : ratio_(ratio), bits_(image.bits()), stride_(image.bytesPerLine()),
          device_{0, 0, image.width(), image.height()}, surface_{0, 0, width, height}
    {
    }

    int64_t toDevice(int64_t v) const
    {
        return ratio_ == 1 ? v : static_cast<int64_t>(std::floor(static_cast<double>(v) * ratio_ + 0.5));
    }
    Box toDevice(const Box& b) const { return {toDevice(b.left), toDevice(b.top), toDevice(b.right), toDevice(b.bottom)}; }
    // The surface pixel that covers device pixel v.
    int64_t toSurface(int64_t v) const
    {
        if (ratio_ == 1)
            return v;
        auto s = static_cast<int64_t>(std::floor(static_cast<double>(v) / ratio_));
        while (toDevice(s + 1) <= v)
            ++s;
        while (toDevice(s) > v)
            --s;
        return s;
    }
    qreal ratio() const { return ratio_; }
    const Box& bounds() const { return surface_; }
    const Box& deviceBounds() const { return device_; }
    QRgb* row(int64_t deviceY) { return reinterpret_cast<QRgb*>(bits_ + deviceY * stride_); }

    void fill(const Box& box, QRgb pixel) { fillDevice(toDevice(box), pixel); }
    void fillDevice(const Box& box, QRgb pixel)
    {
        const Box visible = intersect(box, device_);
        if (visible.empty())
            return;
        for (int64_t y = visible.top; y < visible.bottom; ++y)
            std::fill(row(y) + visible.left, row(y) + visible.right, pixel);
    }
    bool holds(const Box& deviceBox, QRgb pixel)
    {
        const Box visible = intersect(deviceBox, device_);
        for (int64_t y = visible.top; y < visible.bottom; ++y)
            if (!std::all_of(row(y) + visible.left, row(y) + visible.right, [pixel](QRgb p) { return p == pixel; }))
                return false;
        return true;
    }
    void invert(const Box& box)
    {
        const Box visible = intersect(toDevice(box), device_);
        if (visible.empty())
            return;
        for (int64_t y = visible.top; y < visible.bottom; ++y)
            for (QRgb* p = row(y) + visible.left; p != row(y) + visible.right; ++p)
                *p ^= kXorMask;
    }
    void setPixel(int64_t x, int64_t y, QRgb pixel)
    {
        if (ratio_ != 1)
            return fill({x, y, x + 1, y + 1}, pixel);
        if (x >= 0 && y >= 0 && x < device_.right && y < device_.bottom)
            row(y)[x] = pixel;
    }
    void invertPixel(int64_t x, int64_t y)
    {
        if (ratio_ != 1)
            return invert({x, y, x + 1, y + 1});
        if (x >= 0 && y >= 0 && x < device_.right && y < device_.bottom)
            row(y)[x] ^= kXorMask;
    }

private:
    qreal ratio_;
    uchar* bits_;
    qsizetype stride_;
    Box device_;
    Box surface_;
};

void invertEvenPixels(DevicePixels& canvas, const Box& box)
{
    const Box visible = intersect(box, canvas.bounds());
    for (int64_t y = visible.top; y < visible.bottom; ++y)
        for (int64_t x = visible.left + ((visible.left + y) & 1); x < visible.right; x += 2)
            canvas.invertPixel(x, y);
}

void focusRectBox(DevicePixels& canvas, const Box& b)
{
    if (b.empty())
        return;
    invertEvenPixels(canvas, {b.left, b.top, b.right, b.top + 1});
    if (b.height() > 1)
        invertEvenPixels(canvas, {b.left, b.bottom - 1, b.right, b.bottom});
    invertEvenPixels(canvas, {b.left, b.top + 1, b.left + 1, b.bottom - 1});
    if (b.width() > 1)
        invertEvenPixels(canvas, {b.right - 1, b.top + 1, b.right, b.bottom - 1});
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
void walkLine(DevicePixels& canvas, int64_t x1, int64_t y1, int64_t x2, int64_t y2, QRgb pixel, bool dotted)
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
    const int64_t majorExtent = xMajor ? canvas.bounds().right : canvas.bounds().bottom;
    const int64_t minorExtent = xMajor ? canvas.bounds().bottom : canvas.bounds().right;

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
                canvas.setPixel(major, minor, pixel);
            else
                canvas.setPixel(minor, major, pixel);
        }
        remainder += minorLength;
        if (remainder >= stepCount) {
            remainder -= stepCount;
            ++quotient;
        }
    }
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

void drawRing(DevicePixels& canvas, const Box& ring, EdgeColours colours, unsigned sides)
{
    if (ring.empty())
        return;
    const QRgb light = translateColor(colours.topLeft);
    const QRgb dark = translateColor(colours.bottomRight);
    if (sides & SideTop)
        canvas.fill({ring.left, ring.top, ring.right, ring.top + 1}, light);
    if (sides & SideLeft)
        canvas.fill({ring.left, ring.top, ring.left + 1, ring.bottom}, light);
    if (sides & SideBottom)
        canvas.fill({ring.left, ring.bottom - 1, ring.right, ring.bottom}, dark);
    if (sides & SideRight)
        canvas.fill({ring.right - 1, ring.top, ring.right, ring.bottom}, dark);
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

void drawTick(DevicePixels& canvas, const Box& interior)
{
    const int64_t offset = (interior.width() - kTickSize) / 2;
    const Box visible = intersect(interior, canvas.bounds());
    const int64_t left = interior.left + offset;
    const int64_t top = interior.top + offset;
    for (int row = 0; row < kTickSize; ++row) {
        for (int column = 0; column < kTickSize; ++column) {
            const int64_t x = left + column;
            const int64_t y = top + row;
            const bool inside = x >= visible.left && x < visible.right && y >= visible.top && y < visible.bottom;
            if (inside && kTickRows[row][column] == 'x')
                canvas.setPixel(x, y, translateColor(0));
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
void movePixels(DevicePixels& canvas, const Box& destination, int64_t dx, int64_t dy)
{
    const size_t bytes = static_cast<size_t>(destination.width()) * sizeof(QRgb);
    const auto copyRow = [&](int64_t y) {
        std::memmove(canvas.row(y) + destination.left, canvas.row(y - dy) + destination.left - dx, bytes);
    };
    if (dy > 0) {
        for (int64_t y = destination.bottom - 1; y >= destination.top; --y)
            copyRow(y);
        return;
    }
    for (int64_t y = destination.top; y < destination.bottom; ++y)
        copyRow(y);
}

qreal validRatio(qreal ratio) { return ratio >= 0.25 && ratio <= 16 ? ratio : 1; }

void drawTextLine(QPainter& painter, const QString& text, const QRectF& layout, unsigned flags, const QFont& font,
                  QRgb pixel)
{
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(pixel));
    painter.drawText(layout, static_cast<int>(alignmentOf(flags)) | Qt::TextSingleLine | Qt::TextDontClip, text);
}

// Texts in rectangles larger than this, in device pixels, are not cached.
constexpr int64_t kLargestCachedText = 1024;

// An even device pixel at or left of (above) a rectangle's corner, and how
// far past it the corner lies. Text layout rounds halves to even in places,
// so a mask drawn at the phase is the same pixels as the text drawn in place
// only when the two differ by an even number of device pixels.
struct DeviceOrigin {
    int64_t x;
    int64_t y;
    double phaseX;
    double phaseY;
};

double evenFloor(double v) { return 2 * std::floor(v / 2); }

DeviceOrigin deviceOriginOf(const Box& bounds, qreal ratio)
{
    const double x = static_cast<double>(bounds.left) * ratio;
    const double y = static_cast<double>(bounds.top) * ratio;
    return {static_cast<int64_t>(evenFloor(x)), static_cast<int64_t>(evenFloor(y)), x - evenFloor(x),
            y - evenFloor(y)};
}

QImage& scratchImage(int width, int height)
{
    thread_local QImage scratch;
    if (scratch.width() < width || scratch.height() < height) {
        scratch = QImage(std::max(width, scratch.width()), std::max(height, scratch.height()),
                         QImage::Format_ARGB32_Premultiplied);
        scratch.setDotsPerMeterX(kDotsPerMeter96Dpi);
        scratch.setDotsPerMeterY(kDotsPerMeter96Dpi);
    }
    return scratch;
}

TextMask::Run* extendRun(TextMask& mask, int32_t y, int32_t x)
{
    if (!mask.runs.empty() && mask.runs.back().y == y && mask.runs.back().right == x)
        return &mask.runs.back();
    mask.runs.push_back({y, x, x});
    return &mask.runs.back();
}

// How far, in device pixels, a text may start before its rectangle's
// corner: text wider or taller than its rectangle, centred or aligned to
// the far side, starts before it. Layout rounds negative positions another
// way than positive ones, so a mask is made, and used, only where the text
// starts at a positive position.
QPoint overhangOf(const QString& text, const QRectF& layout, unsigned flags, const QFont& font,
                  const QPaintDevice& device, qreal ratio)
{
    const auto overhang = [ratio](Anchor anchor, double room, const auto& size) {
        if (anchor == Anchor::Start)
            return 2;
        const double lead = anchor == Anchor::End ? room - size() : (room - size()) / 2;
        return static_cast<int>(std::ceil(std::max(0.0, -lead) * ratio)) + 2;
    };
    const QFontMetricsF metrics(font, &device);
    return {overhang(horizontalAnchor(flags), layout.width(), [&] { return metrics.horizontalAdvance(text); }),
            overhang(verticalAnchor(flags), layout.height(), [&] { return metrics.height(); })};
}

// A whole number of surface pixels that is an even number of device pixels,
// at least `least` device pixels; none at a ratio where no small one is.
std::optional<int> evenDeviceMargin(int least, qreal ratio)
{
    const int first = static_cast<int>(std::ceil(least / ratio));
    for (int margin = first; margin < first + 64; ++margin) {
        const double device = margin * ratio;
        if (device == std::floor(device) && static_cast<int64_t>(device) % 2 == 0)
            return margin;
    }
    return std::nullopt;
}

// Draws the text in black on a clear scratch image, exactly as it would be
// drawn at the device origin, and reads back which pixels it covered. The
// text is placed a margin of whole surface pixels in, so that it starts at
// a positive position in surface and in device pixels alike.
TextMask renderMask(const QString& text, const QRectF& layout, const Box& clip, const DeviceOrigin& origin,
                    qreal ratio, const QFont& font, unsigned flags)
{
    TextMask mask;
    mask.overhang = overhangOf(text, layout, flags, font, referenceDevice(), ratio);
    const auto marginX = evenDeviceMargin(mask.overhang.x(), ratio);
    const auto marginY = evenDeviceMargin(mask.overhang.y(), ratio);
    if (!marginX || !marginY) {
        mask.exact = false;
        return mask;
    }
    const QPoint margin(static_cast<int>(*marginX * ratio), static_cast<int>(*marginY * ratio));
    const Box area = translated(clip, margin.x(), margin.y());
    QImage& scratch = scratchImage(static_cast<int>(area.right), static_cast<int>(area.bottom));
    for (int64_t y = area.top; y < area.bottom; ++y) {
        auto* row = reinterpret_cast<QRgb*>(scratch.scanLine(static_cast<int>(y)));
        std::fill(row + area.left, row + area.right, QRgb{0});
    }
    {
        QPainter painter(&scratch);
        painter.setClipRect(toQRect(area));
        QRectF placed = layout.translated(*marginX, *marginY);
        if (ratio == 1) {
            placed.translate(origin.phaseX, origin.phaseY);
        } else {
            painter.translate(origin.phaseX, origin.phaseY);
            painter.scale(ratio, ratio);
        }
        drawTextLine(painter, text, placed, flags, font, qRgb(0, 0, 0));
    }
    constexpr QRgb Covered = 0xFF000000;
    for (int64_t y = area.top; y < area.bottom; ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(scratch.constScanLine(static_cast<int>(y)));
        for (int64_t x = area.left; x < area.right; ++x) {
            if (row[x] == 0)
                continue;
            if (row[x] != Covered) {
                mask.exact = false;
                mask.runs.clear();
                return mask;
            }
            ++extendRun(mask, static_cast<int32_t>(y - margin.y()), static_cast<int32_t>(x - margin.x()))->right;
        }
    }
    return mask;
}

// Moves surface pixels by (dx, dy) at a ratio where that is no whole number
// of device pixels: each device pixel of destination takes the device pixel
// at the same place in the block of the surface pixel it comes from.
void moveBlocks(QImage& image, DevicePixels& canvas, const Box& destination, int64_t dx, int64_t dy)
{
    const QImage before = image.copy();
    const auto sourceOf = [&canvas](int64_t device, int64_t shift) {
        const int64_t surface = canvas.toSurface(device);
        const int64_t from = surface - shift;
        return std::min(canvas.toDevice(from) + device - canvas.toDevice(surface), canvas.toDevice(from + 1) - 1);
    };
    const Box target = intersect(canvas.toDevice(destination), canvas.deviceBounds());
    for (int64_t y = target.top; y < target.bottom; ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(before.constScanLine(static_cast<int>(sourceOf(y, dy))));
        QRgb* to = canvas.row(y);
        for (int64_t x = target.left; x < target.right; ++x)
            to[x] = from[sourceOf(x, dx)];
    }
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

Surface::Surface(int width, int height, qreal devicePixelRatio)
    : ratio_(validRatio(devicePixelRatio)),
      font_(QFont(), &referenceDevice())
{
    font_.setStyleStrategy(QFont::NoAntialias);
    resize(width, height);
    remakeImage();
}

const QImage& Surface::image() const
{
    settle();
    makeAllOwed();
    if (!marksShown_) {
        flipMarks();
        marksShown_ = true;
    }
    return image_;
}

QImage Surface::picture() const
{
    QImage picture = image();
    picture.setDevicePixelRatio(ratio_);
    return picture;
}

QRegion Surface::takeChangedRegion()
{
    image();
    return dirty_.take();
}

void Surface::setMarks(std::vector<Mark> marks)
{
    if (marks == marks_)
        return;
    liftMarks();
    for (const Mark& mark : marks_)
        noteChange(dirty_.mark(toBox(mark.rect)));
    marks_ = std::move(marks);
    for (const Mark& mark : marks_)
        noteChange(dirty_.mark(toBox(mark.rect)));
}

void Surface::flipMarks() const
{
    DevicePixels canvas(image_, ratio_, width_, height_);
    for (const Mark& mark : marks_) {
        if (mark.kind == Mark::Kind::Inversion)
            canvas.invert(intersect(toBox(mark.rect), canvas.bounds()));
        else
            focusRectBox(canvas, toBox(mark.rect));
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

void Surface::remakeImage()
{
    memo_.clear();
    pending_.stop();
    solidAreas_.clear();
    dirty_.resize(width_, height_);
    noteChange(!dirty_.clean());
    const DevicePixels scale(image_, ratio_, width_, height_);
    image_ = makeImage(static_cast<int>(scale.toDevice(width_)), static_cast<int>(scale.toDevice(height_)));
    image_.fill(translateColor(backColor_));
}

void Surface::setDevicePixelRatio(qreal ratio)
{
    ratio = validRatio(ratio);
    if (ratio == ratio_)
        return;
    if (interruptsCell())
        return;
    settle();
    liftMarks();
    ratio_ = ratio;
    remakeImage();
}

void Surface::resize(int width, int height)
{
    settle();
    // A surface without pixels has no extent either way; the grid's layout
    // reads a height of 0 when the width is 0.
    if (width <= 0 || height <= 0)
        width = height = 0;
    if (width == width_ && height == height_)
        return;
    if (interruptsCell())
        return;
    liftMarks();
    makeAllOwed();
    const QImage old = std::exchange(image_, QImage());
    width_ = width;
    height_ = height;
    remakeImage();
    const int keptWidth = std::min(image_.width(), old.width());
    const int keptHeight = keptWidth > 0 ? std::min(image_.height(), old.height()) : 0;
    for (int y = 0; y < keptHeight; ++y)
        std::memcpy(image_.scanLine(y), old.constScanLine(y), static_cast<size_t>(keptWidth) * sizeof(QRgb));
}

void Surface::clear()
{
    if (interruptsCell())
        return;
    if (!readyToDraw())
        return;
    memo_.clear();
    pending_.start(image_, translateColor(backColor_));
}

void Surface::fill(Rect r, OleColor colour)
{
    if (!startsShapeCall(CellCall::Fill, toBox(r), ::qHash(colour)))
        return;
    fillOver(toBox(r), translateColor(colour));
}

// The parts known to hold the colour are left alone; the others are filled,
// or only compared when they are strips beside them.
void Surface::fillRemembered(Rect r, OleColor colour)
{
    const Box box = intersect(toBox(r), {0, 0, width_, height_});
    if (cell_ || box.empty())
        return fill(r, colour);
    if (!readyToDraw())
        return;
    const QRgb pixel = translateColor(colour);
    memo_.forget(box);
    const DevicePixels canvas(image_, ratio_, width_, height_);
    const std::vector<Box> held = solidAreas_.heldParts(box, pixel);
    for (const Box& part : held)
        pending_.cover(canvas.toDevice(part));
    for (const Box& part : solidAreas_.partsNotHeld(box, pixel)) {
        if (held.empty())
            fillOver(part, pixel);
        else
            fillUnlessHeld(part, pixel);
    }
    solidAreas_.remember(box, pixel);
}

// An opaque fill writes every pixel of its box: nothing owed stays beneath.
void Surface::fillOver(const Box& box, QRgb pixel)
{
    DevicePixels canvas(image_, ratio_, width_, height_);
    const Box visible = intersect(box, canvas.bounds());
    drawingOver(visible, pixel);
    pending_.cover(canvas.toDevice(visible));
    canvas.fill(visible, pixel);
}

// Pixels that hold the colour already stay as they are, unchanged.
void Surface::fillUnlessHeld(const Box& box, QRgb pixel)
{
    DevicePixels canvas(image_, ratio_, width_, height_);
    const Box device = canvas.toDevice(intersect(box, canvas.bounds()));
    if (!canvas.holds(device, pixel))
        return fillOver(box, pixel);
    pending_.cover(device);
}

void Surface::drawingOver(const Box& box, std::optional<QRgb> fillColour) const
{
    if (box.empty())
        return;
    solidAreas_.drawnOver(box, fillColour);
    noteChange(dirty_.mark(box));
}

void Surface::noteChange(bool firstChange) const
{
    if (firstChange && changeHandler_)
        changeHandler_();
}

// The drawings that make owed pixels in their own box have marked it
// already; these are the pixels made for a read or a move.
void Surface::makeAllOwed() const
{
    if (!pending_.active())
        return;
    const QRgb colour = pending_.colour();
    pending_.makeAll(image_, [&](const Box& written) { drawingOver(surfaceBoxOf(written), colour); });
}

// The surface pixels that cover a box of device pixels.
Box Surface::surfaceBoxOf(const Box& deviceBox) const
{
    const DevicePixels canvas(image_, ratio_, width_, height_);
    return {canvas.toSurface(deviceBox.left), canvas.toSurface(deviceBox.top), canvas.toSurface(deviceBox.right - 1) + 1,
            canvas.toSurface(deviceBox.bottom - 1) + 1};
}

void Surface::line(int32_t x1, int32_t y1, int32_t x2, int32_t y2)
{
    if (interruptsCell())
        return;
    if (!readyToDraw())
        return;
    const Box reach{std::min(x1, x2), std::min(y1, y2), int64_t{std::max(x1, x2)} + 1, int64_t{std::max(y1, y2)} + 1};
    memo_.forget(reach);
    const QRgb pixel = translateColor(penColor_);
    const bool dotted = penStyle_ == PenStyle::Dot;
    if (!dotted && (x1 == x2 || y1 == y2)) {
        if (x1 != x2 || y1 != y2)
            fillOver(axisLineBox(x1, y1, x2, y2), pixel);
        return;
    }
    DevicePixels canvas(image_, ratio_, width_, height_);
    drawingOver(reach);
    pending_.make(image_, canvas.toDevice(reach));
    walkLine(canvas, x1, y1, x2, y2, pixel, dotted);
}

void Surface::edge(Rect r, unsigned kinds, unsigned sides)
{
    if (!startsShapeCall(CellCall::Edge, toBox(r), qHashMulti(0, kinds, sides)))
        return;
    DevicePixels canvas(image_, ratio_, width_, height_);
    drawingOver(toBox(r));
    makePending(toBox(r));
    const auto paletteOf = [sides](EdgeColours colours) {
        return (sides & EdgeMono) ? EdgeColours{systemColour(6), systemColour(6)} : colours;
    };
    Box ring = toBox(r);
    if (const auto outer = outerColours(kinds)) {
        drawRing(canvas, ring, paletteOf(*outer), sides);
        ring = deflated(ring, sides);
    }
    if (const auto inner = innerColours(kinds))
        drawRing(canvas, ring, paletteOf(*inner), sides);
}

void Surface::checkBox(Rect r, bool checked)
{
    if (!startsShapeCall(CellCall::CheckBox, toBox(r), ::qHash(checked)))
        return;
    DevicePixels canvas(image_, ratio_, width_, height_);
    drawingOver(toBox(r));
    makePending(toBox(r));
    const Box bounds = toBox(r);
    const int64_t side = std::min(bounds.width(), bounds.height());
    if (side <= 0)
        return;
    const Box square{bounds.left, bounds.top, bounds.left + side, bounds.top + side};
    drawRing(canvas, square, *outerColours(SunkenOuter), SideAll);
    drawRing(canvas, deflated(square, SideAll), *innerColours(SunkenInner), SideAll);
    const Box interior = deflated(deflated(square, SideAll), SideAll);
    if (interior.empty())
        return;
    canvas.fill(intersect(interior, canvas.bounds()), translateColor(0xFFFFFF));
    if (checked)
        drawTick(canvas, interior);
}

void Surface::setFontName(const QString& name) { changeFont([&] { font_.setFamily(name); }); }

void Surface::setFontSize(double points)
{
    if (points > 0 && std::isfinite(points))
        changeFont([&] { font_.setPointSizeF(points); });
}

void Surface::setFontBold(bool on) { changeFont([&] { font_.setBold(on); }); }
void Surface::setFontItalic(bool on) { changeFont([&] { font_.setItalic(on); }); }
void Surface::setFontUnderline(bool on) { changeFont([&] { font_.setUnderline(on); }); }
void Surface::setFontStrikethrough(bool on) { changeFont([&] { font_.setStrikeOut(on); }); }

const Surface::FontKey& Surface::keyOfFont()
{
    if (lastFontKeyCurrent_)
        return fontKeys_[lastFontKey_];
    lastFontKeyCurrent_ = true;
    for (size_t i = 0; i < fontKeys_.size(); ++i) {
        const size_t at = (lastFontKey_ + i) % fontKeys_.size();
        if (!fontKeys_[at].key.isEmpty() && fontKeys_[at].font == font_) {
            lastFontKey_ = at;
            return fontKeys_[at];
        }
    }
    lastFontKey_ = nextFontKey_;
    FontKey& slot = fontKeys_[nextFontKey_];
    nextFontKey_ = (nextFontKey_ + 1) % fontKeys_.size();
    slot.font = font_;
    slot.key = font_.key();
    slot.hash = qHash(slot.key);
    return slot;
}

void Surface::text(QAnyStringView s, Rect r, unsigned flags)
{
    if (cell_ && skipCellCall(CellCall::Text, toBox(r), textHash(s, toBox(r), flags)))
        return;
    drawText(textOf(s), r, flags);
}

// The text as a QString without allocating where it can: UTF-16 is viewed
// in place, Latin-1 is widened into a buffer the next text reuses.
QString Surface::textOf(QAnyStringView s)
{
    return s.visit([this](auto view) {
        using View = decltype(view);
        if constexpr (std::is_same_v<View, QStringView>) {
            return QString::fromRawData(view.data(), view.size());
        } else if constexpr (std::is_same_v<View, QLatin1StringView>) {
            if (!latin1Text_.isDetached())
                latin1Text_ = QString();
            latin1Text_.resize(view.size());
            std::transform(view.data(), view.data() + view.size(), latin1Text_.begin(),
                           [](char c) { return QChar(QLatin1Char(c)); });
            return latin1Text_;
        } else {
            return view.toString();
        }
    });
}

void Surface::drawText(const QString& s, Rect r, unsigned flags)
{
    if (!readyToDraw())
        return;
    const Box bounds = toBox(r);
    forgetUnlessCell(bounds);
    const Box visible = intersect(bounds, {0, 0, width_, height_});
    if (visible.empty() || s.isEmpty())
        return;
    drawingOver(visible);
    makePending(visible);
    const QPaintDevice& device = image_.isNull() ? referenceDevice() : image_;
    const auto layout = layoutRect(bounds, visible, flags, font_, device, s);
    if (!layout)
        return;
    const QString shown = visibleText(s, *layout, visible, flags, font_, device);
    if (shown.size() == s.size() && drawCachedText(s, *layout, r, flags))
        return;
    const DevicePixels canvas(image_, ratio_, width_, height_);
    QPainter painter(&image_);
    painter.setClipRect(toQRect(canvas.toDevice(visible)));
    if (ratio_ != 1)
        painter.scale(ratio_, ratio_);
    drawTextLine(painter, shown, *layout, flags, font_, translateColor(textColor_));
}

// A text drawn again in a rectangle near the surface is drawn from its
// mask: the mask is made on the second draw by drawing the text at the same
// device phase into a scratch image, and then copied in the text colour.
bool Surface::drawCachedText(const QString& s, const QRectF& layout, Rect r, unsigned flags)
{
    DevicePixels canvas(image_, ratio_, width_, height_);
    const Box bounds = toBox(r);
    const Box device = canvas.toDevice(bounds);
    if (!isLayoutSafe(bounds) || device.width() > kLargestCachedText || device.height() > kLargestCachedText)
        return false;
    const DeviceOrigin origin = deviceOriginOf(bounds, ratio_);
    const FontKey& font = keyOfFont();
    const TextKey key{font.key, font.hash, s, bounds.width(), bounds.height(), flags, origin.phaseX, origin.phaseY, ratio_};
    TextCache& cache = TextCache::forThisThread();
    const TextMask* mask = cache.find(key);
    if (!mask && !cache.drawnBefore(key))
        return false;
    if (!mask) {
        const Box clip = translated(device, -origin.x, -origin.y);
        mask = &cache.insert(key, renderMask(s, layout.translated(-bounds.left, -bounds.top), clip, origin, ratio_, font_, flags));
    }
    if (!mask->exact || origin.x < mask->overhang.x() || origin.y < mask->overhang.y())
        return false;
    const QRgb pixel = translateColor(textColor_);
    const Box visible = intersect(device, canvas.deviceBounds());
    for (const TextMask::Run& run : mask->runs) {
        const int64_t y = origin.y + run.y;
        if (y < visible.top || y >= visible.bottom)
            continue;
        const int64_t left = std::max(origin.x + run.left, visible.left);
        const int64_t right = std::min(origin.x + run.right, visible.right);
        if (left < right)
            std::fill(canvas.row(y) + left, canvas.row(y) + right, pixel);
    }
    return true;
}

bool Surface::beginCell()
{
    if (discarding_ || cell_)
        return false;
    settle();
    liftMarks();
    cell_.emplace();
    return true;
}

#ifdef TABULA_CACHE_CHECKS
QImage Surface::cellPixels() const
{
    const DevicePixels canvas(image_, ratio_, width_, height_);
    pending_.make(image_, canvas.toDevice(cell_->bounds));
    return image_.copy(toQRect(canvas.toDevice(cell_->bounds)));
}
#endif

std::optional<size_t> Surface::movedCell(Rect box) const
{
    return memo_.movedDigestAt(intersect(toBox(box), {0, 0, width_, height_}));
}

bool Surface::cellSkipped() const { return cell_->mode == CellPass::Mode::Comparing; }

bool Surface::cellMatches() const { return !cell_->differs && cell_->digest == cell_->remembered; }

void Surface::redrawCell()
{
    cell_.emplace();
    cell_->mayCompare = false;
}

void Surface::endCell(bool complete)
{
    if (!complete)
        stopKeepingCell();
    const CellPass cell = *cell_;
    cell_.reset();
    if (cell.mode == CellPass::Mode::Drawing)
        memo_.remember(cell.bounds, cell.digest);
}

bool Surface::skipCellCall(CellCall call, const Box& box, size_t hash)
{
    using Mode = CellPass::Mode;
    CellPass& cell = *cell_;
    if (cell.mode == Mode::Unkept)
        return false;
    if (cell.mode == Mode::Starting) {
        if (call != CellCall::Fill) {
            cell.mode = Mode::Unkept;
            return false;
        }
        cell.box = box;
        cell.bounds = intersect(box, {0, 0, width_, height_});
        const std::optional<size_t> remembered = cell.mayCompare ? memo_.digestAt(cell.bounds) : std::nullopt;
        cell.mode = remembered ? Mode::Comparing : Mode::Drawing;
        cell.remembered = remembered.value_or(0);
    } else if (!contains(cell.box, box)) {
        cell.differs = true;
        if (cell.mode == Mode::Drawing)
            stopKeepingCell();
        return cell.mode == Mode::Comparing;
    }
    const Box at = translated(box, -cell.box.left, -cell.box.top);
    for (const uint64_t v : {uint64_t(call), uint64_t(at.left), uint64_t(at.top), uint64_t(at.right),
                             uint64_t(at.bottom), uint64_t(hash)})
        cell.digest = mixed(cell.digest, v);
    return cell.mode == Mode::Comparing;
}

// A cell's first fill wrote its whole box, so what the cell draws inside it
// has nothing owed beneath.
void Surface::makePending(const Box& box)
{
    if (!pending_.active() || (cell_ && cell_->mode != CellPass::Mode::Starting && contains(cell_->box, box)))
        return;
    pending_.make(image_, DevicePixels(image_, ratio_, width_, height_).toDevice(box));
}

bool Surface::startsShapeCall(CellCall call, const Box& box, size_t hash)
{
    if (cell_ && skipCellCall(call, box, hash))
        return false;
    if (!readyToDraw())
        return false;
    forgetUnlessCell(box);
    return true;
}

void Surface::forgetUnlessCell(const Box& box)
{
    // The cell being drawn forgets what it covers when it is remembered.
    if (!cell_ || cell_->mode != CellPass::Mode::Drawing)
        memo_.forget(box);
}

bool Surface::interruptsCell()
{
    if (!cell_)
        return false;
    cell_->differs = true;
    if (cell_->mode == CellPass::Mode::Comparing)
        return true;
    stopKeepingCell();
    return false;
}

// A cell that will not be remembered has drawn over its box without
// forgetting the cells there, which now hold other pixels.
void Surface::stopKeepingCell()
{
    if (cell_->mode == CellPass::Mode::Drawing)
        memo_.forget(cell_->bounds);
    cell_->mode = CellPass::Mode::Unkept;
}

size_t Surface::textHash(QAnyStringView s, const Box& box, unsigned flags)
{
    const DeviceOrigin origin = deviceOriginOf(box, ratio_);
    // The seed tells the encodings apart.
    const size_t textHash = s.visit([](auto v) {
        return digestOfBytes(v.data(), static_cast<size_t>(v.size()) * sizeof(*v.data()), sizeof(*v.data()));
    });
    size_t hash = mixed(keyOfFont().hash, textHash);
    for (const uint64_t v : {uint64_t{textColor_}, uint64_t{flags}, std::bit_cast<uint64_t>(origin.phaseX),
                             std::bit_cast<uint64_t>(origin.phaseY), std::bit_cast<uint64_t>(double{ratio_})})
        hash = mixed(hash, v);
    return hash;
}

double Surface::textWidth(const QString& s) const
{
    const QPaintDevice& device = image_.isNull() ? referenceDevice() : image_;
    return QFontMetricsF(font_, &device).horizontalAdvance(s);
}

void Surface::focusRect(Rect r)
{
    if (interruptsCell())
        return;
    if (!readyToDraw())
        return;
    memo_.forget(toBox(r));
    drawingOver(toBox(r));
    DevicePixels canvas(image_, ratio_, width_, height_);
    pending_.make(image_, canvas.toDevice(toBox(r)));
    focusRectBox(canvas, toBox(r));
}

void Surface::invert(Rect r)
{
    if (interruptsCell())
        return;
    if (!readyToDraw())
        return;
    memo_.forget(toBox(r));
    drawingOver(toBox(r));
    DevicePixels canvas(image_, ratio_, width_, height_);
    pending_.make(image_, canvas.toDevice(toBox(r)));
    canvas.invert(intersect(toBox(r), canvas.bounds()));
}

Rect Surface::scroll(int32_t dx, int32_t dy, Rect scroll, Rect clip)
{
    if (interruptsCell())
        return {};
    if (!readyToDraw())
        return {};
    makeAllOwed();
    memo_.startMove();
    DevicePixels canvas(image_, ratio_, width_, height_);
    const Box surface = canvas.bounds();
    const Box source = toBox(scroll);
    const Box target = intersect(toBox(clip), surface);
    const Box moved = intersect(intersect(translated(source, dx, dy), target), translated(surface, dx, dy));
    const double deviceDx = static_cast<double>(dx) * ratio_;
    const double deviceDy = static_cast<double>(dy) * ratio_;
    const bool whole = deviceDx == std::floor(deviceDx) && deviceDy == std::floor(deviceDy);
    drawingOver(moved);
    if (!moved.empty() && whole) {
        movePixels(canvas, canvas.toDevice(moved), canvas.toDevice(dx), canvas.toDevice(dy));
        memo_.moved(source, moved, dx, dy);
    } else if (!moved.empty()) {
        moveBlocks(image_, canvas, moved, dx, dy);
        memo_.forget(moved);
    }
    const Box uncovered = boundsOfDifference(intersect(source, target), moved);
    return uncovered.empty() ? Rect{} : toRect(uncovered);
}

}  // namespace TabulaControl::platform
