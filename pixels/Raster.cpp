#include "pixels/Raster.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

namespace TabulaControl::platform {

namespace {

constexpr int kDotsPerMeter96Dpi = 3780;
constexpr QRgb kXorMask = 0x00FFFFFF;
constexpr OleColor systemColour(unsigned index) { return kSystemColourBit + index; }

QImage makeImage(int width, int height)
{
    QImage image(std::max(0, width), std::max(0, height), QImage::Format_RGB32);
    image.setDotsPerMeterX(kDotsPerMeter96Dpi);
    image.setDotsPerMeterY(kDotsPerMeter96Dpi);
    return image;
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

void drawRing(Raster& raster, const Box& ring, EdgeColours colours, unsigned sides)
{
    if (ring.empty())
        return;
    const QRgb light = translateColor(colours.topLeft, raster.systemColours());
    const QRgb dark = translateColor(colours.bottomRight, raster.systemColours());
    if (sides & SideTop)
        raster.fill({ring.left, ring.top, ring.right, ring.top + 1}, light);
    if (sides & SideLeft)
        raster.fill({ring.left, ring.top, ring.left + 1, ring.bottom}, light);
    if (sides & SideBottom)
        raster.fill({ring.left, ring.bottom - 1, ring.right, ring.bottom}, dark);
    if (sides & SideRight)
        raster.fill({ring.right - 1, ring.top, ring.right, ring.bottom}, dark);
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

}  // namespace

Raster::Raster(int width, int height, qreal ratio, QRgb background) { resize(width, height, ratio, background); }

void Raster::resize(int width, int height, qreal ratio, QRgb background)
{
    const QImage old = std::exchange(image_, QImage());
    const bool keep = ratio == ratio_;
    width_ = width;
    height_ = height;
    ratio_ = ratio;
    image_ = makeImage(static_cast<int>(toDevice(width_)), static_cast<int>(toDevice(height_)));
    image_.fill(background);
    deviceBounds_ = {0, 0, image_.width(), image_.height()};
    const int keptWidth = keep ? std::min(image_.width(), old.width()) : 0;
    const int keptHeight = keptWidth > 0 ? std::min(image_.height(), old.height()) : 0;
    for (int y = 0; y < keptHeight; ++y)
        std::memcpy(image_.scanLine(y), old.constScanLine(y), static_cast<size_t>(keptWidth) * sizeof(QRgb));
}

// Fonts are resolved and measured against this when the surface has no
// pixels yet; it has the same resolution as every surface image.
const QImage& Raster::referenceDevice()
{
    static const QImage device = makeImage(1, 1);
    return device;
}

const QPaintDevice& Raster::device() const { return image_.isNull() ? referenceDevice() : image_; }

// The surface pixel that covers device pixel v.
int64_t Raster::toSurface(int64_t v) const
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

Box Raster::surfaceBoxOf(const Box& deviceBox) const
{
    return {toSurface(deviceBox.left), toSurface(deviceBox.top), toSurface(deviceBox.right - 1) + 1,
            toSurface(deviceBox.bottom - 1) + 1};
}

bool Raster::movesWhole(int64_t dx, int64_t dy) const
{
    const double deviceDx = static_cast<double>(dx) * ratio_;
    const double deviceDy = static_cast<double>(dy) * ratio_;
    return deviceDx == std::floor(deviceDx) && deviceDy == std::floor(deviceDy);
}

Box Raster::deviceBoxOf(const Box& box) const
{
    const Box visible = intersect(toDevice(intersect(box, bounds())), deviceBounds());
    return visible.empty() ? Box{} : visible;
}

void Raster::fill(const Box& box, QRgb pixel)
{
    const Box visible = deviceBoxOf(box);
    const Rows row = rows();
    for (int64_t y = visible.top; y < visible.bottom; ++y)
        std::fill(row[y] + visible.left, row[y] + visible.right, pixel);
}

bool Raster::holds(const Box& box, QRgb pixel)
{
    const Box visible = deviceBoxOf(box);
    const Rows row = rows();
    for (int64_t y = visible.top; y < visible.bottom; ++y)
        if (!std::all_of(row[y] + visible.left, row[y] + visible.right, [pixel](QRgb p) { return p == pixel; }))
            return false;
    return true;
}

void Raster::invert(const Box& box)
{
    const Box visible = deviceBoxOf(box);
    const Rows row = rows();
    for (int64_t y = visible.top; y < visible.bottom; ++y)
        for (QRgb *p = row[y] + visible.left, *end = row[y] + visible.right; p != end; ++p)
            *p ^= kXorMask;
}

void Raster::setPixel(const Rows& row, int64_t x, int64_t y, QRgb pixel)
{
    if (ratio_ != 1)
        return fill({x, y, x + 1, y + 1}, pixel);
    if (x >= 0 && y >= 0 && x < width_ && y < height_)
        row[y][x] = pixel;
}

void Raster::invertPixel(const Rows& row, int64_t x, int64_t y)
{
    if (ratio_ != 1)
        return invert({x, y, x + 1, y + 1});
    if (x >= 0 && y >= 0 && x < width_ && y < height_)
        row[y][x] ^= kXorMask;
}

void Raster::invertEvenPixels(const Rows& row, const Box& box)
{
    const Box visible = intersect(box, bounds());
    for (int64_t y = visible.top; y < visible.bottom; ++y)
        for (int64_t x = visible.left + ((visible.left + y) & 1); x < visible.right; x += 2)
            invertPixel(row, x, y);
}

void Raster::focusRect(const Box& b)
{
    if (b.empty())
        return;
    const Rows row = rows();
    invertEvenPixels(row, {b.left, b.top, b.right, b.top + 1});
    if (b.height() > 1)
        invertEvenPixels(row, {b.left, b.bottom - 1, b.right, b.bottom});
    invertEvenPixels(row, {b.left, b.top + 1, b.left + 1, b.bottom - 1});
    if (b.width() > 1)
        invertEvenPixels(row, {b.right - 1, b.top + 1, b.right, b.bottom - 1});
}

// Walks the major axis one pixel per step; the minor offset at step i is
// i * minor / steps rounded to nearest, halves away from the start point.
// Only steps whose major coordinate is inside the image are visited, so the
// cost is bounded by the image size whatever the end points.
void Raster::line(int32_t x1, int32_t y1, int32_t x2, int32_t y2, QRgb pixel, bool dotted)
{
    if (!dotted && (x1 == x2 || y1 == y2)) {
        const auto [left, right] = axisSpan(x1, x2);
        const auto [top, bottom] = axisSpan(y1, y2);
        if (x1 != x2 || y1 != y2)
            fill({left, top, right, bottom}, pixel);
        return;
    }
    const int64_t dx = int64_t{x2} - x1;
    const int64_t dy = int64_t{y2} - y1;
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
    const int64_t minorExtent = xMajor ? height_ : width_;

    const auto [first, last] = stepsInside(majorStart, majorDirection, steps, xMajor ? width_ : height_);
    if (first >= last)
        return;
    const Rows row = rows();
    uint64_t quotient = static_cast<uint64_t>(first) * minorLength / stepCount;
    uint64_t remainder = static_cast<uint64_t>(first) * minorLength % stepCount;
    for (int64_t i = first; i < last; ++i) {
        const int64_t minorOffset = static_cast<int64_t>(quotient + (2 * remainder >= stepCount ? 1 : 0));
        const int64_t minor = minorStart + minorDirection * minorOffset;
        const int64_t major = majorStart + majorDirection * i;
        if (minor >= 0 && minor < minorExtent && (!dotted || isDrawnDot(i)))
            xMajor ? setPixel(row, major, minor, pixel) : setPixel(row, minor, major, pixel);
        remainder += minorLength;
        if (remainder >= stepCount) {
            remainder -= stepCount;
            ++quotient;
        }
    }
}

void Raster::edge(const Box& box, unsigned kinds, unsigned sides)
{
    const auto paletteOf = [sides](EdgeColours colours) {
        return (sides & EdgeMono) ? EdgeColours{systemColour(6), systemColour(6)} : colours;
    };
    Box ring = box;
    if (const auto outer = outerColours(kinds)) {
        drawRing(*this, ring, paletteOf(*outer), sides);
        ring = deflated(ring, sides);
    }
    if (const auto inner = innerColours(kinds))
        drawRing(*this, ring, paletteOf(*inner), sides);
}

void Raster::checkBox(const Box& bounds, bool checked)
{
    const int64_t side = std::min(bounds.width(), bounds.height());
    if (side <= 0)
        return;
    const Box square{bounds.left, bounds.top, bounds.left + side, bounds.top + side};
    drawRing(*this, square, *outerColours(SunkenOuter), SideAll);
    drawRing(*this, deflated(square, SideAll), *innerColours(SunkenInner), SideAll);
    const Box interior = deflated(deflated(square, SideAll), SideAll);
    if (interior.empty())
        return;
    fill(interior, translateColor(0xFFFFFF));
    if (checked)
        drawTick(interior);
}

void Raster::drawTick(const Box& interior)
{
    const int64_t offset = (interior.width() - kTickSize) / 2;
    const Box visible = intersect(interior, bounds());
    const Rows pixels = rows();
    const int64_t left = interior.left + offset;
    const int64_t top = interior.top + offset;
    for (int row = 0; row < kTickSize; ++row) {
        for (int column = 0; column < kTickSize; ++column) {
            const int64_t x = left + column;
            const int64_t y = top + row;
            const bool inside = x >= visible.left && x < visible.right && y >= visible.top && y < visible.bottom;
            if (inside && kTickRows[row][column] == 'x')
                setPixel(pixels, x, y, translateColor(0));
        }
    }
}

// Row by row in the order that reads every source row before it is
// overwritten.
void Raster::move(const Box& destination, int64_t dx, int64_t dy)
{
    if (destination.empty())
        return;
    if (!movesWhole(dx, dy))
        return moveBlocks(destination, dx, dy);
    const Box to = toDevice(destination);
    const int64_t deviceDx = toDevice(dx), deviceDy = toDevice(dy);
    const size_t bytes = static_cast<size_t>(to.width()) * sizeof(QRgb);
    const Rows row = rows();
    const auto copyRow = [&](int64_t y) {
        std::memmove(row[y] + to.left, row[y - deviceDy] + to.left - deviceDx, bytes);
    };
    if (deviceDy > 0) {
        for (int64_t y = to.bottom - 1; y >= to.top; --y)
            copyRow(y);
        return;
    }
    for (int64_t y = to.top; y < to.bottom; ++y)
        copyRow(y);
}

// A move by no whole number of device pixels: each device pixel of
// destination takes the device pixel at the same place in the block of the
// surface pixel it comes from.
void Raster::moveBlocks(const Box& destination, int64_t dx, int64_t dy)
{
    const QImage before = image_.copy();
    const auto sourceOf = [this](int64_t device, int64_t shift) {
        const int64_t surface = toSurface(device);
        const int64_t from = surface - shift;
        return std::min(toDevice(from) + device - toDevice(surface), toDevice(from + 1) - 1);
    };
    const Box target = deviceBoxOf(destination);
    const Rows row = rows();
    for (int64_t y = target.top; y < target.bottom; ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(before.constScanLine(static_cast<int>(sourceOf(y, dy))));
        QRgb* to = row[y];
        for (int64_t x = target.left; x < target.right; ++x)
            to[x] = from[sourceOf(x, dx)];
    }
}

}  // namespace TabulaControl::platform
