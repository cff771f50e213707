#pragma once

#include "pixels/Box.h"
#include "state/Check.h"
#include "pixels/CellMemo.h"
#include "pixels/DirtyTiles.h"
#include "pixels/PendingFill.h"
#include "state/Rect.h"
#include "pixels/SolidAreas.h"
#include "pixels/TextCache.h"

#include <QAnyStringView>
#include <QFont>
#include <QImage>
#include <QRegion>
#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

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

enum class PenStyle { Solid = 0, Dot = 2 };

// Translates a colour value to RGB. System colours come from one fixed table
// (the classic light-grey scheme), so pictures are the same on every machine;
// an index outside the table gives black.
QRgb translateColor(OleColor colour);

// The grid's drawing surface: a persistent image with the drawing state of a
// classic device context (pen colour and style, text colour, font).
// Coordinates and sizes are surface pixels; the image has device pixels, as
// many per surface pixel as the device pixel ratio says.
class Surface {
public:
    explicit Surface(int width = 0, int height = 0, qreal devicePixelRatio = 1);

    // Resizes the image, keeping the pixels of the overlapping area; new
    // pixels get the surface's back colour.
    void resize(int width, int height);
    int width() const { return width_; }
    int height() const { return height_; }
    // A new ratio starts a new image in the back colour: the owner repaints.
    void setDevicePixelRatio(qreal ratio);
    qreal devicePixelRatio() const { return ratio_; }
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
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }

    // A render that is owed to the image: made before the image is read or
    // drawn on, and then forgotten. An empty function cancels it.
    void setPendingRender(std::function<void()> render) { pendingRender_ = std::move(render); }
    bool renderPending() const { return bool(pendingRender_); }
    // While discarding, drawing leaves the pixels and any pending render
    // alone; layout code runs the painters this way to learn what they
    // measure.
    void setDiscarding(bool on) { discarding_ = on; }
    bool discarding() const { return discarding_; }

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
    OleColor penColor() const { return penColor_; }
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
    OleColor textColor() const { return textColor_; }
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
    // Width of s in pixels in the current font.
    double textWidth(const QString& s) const;

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
        if (!beginCell()) {
            paint();
            return;
        }
        CellScope scope(*this);
        try {
            paint();
        } catch (...) {
            // The calls made before the failure are drawn, as without the memo.
            if (cellSkipped()) {
                redrawCell();
                paint();
            }
            throw;
        }
        if (cellSkipped() && !cellMatches()) {
            redrawCell();
            paint();
        }
#ifdef TABULA_CACHE_CHECKS
        else if (cellSkipped())
            checkRememberedCell(paint);
#endif
        scope.complete();
    }

    // The digest of the cell the memo holds with its first fill over box,
    // if the last scroll carried it there or it was drawn there since.
    std::optional<size_t> movedCell(Rect box) const;

    // Marks drawn over the pixels when they are read: applied in order, each an exclusive-or.
    struct Mark {
        enum class Kind { Inversion, FocusRect } kind;
        Rect rect;
        friend bool operator==(const Mark&, const Mark&) = default;
    };
    void setMarks(std::vector<Mark> marks);
    const std::vector<Mark>& marks() const { return marks_; }

private:
    enum class CellCall : uint8_t { Fill, Edge, CheckBox, Text };
    // Ends the cell drawCell began, remembering it only when complete.
    class CellScope {
    public:
        explicit CellScope(Surface& surface) : surface_(surface) {}
        ~CellScope()
        {
            if (!completed_)
                surface_.endCell(false);
        }
        CellScope(const CellScope&) = delete;
        CellScope& operator=(const CellScope&) = delete;
        void complete()
        {
            completed_ = true;
            surface_.endCell(true);
        }

    private:
        Surface& surface_;
        bool completed_ = false;
    };
#ifdef TABULA_CACHE_CHECKS
    // Draws a cell the memo kept and checks that its pixels were right.
    template <class Paint>
    void checkRememberedCell(Paint& paint)
    {
        const QImage kept = cellPixels();
        redrawCell();
        paint();
        TABULA_CHECK(cellPixels() == kept);
    }
    QImage cellPixels() const;
