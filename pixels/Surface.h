#pragma once

#include "pixels/PixelCache.h"
#include "pixels/Raster.h"
#include "state/Rect.h"

#include <QAnyStringView>
#include <QFont>
#include <QImage>
#include <QRegion>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace TabulaControl::platform {

enum class PenStyle { Solid = 0, Dot = 2 };

// The grid's drawing surface: a persistent image with the drawing state of a
// classic device context (pen colour and style, text colour, font). Each
// drawing tells the pixel cache what it is about to write, then has the
// raster write it. Coordinates and sizes are surface pixels; the image has
// device pixels, as many per surface pixel as the device pixel ratio says.
class Surface {
public:
    explicit Surface(int width = 0, int height = 0, qreal devicePixelRatio = 1);

    // Resizes the image, keeping the pixels of the overlapping area; new
    // pixels get the surface's back colour.
    void resize(int width, int height);
    int width() const { return pixels_.raster().width(); }
    int height() const { return pixels_.raster().height(); }
    // A new ratio starts a new image in the back colour: the owner repaints.
    void setDevicePixelRatio(qreal ratio);
    qreal devicePixelRatio() const { return pixels_.raster().ratio(); }
    // The pixels, after any pending render has been made; device pixels,
    // with the device pixel ratio left at 1 (see picture()).
    const QImage& image() const;
    // The pixels as a picture that knows its device pixel ratio.
    QImage picture() const;
    // The region, in surface pixels, whose pixels changed since it was last
    // taken; the pixels are made first, as by image().
    QRegion takeChangedRegion();
    // Called when the pixels change while no changed region is waiting to
    // be taken.
    void setChangeHandler(std::function<void()> handler) { pixels_.setChangeHandler(std::move(handler)); }

    // A render that is owed to the image: made before the image is read or
    // drawn on, and then forgotten. An empty function cancels it.
    void setPendingRender(std::function<void()> render) { pixels_.setPendingRender(std::move(render)); }
    bool renderPending() const { return pixels_.renderPending(); }

    // System colours from the given table, or the classic one; the pixels
    // already drawn keep theirs until they are drawn again.
    void setSystemColours(const std::optional<SystemColours>& colours);
    bool hasOwnSystemColours() const { return ownSystemColours_; }
    std::optional<SystemColours> ownSystemColours() const
    {
        return ownSystemColours_ ? std::optional(pixels_.raster().systemColours()) : std::nullopt;
    }
    OleColor backColor() const { return backColor_; }
    void setBackColor(OleColor colour) { backColor_ = colour; }
    // Fills the whole image with the back colour.
    void clear();

    // Fills r (right and bottom exclusive), clipped to the image.
    void fill(Rect r, OleColor colour);
    // Fills r like fill() and remembers that r holds the colour: until
    // something else draws over r, filling it again, or a clear in that
    // colour, leaves its pixels alone.
    void fillRemembered(Rect r, OleColor colour);

    // One-pixel line from (x1, y1) to (x2, y2) in the pen colour and style;
    // the end point itself is not drawn.
    void setPenColor(OleColor colour) { penColor_ = colour; }
    void setPenStyle(PenStyle style) { penStyle_ = style; }
    PenStyle penStyle() const { return penStyle_; }
    void line(int32_t x1, int32_t y1, int32_t x2, int32_t y2);

    // One edge kind (EdgeKind, or two of them: one outer and one inner) on
    // the chosen sides of r (EdgeSide bits).
    void edge(Rect r, unsigned kinds, unsigned sides);

    // A standard 3-D check box filling the square at r's top-left corner.
    void checkBox(Rect r, bool checked);

    // Text attributes, set one by one.
    void setTextColor(OleColor colour) { textColor_ = colour; }
    void setFontName(const QString& name);
    void setFontSize(double points);
    void setFontBold(bool on);
    void setFontItalic(bool on);
    void setFontUnderline(bool on);
    void setFontStrikethrough(bool on);
    const QFont& font() const { return font_; }

    // Single-line text in r with the TextFlag alignment bits, clipped to r.
    // The text is copied only when it is drawn.
    void text(QAnyStringView s, Rect r, unsigned flags);

    // Dotted focus rectangle drawn by exclusive-or: drawing it twice leaves
    // the pixels as they were.
    void focusRect(Rect r);
    // Inverts every pixel of r.
    void invert(Rect r);
    // Moves the pixels of scroll by (dx, dy), writing only inside clip, and
    // returns the bounding rectangle of the area left uncovered.
    Rect scroll(int32_t dx, int32_t dy, Rect scroll, Rect clip);

    // Runs paint, which draws one cell, and leaves the pixels alone when the
    // cell is on the surface already as paint would draw it: paint runs
    // once to compare and, when the cell differs, again to draw. A cell is
    // remembered when its first call fills a box that holds its other calls.
    template <class Paint>
    void drawCell(Paint&& paint)
    {
        pixels_.drawCell(paint);
    }

    // The digest of the cell the memo holds with its first fill over box,
    // if the last scroll carried it there or it was drawn there since.
    std::optional<size_t> movedCell(Rect box) const { return pixels_.movedCell(toBox(box)); }

    // Marks drawn over the pixels when they are read: applied in order, each an exclusive-or.
    using Mark = platform::Mark;
    void setMarks(std::vector<Mark> marks) { pixels_.setMarks(std::move(marks)); }
    const std::vector<Mark>& marks() const { return pixels_.marks(); }

private:
    Raster& raster() { return pixels_.raster(); }
    template <class Change>
    void changeFont(Change change)
    {
        change();
        pixels_.fontChanged();
    }
    TextStyle textStyle() { return {font_, pixels_.fontKey(font_), translate(textColor_)}; }
    QRgb translate(OleColor colour) { return translateColor(colour, raster().systemColours()); }
    QString textOf(QAnyStringView s);

    OleColor backColor_ = 0x8000000F;
    OleColor penColor_ = 0;
    OleColor textColor_ = 0;
    bool ownSystemColours_ = false;
    PenStyle penStyle_ = PenStyle::Solid;
    QFont font_;
    // The buffer Latin-1 texts are widened into on their way to be drawn.
    QString latin1Text_;
    // Reading the pixels makes them first (PixelCache::image): the owed
    // render, the pixels a clear owes and the marks are written when they
    // are read, so a const read changes the pixels and their caches. This
    // is the one member that changes under a const read.
    mutable PixelCache pixels_;
};

}  // namespace TabulaControl::platform
