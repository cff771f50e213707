#include "pixels/Raster.h"

#include "pixels/Digest.h"
#include "pixels/TextCache.h"
#include "pixels/TextLine.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>

namespace TabulaControl::platform {

namespace {

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

// Qt lays text out in 26.6 fixed point, which overflows a little beyond
// 2^25 pixels; rectangles within this bound are passed on unchanged.
constexpr int64_t kLayoutSafeCoordinate = int64_t{1} << 22;

bool isLayoutSafe(const Box& b)
{
    const auto safe = [](int64_t v) { return std::abs(v) <= kLayoutSafeCoordinate; };
    return safe(b.left) && safe(b.top) && safe(b.right) && safe(b.bottom);
}

// The width of the text as drawTextLine lays it out: on one line, with its
// line breaks drawn as spaces, which horizontalAdvance leaves out.
double lineWidth(const QFontMetricsF& metrics, const QString& s)
{
    return metrics.boundingRect(QRectF(), kLineFlags, s).width();
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
    const auto across = nearbyStretch(r.left, r.right, horizontalAnchor(flags), lineWidth(metrics, s),
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
        scratch.setDotsPerMeterX(Raster::referenceDevice().dotsPerMeterX());
        scratch.setDotsPerMeterY(Raster::referenceDevice().dotsPerMeterY());
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
    return {overhang(horizontalAnchor(flags), layout.width(), [&] { return lineWidth(metrics, text); }),
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
    mask.overhang = overhangOf(text, layout, flags, font, Raster::referenceDevice(), ratio);
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

}  // namespace

void Raster::text(const QString& s, const Box& bounds, unsigned flags, const TextStyle& style)
{
    const Box visible = intersect(bounds, this->bounds());
    if (visible.empty() || s.isEmpty())
        return;
    const QPaintDevice& device = this->device();
    const auto layout = layoutRect(bounds, visible, flags, style.font, device, s);
    if (!layout)
        return;
    const QString shown = visibleText(s, *layout, visible, flags, style.font, device);
    // Glyph masks cost no more than a text's mask, and nothing to remember.
    if (ratio_ == 1 && drawGlyphLine(image_, toQRect(visible), shown, *layout, flags, style.font, style.key.key,
                                     style.colour))
        return;
    if (shown.size() == s.size() && drawCachedText(s, *layout, bounds, flags, style))
        return;
    QPainter painter(&image_);
    painter.setClipRect(toQRect(toDevice(visible)));
    if (ratio_ != 1)
        painter.scale(ratio_, ratio_);
    drawTextLine(painter, shown, *layout, flags, style.font, style.colour);
}

// A text drawn again in a rectangle near the surface is drawn from its
// mask: the mask is made on the second draw by drawing the text at the same
// device phase into a scratch image, and then copied in the text colour.
bool Raster::drawCachedText(const QString& s, const QRectF& layout, const Box& bounds, unsigned flags,
                            const TextStyle& style)
{
    const Box device = toDevice(bounds);
    if (!isLayoutSafe(bounds) || device.width() > kLargestCachedText || device.height() > kLargestCachedText)
        return false;
    const DeviceOrigin origin = deviceOriginOf(bounds, ratio_);
    const TextKey key{style.key.key, style.key.hash, s, bounds.width(), bounds.height(), flags, origin.phaseX, origin.phaseY, ratio_};
    TextCache& cache = TextCache::forThisThread();
    const TextMask* mask = cache.find(key);
    if (!mask && !cache.drawnBefore(key))
        return false;
    if (!mask) {
        const Box clip = translated(device, -origin.x, -origin.y);
        mask = &cache.insert(key, renderMask(s, layout.translated(-bounds.left, -bounds.top), clip, origin, ratio_, style.font, flags));
    }
    if (!mask->exact || origin.x < mask->overhang.x() || origin.y < mask->overhang.y())
        return false;
    const Box visible = intersect(device, deviceBounds());
    const Rows row = rows();
    const QRgb colour = style.colour;  // a local copy: the pixels written could alias the style's
    for (const TextMask::Run& run : mask->runs) {
        const int64_t y = origin.y + run.y;
        if (y < visible.top || y >= visible.bottom)
            continue;
        const int64_t left = std::max(origin.x + run.left, visible.left);
        const int64_t right = std::min(origin.x + run.right, visible.right);
        if (left < right)
            std::fill(row[y] + left, row[y] + right, colour);
    }
    return true;
}

// Qt draws glyphs this many device pixels tall and taller from their
// outlines rather than from its glyph cache.
constexpr int kLargestCachedGlyph = 64;

bool Raster::drawsOutlines(const TextStyle& style) const { return style.key.pixelSize * ratio_ >= kLargestCachedGlyph; }

size_t Raster::textDigest(QAnyStringView s, const Box& box, unsigned flags, const TextStyle& style) const
{
    const DeviceOrigin origin = deviceOriginOf(box, ratio_);
    // The seed tells the encodings apart.
    const size_t text = s.visit([](auto v) {
        return digestOfBytes(v.data(), static_cast<size_t>(v.size()) * sizeof(*v.data()), sizeof(*v.data()));
    });
    size_t digest = mixed(style.key.hash, text);
    for (const uint64_t v : {uint64_t{style.colour}, uint64_t{flags}, std::bit_cast<uint64_t>(origin.phaseX),
                             std::bit_cast<uint64_t>(origin.phaseY), std::bit_cast<uint64_t>(double{ratio_})})
        digest = mixed(digest, v);
    return digest;
}

}  // namespace TabulaControl::platform
