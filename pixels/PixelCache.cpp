#include "pixels/PixelCache.h"

#include "pixels/Digest.h"

#include <QFontInfo>

namespace TabulaControl::platform {

PixelCache::PixelCache(int width, int height, qreal ratio, QRgb background) : raster_(width, height, ratio, background)
{
    dirty_.resize(width, height);
}

// Every write keeps the caches true in this order:
//  1. the cell being drawn: a call compared with the remembered cell is left
//     out, and any other drawing stops the cell being remembered;
//  2. the owed render is made and the marks are lifted off the pixels, so
//     that what follows sees the pixels as drawn;
//  3. the memo forgets the cells the write reaches (the cell being drawn
//     forgets them when it is remembered);
//  4. the solid areas drop what the write reaches, unless it fills them with
//     their colour, and the dirty tiles are marked;
//  5. an opaque write takes its box off the pending fill; any other makes the
//     pending pixels beneath it first.
bool PixelCache::onWrite(const Write& write)
{
    if (!begin(write))
        return false;
    if (!cell_ || cell_->mode != CellPass::Mode::Drawing)
        memo_.forget(write.box);
    touch(write.box, write.opaque);
    if (write.opaque)
        pending_.cover(raster_.toDevice(write.box));
    else if (pending_.active() && !insideCellFill(write.box))
        pending_.make(raster_.image(), raster_.toDevice(write.box));
    return true;
}

bool PixelCache::begin(const Write& write)
{
    if (cell_ && (write.call == Write::Call::Other ? interruptsCell() : skipCellCall(write)))
        return false;
    settle();
    liftMarks();
    return true;
}

// A move makes every pending pixel first, and carries the cells that move
// whole when the pixels move by whole device pixels.
bool PixelCache::onMove(const Box& source, const Box& moved, int64_t dx, int64_t dy)
{
    if (!begin({}))
        return false;
    makeAllOwed();
    memo_.startMove();
    touch(moved, std::nullopt);
    if (moved.empty())
        return true;
    if (raster_.movesWhole(dx, dy))
        memo_.moved(source, moved, dx, dy);
    else
        memo_.forget(moved);
    return true;
}

// The owed render is made at the old extent. The pixels a new image keeps
// are made first; a new ratio keeps none.
void PixelCache::onResize(int width, int height, qreal ratio, QRgb background)
{
    settle();
    if (width == raster_.width() && height == raster_.height() && ratio == raster_.ratio())
        return;
    if (cell_ && interruptsCell())
        return;
    liftMarks();
    if (ratio == raster_.ratio())
        makeAllOwed();
    memo_.clear();
    pending_.stop();
    solidAreas_.clear();
    dirty_.resize(width, height);
    noteChange(!dirty_.clean());
    raster_.resize(width, height, ratio, background);
}

// The solid areas stay: a pixel they hold is left as it is when a fill of
// its colour takes it off the pending fill.
void PixelCache::onClear(QRgb colour)
{
    if (!begin({}))
        return;
    memo_.clear();
    pending_.start(raster_.image(), colour);
}

// The parts known to hold the colour are taken off the pending fill
// unwritten; the others are written, or, when they are strips beside a
// held part, only compared first.
void PixelCache::fillRemembered(const Box& box, QRgb colour)
{
    if (!begin({}))
        return;
    memo_.forget(box);
    const std::vector<Box> held = solidAreas_.heldParts(box, colour);
    for (const Box& part : solidAreas_.partsNotHeld(box, colour))
        if ((held.empty() || !raster_.holds(part, colour)) && onWrite({.box = part, .opaque = colour}))
            raster_.fill(part, colour);
    pending_.cover(raster_.toDevice(box));
    solidAreas_.remember(box, colour);
}

void PixelCache::touch(const Box& box, std::optional<QRgb> opaque)
{
    if (box.empty())
        return;
    solidAreas_.drawnOver(box, opaque);
    noteChange(dirty_.mark(box));
}

void PixelCache::noteChange(bool firstChange)
{
    if (firstChange && changeHandler_)
        changeHandler_();
}

void PixelCache::settle()
{
    if (!pendingRender_)
        return;
    const std::function<void()> render = std::move(pendingRender_);
    pendingRender_ = nullptr;
    render();
}

// The writes that make pending pixels in their own box have marked it
// already; these are the pixels made for a read or a move.
void PixelCache::makeAllOwed()
{
    if (!pending_.active())
        return;
    const QRgb colour = pending_.colour();
    pending_.makeAll(raster_.image(), [&](const Box& written) { touch(raster_.surfaceBoxOf(written), colour); });
}

const QImage& PixelCache::image()
{
    settle();
    makeAllOwed();
    if (!marksShown_) {
        flipMarks();
        marksShown_ = true;
    }
    return raster_.image();
}

QRegion PixelCache::takeChangedRegion()
{
    image();
    return dirty_.take();
}

void PixelCache::setMarks(std::vector<Mark> marks)
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

void PixelCache::flipMarks()
{
    for (const Mark& mark : marks_) {
        if (mark.kind == Mark::Kind::Inversion)
            raster_.invert(toBox(mark.rect));
        else
            raster_.focusRect(toBox(mark.rect));
    }
}

void PixelCache::liftMarks()
{
    if (!marksShown_)
        return;
    flipMarks();
    marksShown_ = false;
}

const FontKey& PixelCache::fontKey(const QFont& font)
{
    if (fontKeyCurrent_)
        return fontKeys_[lastFontKey_];
    fontKeyCurrent_ = true;
    for (size_t i = 0; i < fontKeys_.size(); ++i) {
        const size_t at = (lastFontKey_ + i) % fontKeys_.size();
        if (!fontKeys_[at].key.isEmpty() && fontKeys_[at].font == font) {
            lastFontKey_ = at;
            return fontKeys_[at];
        }
    }
    lastFontKey_ = nextFontKey_;
    FontKey& slot = fontKeys_[nextFontKey_];
    nextFontKey_ = (nextFontKey_ + 1) % fontKeys_.size();
    slot.font = font;
    slot.key = font.key();
    slot.hash = qHash(slot.key);
    slot.pixelSize = QFontInfo(font).pixelSize();
    return slot;
}

bool PixelCache::beginCell()
{
    if (cell_)
        return false;
    settle();
    liftMarks();
    cell_.emplace();
    return true;
}

#ifdef TABULA_CACHE_CHECKS
QImage PixelCache::cellPixels()
{
    pending_.make(raster_.image(), raster_.toDevice(cell_->bounds));
    return raster_.image().copy(toQRect(raster_.toDevice(cell_->bounds)));
}
#endif

std::optional<size_t> PixelCache::movedCell(const Box& box) const
{
    return memo_.movedDigestAt(intersect(box, raster_.bounds()));
}

void PixelCache::redrawCell()
{
    cell_.emplace();
    cell_->mayCompare = false;
}

void PixelCache::endCell(bool complete)
{
    if (!complete)
        stopKeepingCell();
    const CellPass cell = *cell_;
    cell_.reset();
    if (cell.mode == CellPass::Mode::Drawing)
        memo_.remember(cell.bounds, cell.digest);
}

// A cell is remembered when its first call fills a box that holds its
// other calls; the digest adds each call relative to that box.
bool PixelCache::skipCellCall(const Write& write)
{
    using Mode = CellPass::Mode;
    CellPass& cell = *cell_;
    if (cell.mode == Mode::Unkept)
        return false;
    if (cell.mode == Mode::Starting) {
        if (write.call != Write::Call::Fill) {
            cell.mode = Mode::Unkept;
            return false;
        }
        cell.box = write.box;
        cell.bounds = intersect(write.box, raster_.bounds());
        // The memo holds cells by their place on the surface: two alike cells
        // cut off there by different amounts hold different pixels.
        for (const int64_t cut : {cell.bounds.left - cell.box.left, cell.bounds.top - cell.box.top,
                                  cell.box.right - cell.bounds.right, cell.box.bottom - cell.bounds.bottom})
            cell.digest = mixed(cell.digest, uint64_t(cut));
        const std::optional<size_t> remembered = cell.mayCompare ? memo_.digestAt(cell.bounds) : std::nullopt;
        cell.mode = remembered ? Mode::Comparing : Mode::Drawing;
        cell.remembered = remembered.value_or(0);
    } else if (!contains(cell.box, write.box)) {
        cell.differs = true;
        if (cell.mode == Mode::Drawing)
            stopKeepingCell();
        return cell.mode == Mode::Comparing;
    }
    const Box at = translated(write.box, -cell.box.left, -cell.box.top);
    for (const uint64_t v : {uint64_t(write.call), uint64_t(at.left), uint64_t(at.top), uint64_t(at.right),
                             uint64_t(at.bottom), uint64_t(write.digest)})
        cell.digest = mixed(cell.digest, v);
    return cell.mode == Mode::Comparing;
}

bool PixelCache::interruptsCell()
{
    cell_->differs = true;
    if (cell_->mode == CellPass::Mode::Comparing)
        return true;
    stopKeepingCell();
    return false;
}

// A cell that will not be remembered has drawn over its box without
// forgetting the cells there, which now hold other pixels.
void PixelCache::stopKeepingCell()
{
    if (cell_->mode == CellPass::Mode::Drawing)
        memo_.forget(cell_->bounds);
    cell_->mode = CellPass::Mode::Unkept;
}

// A cell's first fill wrote its whole box, so what the cell draws inside it
// has nothing owed beneath.
bool PixelCache::insideCellFill(const Box& box) const
{
    return cell_ && cell_->mode != CellPass::Mode::Starting && contains(cell_->box, box);
}

}  // namespace TabulaControl::platform
