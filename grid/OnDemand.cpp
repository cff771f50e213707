#include "state/Errors.h"
#include "grid/Grid.h"
#include "state/Check.h"
#include "grid/GridPainter.h"

#include <QAbstractSlider>

#include <tuple>

namespace TabulaControl::detail {

namespace {

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

#ifdef TABULA_CACHE_CHECKS
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

int32_t pageStepOf(const platform::ScrollBar& bar)
{
    const auto* slider = qobject_cast<const QAbstractSlider*>(bar.widget());
    return slider ? slider->pageStep() : -1;
}

void addBar(std::vector<int64_t>& v, const platform::ScrollBar& bar)
{
    bar.appendPlacement(v);
    v.push_back(pageStepOf(bar));
}

// The sizes a layout reads and what the child controls it sets hold now.
layout::Surroundings surroundingsOf(const Grid& g)
{
    const platform::Editor& edit = g.ui.txtEdit;
    return {{g.ui.picGrid.ScaleWidth(), g.ui.picGrid.ScaleHeight()},
            g.ui.window.ScaleWidth(),
            {pageStepOf(g.ui.scrVertical), pageStepOf(g.ui.scrHorizontal), g.ui.scrVertical.Visible(),
             g.ui.scrHorizontal.Visible(), {edit.Left(), edit.Top(), edit.Width(), edit.Height()}, edit.MaxLength()}};
}

// The rows a layout reads: the sizes of those that can show from the first
// row shown, and their number only up to one past them, unless a selection
// of whole columns spans every row. So rows added or dropped below the view
// lay nothing out again.
void addRows(const Grid& g, std::vector<int64_t>& v)
{
    const GridModel& model = g.model;
    const int64_t shownEnd = model.rows().appendShownSizes(v, g.viewport.topRow(), g.ui.window.ScaleHeight());
    const bool spansRows = g.selection.mode() == SelectionByCol || g.selection.columnsSelected();
    for (const int64_t count : {int64_t{model.rows().count()}, int64_t{model.rows().lastSizedIndex()}, int64_t{model.cells().Rows()}})
        v.push_back(spansRows ? count : std::min(count, shownEnd + 1));
}

// The sizes and places a layout reads and leaves outside the components:
// the surface, the control and the child controls, the store's columns and
// the rows.
void addPlaces(const Grid& g, std::vector<int64_t>& v)
{
    v.insert(v.end(), {g.model.cells().Cols(), g.surface.width(), g.surface.height(), g.ui.window.ScaleWidth(),
                       g.ui.window.ScaleHeight(), g.barsShown(), g.ui.txtEdit.MaxLength()});
    addRows(g, v);
    addBar(v, g.ui.scrVertical);
    addBar(v, g.ui.scrHorizontal);
    g.ui.txtEdit.appendPlacement(v);
}

// Fills v with the key of what a layout reads and what it leaves. Each
// component enters by its revision, which every change to it moves, so an
// input a layout starts to read needs no entry here as long as a component
// of the grid holds it; the model enters by its columns' revisions and the
// rows as addRows says. When the key is the same before a layout as after
// the last one, that layout would settle nothing new, and only the pixels
// are owed.
void fillLayoutKey(const Grid& g, std::vector<int64_t>& v)
{
    const auto revision = [](uint64_t r) { return static_cast<int64_t>(r); };
    v.clear();
    v.insert(v.end(), {revision(g.model.columnsRevision()), revision(g.model.columns().revision()),
                       revision(g.viewport.revision()), revision(g.appearance.revision()),
                       revision(g.resizeZones.revision()), revision(g.selection.revision()),
                       revision(g.pointer.revision()), revision(g.editorState.revision())});
    addPlaces(g, v);
}

#ifdef TABULA_CACHE_CHECKS
// What a layout settles, by value, for the checks that a layout the key
// skips would have changed nothing.
std::vector<int64_t> settledState(const Grid& g)
{
    std::vector<int64_t> v;
    addPlaces(g, v);
    g.viewport.appendState(v);
    g.appearance.appendState(v);
    g.resizeZones.appendState(v);
    g.selection.appendState(v);
    g.pointer.appendState(v);
    g.editorState.appendState(v);
    return v;
}
#endif

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

// The observable half of a full repaint, computed without painting; the
// pixels are owed until they are read.
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

bool Grid::layoutKeyCurrent()
{
    if (settledLayout_.empty())
        return false;
    fillLayoutKey(*this, layoutKey_);
    return layoutKey_ == settledLayout_;
}

bool Grid::layoutSettled()
{
    if (!layoutKeyCurrent())
        return false;
#ifdef TABULA_CACHE_CHECKS
    const std::vector<int64_t> settled = settledState(*this);
    runLayout();
    TABULA_CHECK(settledState(*this) == settled);
    fillLayoutKey(*this, settledLayout_);
#endif
    return true;
}

void Grid::runLayout()
{
    settledLayout_.clear();
    owedRepaint_.reset();
    surface.setPendingRender({});
    const layout::LayoutAttempt attempt =
        layout::attemptLayout(model, viewport, appearance, selection, resizeZones, surroundingsOf(*this));
    applyLayout(attempt.layout);
    if (!attempt.failure) {
        barsShownOverride_.reset();
        return;
    }
    // A repaint that fails part-way leaves what it settled up to the failure
    // and the cells drawn before it.
    paintAll();
    std::rethrow_exception(attempt.failure);
}

// In the order the painters set them: the viewport and page steps while the
// rows are walked, the editor box with the marks, the zones, the bars, and
// last the selection fitted to its mode.
void Grid::applyLayout(const layout::Layout& laid)
{
    viewport = laid.viewport;
    const layout::ControlPlaces& controls = laid.controls;
    ui.scrHorizontal.setLargeChange(saturate16(controls.horizontalPage));
    ui.scrVertical.setLargeChange(saturate16(controls.verticalPage));
    if (laid.editorPlaced)
        ui.txtEdit.Move(controls.editor.left, controls.editor.top, controls.editor.width, controls.editor.height);
    if (laid.editorLimited)
        ui.txtEdit.setMaxLength(controls.editorMaxLength);
    resizeZones.restoreZones(laid.zones);
    ui.scrVertical.setVisible(controls.verticalBar);
    ui.scrHorizontal.setVisible(controls.horizontalBar);
    selection = laid.selection;
}

#ifdef TABULA_CACHE_CHECKS
std::optional<layout::Layout> Grid::layoutOrNothing() const
{
    try {
        return layout::computeLayout(model, viewport, appearance, selection, resizeZones, surroundingsOf(*this));
    } catch (...) {
        return std::nullopt;
    }
}

layout::Layout Grid::observedLayout() const
{
    return {viewport, resizeZones, selection, surroundingsOf(*this).controls};
}
#endif

void Grid::flushPaint()
{
    if (!owedRepaint_)
        return;
    const RepaintInputs inputs = *owedRepaint_;
    owedRepaint_.reset();
    surface.setPendingRender({});
    // Painting settles what the layout did, so a layout that was current
    // stays current, though the inputs put back and forth moved revisions.
    // Owed pixels can be made in the middle of a change (the vertical bar
    // clamped while rows are removed); the layout is stale then, and
    // painting settles the state as it is.
    const bool settled = layoutKeyCurrent();
#ifdef TABULA_CACHE_CHECKS
    const auto fields = settledFields(*this);
#endif
    try {
        const InputsRestored restored(*this, inputs);
        paintAll();
#ifdef TABULA_CACHE_CHECKS
        TABULA_CHECK(!settled || settledFields(*this) == fields);
#endif
    } catch (...) {
        // Owed pixels are made outside the member that owed them: no caller to throw to.
        if (onPaintFailure)
            onPaintFailure(std::current_exception());
        else
            logContained("painting owed pixels", std::current_exception());
        return;
    }
    if (settled)
        fillLayoutKey(*this, settledLayout_);
}

}  // namespace TabulaControl::detail
