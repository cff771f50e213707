#pragma once

#include <QRectF>
#include <QRgb>
#include <Qt>
#include <QString>

class QFont;
class QImage;
class QRect;
class QPainter;

namespace TabulaControl::platform {

// How drawTextLine lays every text out besides its alignment.
inline constexpr int kLineFlags = Qt::TextSingleLine | Qt::TextDontClip;

// Both draw a text on one line in a rectangle, aligned by the classic text
// flags, its line breaks drawn as spaces, unclipped beyond the painter's
// clip, in the painter's coordinates.

// Through Qt's general text layout: every script, direction and font.
void drawTextLine(QPainter& painter, const QString& text, const QRectF& layout, unsigned flags, const QFont& font,
                  QRgb colour);

// The same pixels without the general layout, written straight into the
// image's pixels within clip, for a text whose characters each map to one
// glyph of the font with no kerning or ligature between neighbours, in a
// font without decoration. The font's glyphs are measured once per font and
// thread, under fontKey, and each glyph's pixels are read back once from
// the paint engine. Draws nothing and returns false for any other text.
bool drawGlyphLine(QImage& image, const QRect& clip, const QString& text, const QRectF& layout, unsigned flags,
                   const QFont& font, const QString& fontKey, QRgb colour);

}  // namespace TabulaControl::platform
