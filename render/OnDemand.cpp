#include "core/Errors.h"
#include "core/Grid.h"
#include "render/GridPainter.h"

#include <QAbstractSlider>

#include <cassert>
#include <tuple>

namespace TabulaControl::detail {

namespace {

// The painters run with the surface discarding what they draw.
class Discarding {
public:
    explicit Discarding(platform::Surface& surface) : surface_(surface) { surface_.setDiscarding(true); }
    ~Discarding() { surface_.setDiscarding(false); }
    Discarding(const Discarding&) = delete;
    Discarding& operator=(const Discarding&) = delete;

private:
    platform::Surface& surface_;
};

RepaintInputs inputsOf(const Grid& g)
{
    const render::Appearance& look = g.appearance;
    return {*look.font(), *look.headerFont(), SharedBackColor, SharedForeColor, g.selection.block(), g.barsShown()};
}

}  // namespace

// Puts back, while owed pixels are made, the inputs their repaint saw, and
// afterwards the state as the repaint left it: the resize zones follow the
// window as it was then.
class InputsRestored {
public:
    InputsRestored(Grid& g, const RepaintInputs& then)
        : g_(g), now_(inputsOf(g)), zones_(g.resizeZones), fonts_(g.appearance.cellFonts())
    {
        g_.appearance.setCellFonts({std::make_shared<StdFont>(then.font), std::make_shared<StdFont>(then.fontFixed)});
        apply(then);
        g_.barsShownOverride_ = then.barsShown;
    }
    ~InputsRestored()
    {
        g_.appearance.setCellFonts(fonts_);
        apply(now_);
        g_.resizeZones.restoreZones(zones_);
        g_.barsShownOverride_.reset();
    }
    InputsRestored(const InputsRestored&) = delete;
    InputsRestored& operator=(const InputsRestored&) = delete;

private:
    void apply(const RepaintInputs& in)
    {
        SharedBackColor = in.backColor;
        SharedForeColor = in.foreColor;
        g_.selection.setBlock(in.block);
    }

