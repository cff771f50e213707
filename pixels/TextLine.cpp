#include "pixels/TextLine.h"

#include "pixels/Raster.h"

#include <QGlyphRun>
#include <QHash>
#include <QImage>
#include <QPaintDevice>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <QVarLengthArray>

#include <algorithm>
#include <bitset>
#include <climits>
#include <map>
#include <memory>
#include <vector>

namespace TabulaControl::platform {

namespace {

Qt::Alignment alignmentOf(unsigned flags)
{
    constexpr Qt::AlignmentFlag across[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight, Qt::AlignLeft};
    constexpr Qt::AlignmentFlag down[] = {Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom, Qt::AlignTop};
    return across[flags & 3] | down[(flags >> 2) & 3];
}

// Text layout works in 1/64 pixel and converts from floating point by
// truncation.
int32_t toFixed(qreal v) { return static_cast<int32_t>(v * 64); }
qreal fromFixed(int64_t v) { return static_cast<qreal>(v) / 64; }

// Printable Latin-1 characters, none of which combines or runs right to
// left; the soft hyphen is left out, as layout may hide it.
bool isPlainLatin1(char16_t c) { return (c >= 0x20 && c < 0x7F) || (c >= 0xA0 && c <= 0xFF && c != 0xAD); }

// Glyphs at or above this many pixels are drawn from outlines, by another
// path of the paint engine.
constexpr int kLargestGlyph = 48;

// The device pixels one glyph covers when its origin lies a fraction
// (in 1/64 pixel) past a whole pixel, relative to that pixel: as runs, and
// the box around them.
struct GlyphMask {
    struct Run {
        int32_t y;
        int32_t left;
        int32_t right;
    };
    std::vector<Run> runs;
    int32_t left = INT32_MAX, top = INT32_MAX, right = INT32_MIN, bottom = INT32_MIN;
    // False when the glyph has pixels that are not wholly the pen colour.
    bool exact = true;
};

GlyphMask renderGlyph(const QRawFont& font, quint32 glyph, int32_t fractionX, int32_t fractionY);

// The glyph of each plain character of a font and its advance, as the
// general layout shapes them, and the pairs of characters the shaper does
// not simply put side by side (kerning, ligatures): measured for a
// character on its first use, by laying out its pairs with every other
// plain character.
class GlyphTable {
public:
    explicit GlyphTable(const QFont& font);

    int32_t ascent() const { return ascent_; }
    int32_t height() const { return ascent_ + descent_; }
    // Whether the character is plain, has its own glyph in the font and an
    // advance; measures it first if need be.
    bool usable(char16_t c)
    {
        if (c >= 256 || glyphs_[c] == 0)
            return false;
        if (!measured_.test(c))
            measureChar(c);
        return glyphs_[c] != 0;
    }
    // For usable characters only.
    int32_t advance(char16_t c) const { return advances_[c]; }
    bool joined(char16_t left, char16_t right) const
    {
        return pairAdvances_[pairIndex(left, right)] != advances_[left];
    }

    // The mask of the glyph of a plain character at fractions of a pixel,
    // read back on first use.
    const GlyphMask& mask(char16_t c, int32_t fractionX, int32_t fractionY)
    {
        auto& byFractionX = masks_[fractionY];
        if (byFractionX.empty())
            byFractionX.resize(256 * 64);
        auto& mask = byFractionX[size_t{c} * 64 + static_cast<size_t>(fractionX)];
        if (!mask) {
            mask = std::make_unique<GlyphMask>(renderGlyph(raw_, glyphs_[c], fractionX, fractionY));
            ++maskCount_;
        }
        return *mask;
    }
    // Drops every mask once there are many; no mask may be held across it.
    void trimMasks()
    {
        constexpr size_t kMostMasks = 1 << 14;
        if (maskCount_ >= kMostMasks) {
            masks_.clear();
            maskCount_ = 0;
        }
    }

private:
    // Pair advances not measured, or measured twice with different results.
    static constexpr int32_t kUnmeasured = INT32_MIN;
    static constexpr int32_t kUnsettled = INT32_MIN + 1;
    static size_t pairIndex(char16_t left, char16_t right) { return size_t{left} * 256 + right; }

    void measureChar(char16_t c);
    bool measure(const QString& text);