#endif
    bool beginCell();
    void drawText(const QString& s, Rect r, unsigned flags);
    QString textOf(QAnyStringView s);
    void fillOver(const Box& box, QRgb pixel);
    void fillUnlessHeld(const Box& box, QRgb pixel);
    // Every drawing passes here with the box it may change, and with its
    // colour when it fills the box opaquely.
    void drawingOver(const Box& box, std::optional<QRgb> fillColour = std::nullopt) const;
    void noteChange(bool firstChange) const;
    // Writes every pixel a clear still owes.
    void makeAllOwed() const;
    Box surfaceBoxOf(const Box& deviceBox) const;
    // Whether the cell's calls so far were left out to compare them.
    bool cellSkipped() const;
    bool cellMatches() const;
    // Starts the cell again, drawing every call.
    void redrawCell();
    // Remembers the cell when it is complete and was drawn.
    void endCell(bool complete);
    // True when the call is to be left out: the cell is being compared.
    bool skipCellCall(CellCall call, const Box& box, size_t hash);
    // A call that is not a cell's: true when it is to be left out.
    bool interruptsCell();
    void stopKeepingCell();
    void forgetUnlessCell(const Box& box);
    // Makes what a clear still owes in box, unless the cell being drawn
    // filled it already.
    void makePending(const Box& box);
    // Whether a fill, edge or check box over box is to be drawn; when it is,
    // the pixels are ready and the memo forgets what the call covers.
    bool startsShapeCall(CellCall call, const Box& box, size_t hash);
    size_t textHash(QAnyStringView s, const Box& box, unsigned flags);
    // Makes a pending render; true when drawing is to go ahead.
    bool readyToDraw();
    void settle() const;
    void remakeImage();
    struct FontKey {
        QFont font;
        QString key;
        size_t hash = 0;
    };
    const FontKey& keyOfFont();
    template <class Change>
    void changeFont(Change change)
    {
        change();
        lastFontKeyCurrent_ = false;
    }
    bool drawCachedText(const QString& s, const QRectF& layout, Rect r, unsigned flags);
    // Exclusive-or of every mark into the pixels: a second call takes them
    // off again.
    void flipMarks() const;
    // Takes the marks off the pixels before they are drawn on or moved.
    void liftMarks();

    int width_ = 0;
    int height_ = 0;
    qreal ratio_ = 1;
    // The pixels, with the marks applied while marksShown_.
    mutable QImage image_;
    // What a clear has yet to write, made when the pixels are read or moved.
    mutable PendingFill pending_;
    std::vector<Mark> marks_;
    mutable bool marksShown_ = false;
    // The keys of the fonts last drawn with; a cell and its header
    // usually differ.
    std::array<FontKey, 4> fontKeys_;
    size_t nextFontKey_ = 0;
    size_t lastFontKey_ = 0;
    // False once the font may differ from the one lastFontKey_ holds.
    bool lastFontKeyCurrent_ = false;
    mutable std::function<void()> pendingRender_;
    // Pixels are made when they are read as well, so these change then too.
    mutable DirtyTiles dirty_;
    std::function<void()> changeHandler_;
    // What fillRemembered filled, while it holds its colour.
    mutable SolidAreas solidAreas_;
    CellMemo memo_;
    // The cell drawCell is drawing.
    struct CellPass {
        enum class Mode : uint8_t { Starting, Comparing, Drawing, Unkept } mode = Mode::Starting;
        bool mayCompare = true;
        bool differs = false;
        // The first fill's box, and that box on the surface.
        Box box;
        Box bounds;
        size_t digest = 0;
        size_t remembered = 0;
    };
    std::optional<CellPass> cell_;
    bool discarding_ = false;
    OleColor backColor_ = 0x8000000F;
    OleColor penColor_ = 0;
    OleColor textColor_ = 0;
    PenStyle penStyle_ = PenStyle::Solid;
    QFont font_;
    // The buffer Latin-1 texts are widened into on their way to be drawn.
    QString latin1Text_;
};

}  // namespace TabulaControl::platform