    Grid& g_;
    RepaintInputs now_;
    navigation::ResizeZones zones_;
    render::Appearance::CellFonts fonts_;
};

namespace {

// Raises what painting cell (row, col) would raise for a cell outside the
// store.
void checkCell(const GridModel& model, int32_t row, int32_t col)
{
    model.cells().Style(to16(row), to16(col));
    model.columns().mask(col);
}

#ifndef NDEBUG
// The fields a full repaint settles, to check that the layout settled them
// exactly as painting does.
auto settledFields(const Grid& g)
{
    const render::Viewport& view = g.viewport;
    return std::tuple(view.drawnBottom(), view.drawnRight(), view.vScrollNeeded(), view.hScrollNeeded(),
                      view.pageRows(), view.pageCols(), g.selection.block(), g.selection.rowsSelected(),
                      g.selection.columnsSelected());
}
#endif

}  // namespace

namespace {


void addBar(std::vector<int64_t>& v, const platform::ScrollBar& bar)
{
    bar.appendPlacement(v);
    const auto* slider = qobject_cast<const QAbstractSlider*>(bar.widget());
    v.push_back(slider ? slider->pageStep() : -1);
}

// Fills v with what a layout reads and what it leaves, in the grid and the child
// controls: rows and columns only as far as they can show. When it is the
// same before a layout as after the last one, that layout would settle
// nothing new, and only the pixels are owed.
void fillLayoutKey(const Grid& g, std::vector<int64_t>& v)
{
    const GridModel& model = g.model;
    v.clear();
    v.insert(v.end(), {
        model.cols().count(), model.cols().lastSizedIndex(), model.cells().Cols(), g.surface.width(), g.surface.height(),
        g.barsShown(), g.ui.txtEdit.MaxLength()});
    model.columns().appendLayoutKey(v);
    // The resize zones are found across the whole control, a little wider
    // than the surface.
    const int64_t rowsShownEnd = model.rows().appendShownSizes(v, g.viewport.topRow(), g.ui.window.ScaleHeight());
    model.cols().appendShownSizes(v, g.viewport.leftCol(), g.ui.window.ScaleWidth());
    // Rows past those that can show matter only by their number, and that
    // only to a selection of whole columns, which spans every row.
    const bool spansRows = g.selection.mode() == SelectionByCol || g.selection.columnsSelected();
    for (const int64_t count : {int64_t{model.rows().count()}, int64_t{model.rows().lastSizedIndex()}, int64_t{model.cells().Rows()}})
        v.push_back(spansRows ? count : std::min(count, rowsShownEnd + 1));
    addBar(v, g.ui.scrVertical);
    addBar(v, g.ui.scrHorizontal);
    g.ui.txtEdit.appendPlacement(v);
    g.viewport.appendLayoutKey(v);
    g.appearance.appendLayoutKey(v);
    g.resizeZones.appendLayoutKey(v);
    g.selection.appendLayoutKey(v);
    g.pointer.appendLayoutKey(v);
    g.editorState.appendLayoutKey(v);
}

}  // namespace

void Grid::deferRepaints()
{
    ++deferDepth_;
    // Changes that do not repaint, and the edit events a repaint raises,
    // must meet the pixels as they were.
    if (!autoRedraw_ || editorState.isOpen())
        flushPaint();
}

void Grid::endDeferredRepaints() { --deferDepth_; }

// The observable half of a full repaint, run with the surface discarding
// what the painters draw; the pixels are owed until they are read.
void Grid::layoutAll()
{
    RepaintInputs inputs = inputsOf(*this);
    if (!layoutSettled()) {
        runLayout();
        fillLayoutKey(*this, settledLayout_);
    }
    owedRepaint_ = std::move(inputs);
    surface.setPendingRender([this] { flushPaint(); });
    ui.picGrid.Refresh();
}

bool Grid::layoutSettled()
{
    if (settledLayout_.empty())
        return false;
    fillLayoutKey(*this, layoutKey_);
    if (layoutKey_ != settledLayout_)
        return false;
#ifndef NDEBUG
    const std::vector<int64_t> settled = settledLayout_;
    runLayout();
    fillLayoutKey(*this, settledLayout_);
    assert(settledLayout_ == settled);
#endif
    return true;
}

void Grid::runLayout()
{
    settledLayout_.clear();
    owedRepaint_.reset();
    surface.setPendingRender({});
    try {
        Discarding discarding(surface);
        measuredRow_.reset();
        viewport.takeLineWidth(appearance.showsGridLines());
        redrawAllCells(true);
        showScrollBars();
        fitSelectionToMode();
    } catch (...) {
        measuredRow_.reset();
        paintAll();
        throw;
    }
    measuredRow_.reset();
}

void Grid::flushPaint()
{
    if (!owedRepaint_)
        return;
    const RepaintInputs inputs = *owedRepaint_;
    owedRepaint_.reset();
    surface.setPendingRender({});
#ifndef NDEBUG
    const auto settled = settledFields(*this);
#endif
    try {
        const InputsRestored restored(*this, inputs);
        paintAll();
        assert(settledFields(*this) == settled);
    } catch (...) {
        // Owed pixels are made outside the member that owed them: no caller to throw to.
        if (onPaintFailure)
            onPaintFailure(std::current_exception());
        else
            logContained("painting owed pixels", std::current_exception());
    }
}

// Every row of one layout walks the same columns; the first walk checks
// the columns, later rows only their own place in the store.
void Grid::measureRow(int32_t row)
{
    if (measuredRow_) {
        if (measuredRow_->drawsCells)
            checkCell(model, row, 0);
        viewport.setColumnsReach(measuredRow_->reach);
        return;
    }
    RowWalk walk;
    render::walkRow(*this, [&](int32_t col, int32_t) {
        checkCell(model, row, col);
        walk.drawsCells = true;
    });
    walk.reach = viewport.columnsReach();
    measuredRow_ = walk;
}

}  // namespace TabulaControl::detail