    QFont font_;
    QRawFont raw_;
    std::vector<char16_t> chars_;
    int32_t ascent_ = 0;
    int32_t descent_ = 0;
    quint32 glyphs_[256] = {};
    int32_t advances_[256] = {};
    std::bitset<256> measured_;
    std::vector<int32_t> pairAdvances_;
    // By fraction down, then by character and fraction across.
    std::map<int32_t, std::vector<std::unique_ptr<GlyphMask>>> masks_;
    size_t maskCount_ = 0;
};

GlyphTable::GlyphTable(const QFont& font)
    : font_(font), raw_(QRawFont::fromFont(font)), pairAdvances_(256 * 256, kUnmeasured)
{
    if (!raw_.isValid() || raw_.pixelSize() >= kLargestGlyph)
        return;
    for (char16_t c = 0x20; c <= 0xFF; ++c) {
        const QList<quint32> glyph = raw_.glyphIndexesForString(QString(QChar(c)));
        if (isPlainLatin1(c) && glyph.size() == 1 && glyph[0] != 0) {
            chars_.push_back(c);
            glyphs_[c] = glyph[0];
        }
    }
}

// Lays out one line holding every pair with c on either side, or each pair
// alone when the shaper did not map that line one to one. The advance of c
// is the one it has before most others.
void GlyphTable::measureChar(char16_t c)
{
    measured_.set(c);
    QString line(QChar{c});
    for (const char16_t other : chars_)
        line.append(QChar{other}).append(QChar{c});
    if (!measure(line)) {
        for (const char16_t other : chars_) {
            measure(QString(QChar{c}).append(QChar{other}));
            measure(QString(QChar{other}).append(QChar{c}));
        }
    }
    std::map<int32_t, int> counts;
    for (const char16_t right : chars_)
        if (pairAdvances_[pairIndex(c, right)] > kUnsettled)
            ++counts[pairAdvances_[pairIndex(c, right)]];
    if (counts.empty()) {
        glyphs_[c] = 0;
        return;
    }
    advances_[c] = std::max_element(counts.begin(), counts.end(), [](const auto& a, const auto& b) {
                       return a.second < b.second;
                   })->first;
}

// Lays text out as drawTextLine does and records the advance of each
// character before the next; false when a glyph is not the character's own
// or is not on the baseline where a plain line would put it.
bool GlyphTable::measure(const QString& text)
{
    QTextLayout layout(text, font_);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(0x01000000);
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    if (runs.size() != 1 || runs[0].rawFont() != raw_ || runs[0].glyphIndexes().size() != text.size())
        return false;
    const QList<quint32> glyphs = runs[0].glyphIndexes();
    const QList<QPointF> positions = runs[0].positions();
    ascent_ = toFixed(line.ascent());
    descent_ = toFixed(line.descent());
    if (positions[0].x() != 0)
        return false;
    for (qsizetype i = 0; i < text.size(); ++i)
        if (glyphs[i] != glyphs_[text[i].unicode()] || positions[i].y() != positions[0].y())
            return false;
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        const int32_t advance = toFixed(positions[i + 1].x()) - toFixed(positions[i].x());
        int32_t& known = pairAdvances_[pairIndex(text[i].unicode(), text[i + 1].unicode())];
        known = known == kUnmeasured || known == advance ? advance : kUnsettled;
    }
    return true;
}

// The table of a font as a painter on a device of this resolution resolves
// it, made on first use in this thread and kept for it.
GlyphTable& glyphTable(const QPaintDevice& device, const QFont& font, const QString& fontKey)
{
    thread_local QHash<std::pair<QString, int>, std::shared_ptr<GlyphTable>> tables;
    const int dpi = device.logicalDpiY();
    auto found = tables.constFind({fontKey, dpi});
    if (found == tables.constEnd()) {
        QImage probe(1, 1, QImage::Format_ARGB32_Premultiplied);
        probe.setDotsPerMeterX(qRound(device.logicalDpiX() / 0.0254));
        probe.setDotsPerMeterY(qRound(dpi / 0.0254));
        QPainter painter(&probe);
        painter.setFont(font);
        found = tables.insert({fontKey, dpi}, std::make_shared<GlyphTable>(painter.font()));
    }
    return *found.value();
}

bool endsInSpace(const QString& text) { return text.back() == QChar(0x20) || text.back() == QChar(0xA0); }

// Draws the glyph in black at its fraction past a whole pixel on a clear
// image, through the paint engine's own glyph drawing, and reads back which
// pixels it covered. The engine places a glyph at the whole pixel below its
// origin plus an offset that depends only on the fraction, so the mask
// holds at any whole pixel.
GlyphMask renderGlyph(const QRawFont& font, quint32 glyph, int32_t fractionX, int32_t fractionY)
{
    const int margin = static_cast<int>(font.pixelSize()) * 2 + 8;
    QImage scratch(2 * margin, 2 * margin, QImage::Format_ARGB32_Premultiplied);
    scratch.fill(0);
    {
        QPainter painter(&scratch);
        QGlyphRun run;
        run.setRawFont(font);
        const QPointF origin(margin + fromFixed(fractionX), margin + fromFixed(fractionY));
        run.setRawData(&glyph, &origin, 1);
        painter.setPen(QColor(Qt::black));
        painter.drawGlyphRun(QPointF(0, 0), run);
    }
    GlyphMask mask;
    const int size = scratch.width();
    for (int y = 0; y < size; ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(scratch.constScanLine(y));
        for (int x = 0; x < size; ++x) {
            if (row[x] == 0)
                continue;
            if (row[x] != 0xFF000000 || x == 0 || y == 0 || x + 1 == size || y + 1 == size)
                return {{}, 0, 0, 0, 0, false};
            auto& runs = mask.runs;
            if (runs.empty() || runs.back().y != y - margin || runs.back().right != x - margin)
                runs.push_back({y - margin, x - margin, x - margin});
            ++runs.back().right;
            mask.left = std::min(mask.left, x - margin);
            mask.right = std::max(mask.right, x - margin + 1);
            mask.top = std::min(mask.top, y - margin);
            mask.bottom = std::max(mask.bottom, y - margin + 1);
        }
    }
    return mask;
}

// Where a line of plain text puts its glyphs: each glyph's origin in
// 1/64 device pixel.
struct PlacedGlyph {
    const GlyphMask* mask;
    int64_t x;
    int64_t y;
};

}  // namespace

