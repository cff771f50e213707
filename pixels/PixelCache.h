#pragma once

#include "pixels/Box.h"
#include "pixels/CellMemo.h"
#include "state/Check.h"
#include "pixels/DirtyTiles.h"
#include "pixels/PendingFill.h"
#include "pixels/Raster.h"
#include "pixels/SolidAreas.h"

#include <QRegion>
#include <QScopeGuard>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace TabulaControl::platform {

// A mark drawn over the pixels when they are read: an exclusive-or.
struct Mark {
    enum class Kind { Inversion, FocusRect } kind;
    Rect rect;
    friend bool operator==(const Mark&, const Mark&) = default;
};

// What a drawing is about to write.
struct Write {
    // The calls a cell is remembered by, and any other drawing.
    enum class Call : uint8_t { Fill, Edge, CheckBox, Text, Other };
    Call call = Call::Other;
    // The surface pixels it may change.
    Box box;
    // Its colour, when it writes every pixel of box in one.
    std::optional<QRgb> opaque = std::nullopt;
    // For a cell's call, what decides its pixels besides its place.
    size_t digest = 0;
};

// The raster and everything known about its pixels besides the pixels: the
// render owed to them, the marks shown over them, the pixels a clear still
// owes (PendingFill), the tiles drawn on since they were shown (DirtyTiles),
// the boxes known to hold one colour (SolidAreas), the cells known to be on
// them (CellMemo, and the cell being drawn) and the keys of the fonts drawn
// with. Drawing reaches the raster only after telling this through one of
// the on* members, which keeps every cache true in one fixed order.
class PixelCache {
public:
    PixelCache(int width, int height, qreal ratio, QRgb background);

    // The pixels may be drawn on only after an on* member allowed it.
    Raster& raster() { return raster_; }
    const Raster& raster() const { return raster_; }

    // A drawing is about to write pixels in write.box; false when it is to
    // be left out (a cell being compared).
    bool onWrite(const Write& write);
    // The pixels of source are about to move by (dx, dy), landing in moved.
    bool onMove(const Box& source, const Box& moved, int64_t dx, int64_t dy);
    // A new extent or ratio: every cache starts again.
    void onResize(int width, int height, qreal ratio, QRgb background);
    // Every pixel is owed colour, written when it is next read or drawn over.
    void onClear(QRgb colour);
    // Fills box, leaving alone the parts known to hold the colour, and
    // remembers that box holds it.
    void fillRemembered(const Box& box, QRgb colour);

    // The pixels with everything owed made and the marks applied.
    const QImage& image();
    // The tiles drawn on since the last call, after making the pixels.
    QRegion takeChangedRegion();
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }
    void setPendingRender(std::function<void()> render) { pendingRender_ = std::move(render); }
    bool renderPending() const { return bool(pendingRender_); }
    // The owed render is made by the first write; a drawing that reads state
    // the render sets makes it first.
    void makeOwedRender() { settle(); }
    void setMarks(std::vector<Mark> marks);
    const std::vector<Mark>& marks() const { return marks_; }

    // The key of font, looked up again only after fontChanged().
    const FontKey& fontKey(const QFont& font);
    void fontChanged() { fontKeyCurrent_ = false; }

    bool drawingCell() const { return cell_.has_value(); }
    // See Surface::drawCell.
    template <class Paint>
    void drawCell(Paint& paint);
    // The digest of the cell the memo holds over box, if the last move
    // carried it there or it was drawn there since.
    std::optional<size_t> movedCell(const Box& box) const;

private:
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

    // The steps every write starts with; false when it is left out.
    bool begin(const Write& write);
    // Solid areas and dirty tiles learn that box was drawn on.
    void touch(const Box& box, std::optional<QRgb> opaque);
    void noteChange(bool firstChange);
    void settle();
    void makeAllOwed();
    // Exclusive-or of every mark into the pixels: a second call takes them
    // off again.
    void flipMarks();
    void liftMarks();

    bool beginCell();
    bool cellSkipped() const { return cell_->mode == CellPass::Mode::Comparing; }
    bool cellMatches() const { return !cell_->differs && cell_->digest == cell_->remembered; }
    // Starts the cell again, drawing every call.
    void redrawCell();
    void endCell(bool complete);
    // True when the call is to be left out: the cell is being compared.
    bool skipCellCall(const Write& write);
    bool interruptsCell();
    void stopKeepingCell();
    // Whether box lies in the first fill of the cell being drawn, which
    // wrote every pixel of it.
    bool insideCellFill(const Box& box) const;
#ifdef TABULA_CACHE_CHECKS
    QImage cellPixels();
#endif

    Raster raster_;
    std::function<void()> pendingRender_;
    std::vector<Mark> marks_;
    bool marksShown_ = false;
    PendingFill pending_;
    DirtyTiles dirty_;
    std::function<void()> changeHandler_;
    SolidAreas solidAreas_;
    CellMemo memo_;
    std::optional<CellPass> cell_;
    // The keys of the fonts last drawn with; a cell and its header
    // usually differ.
    std::array<FontKey, 4> fontKeys_;
    size_t nextFontKey_ = 0;
    size_t lastFontKey_ = 0;
    bool fontKeyCurrent_ = false;
};

// Paint runs once to compare its calls with the cell remembered at its
// place and, when the cell differs, again to draw. A cell is remembered
// only when paint completes.
template <class Paint>
void PixelCache::drawCell(Paint& paint)
{
    if (!beginCell()) {
        paint();
        return;
    }
    auto unfinished = qScopeGuard([this] { endCell(false); });
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
    else if (cellSkipped()) {
        // A cell the memo kept is drawn anyway: its pixels must not change.
        const QImage kept = cellPixels();
        redrawCell();
        paint();
        TABULA_CHECK(cellPixels() == kept);
    }
#endif
    unfinished.dismiss();
    endCell(true);
}

}  // namespace TabulaControl::platform
