#pragma once

#include "pixels/Box.h"
#include "state/Rect.h"

#include <QAnyStringView>
#include <QFont>
#include <QImage>

#include <array>
#include <cmath>
#include <cstdint>

namespace TabulaControl::platform {

// Edge kinds and sides, with the classic bit values.
enum EdgeKind : unsigned {
    RaisedOuter = 1,
    SunkenOuter = 2,
    RaisedInner = 4,
    SunkenInner = 8,
};
enum EdgeSide : unsigned {
    SideLeft = 1,
    SideTop = 2,
    SideRight = 4,
    SideBottom = 8,
    SideAll = 15,
    EdgeMono = 0x8000,
};

// Text placement flags, with the classic bit values. Text is always drawn on
// a single line, clipped to its rectangle, with no prefix processing.
enum TextFlag : unsigned {
    TextLeft = 0,
    TextCenter = 1,
    TextRight = 2,
    TextTop = 0,
    TextVCenter = 4,
    TextBottom = 8,
    TextSingleLine = 0x20,
    TextNoPrefix = 0x800,
};

inline constexpr OleColor kSystemColourBit = 0x80000000;
using SystemColours = std::array<QRgb, 31>;
inline constexpr SystemColours kSystemColours = {
    0xC0C0C0, 0x008080, 0x000080, 0x808080, 0xC0C0C0, 0xFFFFFF, 0x000000, 0x000000,
    0x000000, 0xFFFFFF, 0xC0C0C0, 0xC0C0C0, 0x808080, 0x000080, 0xFFFFFF, 0xC0C0C0,
    0x808080, 0x808080, 0x000000, 0xC0C0C0, 0xFFFFFF, 0x000000, 0xC0C0C0, 0x000000,
    0xFFFFE1, 0xC0C0C0, 0x0000FF, 0x1084D0, 0xB5B5B5, 0x316AC5, 0xECE9D8,
};

// Translates a colour value to RGB. System colours come from a table: by
// default the classic light-grey scheme, so pictures are the same on every
// machine; an index outside the table gives black.
inline QRgb translateColor(OleColor colour, const SystemColours& system = kSystemColours)
{
    if (colour & kSystemColourBit) {
        const OleColor index = colour - kSystemColourBit;
        return index < system.size() ? 0xFF000000 | system[index] : qRgb(0, 0, 0);
    }
    return qRgb(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

// A font with its key, which text masks are filed under.
struct FontKey {
    QFont font;
    QString key;
    size_t hash = 0;
    // The height of its glyphs in surface pixels.
    int pixelSize = 0;
};

// How a text is drawn besides its place.
struct TextStyle {
    const QFont& font;
    const FontKey& key;
    QRgb colour;
};

// The image and its rasterisers. Coordinates are surface pixels; the image
// has device pixels, and at a device pixel ratio r the surface pixel x
// covers the device pixels from round(x * r) up to round((x + 1) * r):
// every edge lands on a whole device pixel, so nothing is blended, and at
// ratio 1 the two are the same pixels. Every drawing is clipped to the image
// and knows nothing of what is cached about it.
class Raster {
public:
    Raster(int width, int height, qreal ratio, QRgb background);
    // A new image in the background, keeping the pixels of the overlapping
    // area when the ratio stays.
    void resize(int width, int height, qreal ratio, QRgb background);

    int width() const { return width_; }
    int height() const { return height_; }
    qreal ratio() const { return ratio_; }
    Box bounds() const { return {0, 0, width_, height_}; }
    QImage& image() { return image_; }
    const QImage& image() const { return image_; }
    // What fonts are resolved and measured against: the image, or while
    // there is none, an image of the same resolution.
    const QPaintDevice& device() const;
    static const QImage& referenceDevice();

    int64_t toDevice(int64_t v) const { return ratio_ == 1 ? v : static_cast<int64_t>(std::floor(double(v) * ratio_ + 0.5)); }
    Box toDevice(const Box& b) const { return {toDevice(b.left), toDevice(b.top), toDevice(b.right), toDevice(b.bottom)}; }
    // The surface pixels that cover a box of device pixels.
    Box surfaceBoxOf(const Box& deviceBox) const;
    // Whether a move by (dx, dy) is a whole number of device pixels.
    bool movesWhole(int64_t dx, int64_t dy) const;

    void fill(const Box& box, QRgb pixel);
    bool holds(const Box& box, QRgb pixel);
    void invert(const Box& box);
    // Dotted, by exclusive-or: drawing it twice leaves the pixels as they were.
    void focusRect(const Box& box);
    // The end point itself is not drawn; a dotted line draws three pixels of six.
    void line(int32_t x1, int32_t y1, int32_t x2, int32_t y2, QRgb pixel, bool dotted);
    void edge(const Box& box, unsigned kinds, unsigned sides);
    // The table system colours are translated with.
    const SystemColours& systemColours() const { return systemColours_; }
    void setSystemColours(const SystemColours& colours) { systemColours_ = colours; }
    void checkBox(const Box& box, bool checked);
    void text(const QString& s, const Box& box, unsigned flags, const TextStyle& style);
    // What decides a text's pixels besides the place of its rectangle.
    size_t textDigest(QAnyStringView s, const Box& box, unsigned flags, const TextStyle& style) const;
    // Whether Qt draws the style's glyphs from their outlines. Where an
    // outline lands moves by a fraction of a pixel as the font engine is
    // used for other drawing, so the same text need not draw the same pixels.
    bool drawsOutlines(const TextStyle& style) const;
    // Moves the pixels of destination from (x - dx, y - dy).
    void move(const Box& destination, int64_t dx, int64_t dy);

private:
    int64_t toSurface(int64_t v) const;
    // The image's rows, writable. Taken once per drawing: taking them makes
    // the image its own copy first, which costs a call each time.
    struct Rows {
        uchar* bits;
        qsizetype stride;
        QRgb* operator[](int64_t deviceY) const { return reinterpret_cast<QRgb*>(bits + deviceY * stride); }
    };
    Rows rows() { return {image_.bits(), image_.bytesPerLine()}; }
    Box deviceBounds() const { return deviceBounds_; }
    // The device pixels of box inside the image; none when it is empty.
    Box deviceBoxOf(const Box& box) const;
    void setPixel(const Rows& rows, int64_t x, int64_t y, QRgb pixel);
    void invertPixel(const Rows& rows, int64_t x, int64_t y);
    void invertEvenPixels(const Rows& rows, const Box& box);
    void drawTick(const Box& interior);
    void moveBlocks(const Box& destination, int64_t dx, int64_t dy);
    bool drawCachedText(const QString& s, const QRectF& layout, const Box& box, unsigned flags, const TextStyle& style);

    QImage image_;
    Box deviceBounds_;
    qreal ratio_ = 1;
    int width_ = 0;
    int height_ = 0;
    SystemColours systemColours_ = kSystemColours;
};

}  // namespace TabulaControl::platform