void drawTextLine(QPainter& painter, const QString& text, const QRectF& layout, unsigned flags, const QFont& font,
                  QRgb colour)
{
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(colour));
    painter.drawText(layout, static_cast<int>(alignmentOf(flags)) | kLineFlags, text);
}

namespace {

// Places the glyphs where QPainter::drawText places them: the line's box
// aligned in the rectangle, its baseline at the box's top plus the ascent,
// each glyph at the sum of the advances before it, all in 1/64 pixel. False
// when a character or a pair of them is not plain in the font.
bool placeGlyphs(GlyphTable& table, const QString& text, const QRectF& layout, Qt::Alignment alignment,
                 QVarLengthArray<PlacedGlyph, 64>& placed)
{
    int64_t width = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (!table.usable(c) || (i > 0 && table.joined(text[i - 1].unicode(), c)))
            return false;
        placed[i].x = width;
        width += table.advance(c);
    }
    const qreal height = fromFixed(table.height());
    const qreal yoff = alignment & Qt::AlignBottom    ? layout.height() - height
                       : alignment & Qt::AlignVCenter ? (layout.height() - height) / 2
                                                      : 0;
    const qreal xoff = alignment & Qt::AlignRight     ? layout.width() - fromFixed(width)
                       : alignment & Qt::AlignHCenter ? (layout.width() - fromFixed(width)) / 2
                                                      : 0;
    const int64_t left = toFixed(layout.x() + xoff);
    const int64_t baseline = toFixed(layout.y() + yoff) + int64_t{table.ascent()};
    for (qsizetype i = 0; i < text.size(); ++i) {
        placed[i].x += left;
        placed[i].y = baseline;
        placed[i].mask = &table.mask(text[i].unicode(), static_cast<int32_t>(placed[i].x & 63),
                                     static_cast<int32_t>(baseline & 63));
        if (!placed[i].mask->exact)
            return false;
    }
    return true;
}

// Writes each glyph's mask at the whole pixel below its origin, within clip.
void copyGlyphs(QImage& image, const QRect& clip, const QVarLengthArray<PlacedGlyph, 64>& placed, QRgb colour)
{
    const QRect area = clip & image.rect();
    uchar* const bits = image.bits();
    const qsizetype stride = image.bytesPerLine();
    for (const PlacedGlyph& glyph : placed) {
        const GlyphMask& mask = *glyph.mask;
        const int64_t x = glyph.x >> 6, y = glyph.y >> 6;
        const bool inside = x + mask.left >= area.left() && x + mask.right <= area.right() + 1 &&
                            y + mask.top >= area.top() && y + mask.bottom <= area.bottom() + 1;
        for (const GlyphMask::Run& run : mask.runs) {
            int64_t from = x + run.left, to = x + run.right;
            if (!inside) {
                from = std::max<int64_t>(from, area.left());
                to = std::min<int64_t>(to, int64_t{area.right()} + 1);
                if (y + run.y < area.top() || y + run.y > area.bottom() || from >= to)
                    continue;
            }
            auto* row = reinterpret_cast<QRgb*>(bits + (y + run.y) * stride);
            std::fill(row + from, row + to, colour);
        }
    }
}

}  // namespace

bool drawGlyphLine(QImage& image, const QRect& clip, const QString& text, const QRectF& layout, unsigned flags,
                   const QFont& font, const QString& fontKey, QRgb colour)
{
    if (text.isEmpty() || font.underline() || font.strikeOut() || font.overline() || image.depth() != 32)
        return false;
    const Qt::Alignment alignment = alignmentOf(flags);
    if (!(alignment & Qt::AlignLeft) && endsInSpace(text))
        return false;
    GlyphTable& table = glyphTable(image, font, fontKey);
    table.trimMasks();
    QVarLengthArray<PlacedGlyph, 64> placed(text.size());
    if (!placeGlyphs(table, text, layout, alignment, placed))
        return false;
    copyGlyphs(image, clip, placed, colour);
    return true;
}

}  // namespace TabulaControl::platform
