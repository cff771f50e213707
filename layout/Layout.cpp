#include "layout/Layout.h"

#include "state/Errors.h"

#include <algorithm>
#include <optional>

namespace TabulaControl::detail::layout {

namespace {

// Raises what painting cell (row, col) raises for a cell outside the store.
void checkCell(const GridModel& model, int32_t row, int32_t col)
{
    model.cells().Style(model.storeRow(row), to16(col));
    model.columns().mask(col);
}

// What walking one row across the columns leaves; the same for every row of
// one repaint.
struct RowWalk {
    render::Viewport::ColumnsReach reach;
    bool drawsCells = false;
};

// One layout, in the order the painters go: the rows (each walked across the
// columns), the marks after them, the resize zones, the scroll bars, and the
// selection fitted to its mode.
class Run {
public:
    Run(const GridModel& model, const render::Appearance& look, const Surroundings& around, Layout& out)
        : model_(model), look_(look), around_(around), out_(out), view_(out.viewport)
    {
    }

    void passOverCells();
    void showMarks();
    void placeZones();
    void fitSelection();

private:
    void readBlock(const navigation::CellBlock& block);
    void placeEditor();
    void walkRow(int32_t row);
    void walkFirstRow(int32_t row);

    const GridModel& model_;
    const render::Appearance& look_;
    const Surroundings& around_;
    Layout& out_;
    render::Viewport& view_;
    std::optional<RowWalk> walked_;
};

// Every row of one repaint walks the same columns; the first walk checks
// the columns, later rows only their own place in the store.
void Run::walkRow(int32_t row)
{
    view_.takeLineWidth(look_.showsGridLines());
    // Drawing a row reads its height first.
    static_cast<void>(model_.rows().size(row));
    if (!walked_)
        return walkFirstRow(row);
    if (walked_->drawsCells)
        checkCell(model_, row, 0);
    view_.setColumnsReach(walked_->reach);
}

void Run::walkFirstRow(int32_t row)
{
    RowWalk walk;
    const auto visit = [&](int32_t col, int32_t) {
        checkCell(model_, row, col);
        walk.drawsCells = true;
    };
    if (const auto page = walkColumns(model_, look_, view_, around_.surface.width - 1, visit))
        out_.controls.horizontalPage = *page;
    walk.reach = view_.columnsReach();
    walked_ = walk;
}

void Run::passOverCells()
{
    const auto page = walkRows(model_, look_, view_, around_.surface, true, [&](int32_t row, int32_t) { walkRow(row); });
    if (page)
        out_.controls.verticalPage = std::max<int32_t>(1, saturate16(*page));
}

// Flipping a mark draws nothing here, but it reads the sizes its place is
// made of, which fail where a size is missing, as painting it does.
void Run::readBlock(const navigation::CellBlock& block)
{
    if (model_.rows().count() < 1 || model_.cols().count() < 1 || !model_.hasCell(block.row1, block.col1) ||
        !model_.hasCell(block.row2, block.col2))
        return;
    if (block.row1 < view_.topRow() && block.row2 < view_.topRow())
        return;
    int32_t x = 0, y = 0;
    cellCoordinates(model_, look_, view_, around_.surface, block.row1, block.col1, x, y);
    cellCoordinates(model_, look_, view_, around_.surface, block.row2, block.col2, x, y);
    static_cast<void>(model_.cols().size(std::max(block.col1, block.col2)));
    static_cast<void>(model_.rows().size(std::max(block.row1, block.row2)));
}

// The marks shown after a repaint: the selection block, its anchor, and the
// focus, which places the editor box over the current cell when that cell
// is on the surface.
void Run::showMarks()
{
    const navigation::CellBlock block = out_.selection.block();
    readBlock(block);
    readBlock({block.row1, block.col1, block.row1, block.col1});
    int32_t x = 0, y = 0;
    const navigation::Selection& selection = out_.selection;
    if (!cellCoordinates(model_, look_, view_, around_.surface, selection.row(), selection.col(), x, y))
        placeEditor();
}

void Run::placeEditor()
{
    const int32_t row = out_.selection.row(), col = out_.selection.col();
    if (model_.rows().count() < 1 || model_.cols().count() < 1 || view_.isScrolledOff(row, col) ||
        !model_.hasCell(row, col))
        return;
    int32_t x = 0, y = 0;
    cellCoordinates(model_, look_, view_, around_.surface, row, col, x, y);
    const int32_t width = model_.cols().size(col);
    const int32_t height = model_.rows().size(row);
    out_.controls.editor = editorBox(x, y, width, height);
    out_.editorPlaced = true;
    out_.controls.editorMaxLength = std::max<int32_t>(model_.columns().editWidth(col), 0);
    out_.editorLimited = true;
}

void Run::placeZones()
{
    if (out_.zones.enabled())
        out_.zones.place(model_.cols(), look_.showsRowHeader(), firstWalked(view_.leftCol()), around_.windowWidth);
}

void Run::fitSelection()
{
    navigation::Selection& selection = out_.selection;
    if (!selection.selectsRows() && !selection.selectsColumns())
        return;
    readBlock(selection.block());
    if (selection.selectsRows())
        selection.selectCurrentRow(model_.cols().count());
    else
        selection.selectCurrentColumn(model_.rows().count());
    readBlock(selection.block());
}

}  // namespace

std::vector<int64_t> Layout::observable() const
{
    std::vector<int64_t> v;
    viewport.appendState(v);
    zones.appendState(v);
    selection.appendState(v);
    const ControlPlaces& c = controls;
    v.insert(v.end(), {c.verticalPage, c.horizontalPage, c.verticalBar, c.horizontalBar, c.editor.left, c.editor.top,
                       c.editor.width, c.editor.height, c.editorMaxLength});
    return v;
}

LayoutAttempt attemptLayout(const GridModel& model, const render::Viewport& viewport, const render::Appearance& look,
                            const navigation::Selection& selection, const navigation::ResizeZones& zones,
                            const Surroundings& around)
{
    LayoutAttempt attempt{{viewport, zones, selection, around.controls}, nullptr};
    Layout& out = attempt.layout;
    try {
        Run run(model, look, around, out);
        out.viewport.takeLineWidth(look.showsGridLines());
        run.passOverCells();
        if (model.rows().count() > 0)
            run.showMarks();
        run.placeZones();
        out.controls.verticalBar = out.viewport.vScrollNeeded();
        out.controls.horizontalBar = out.viewport.hScrollNeeded();
        run.fitSelection();
    } catch (...) {
        attempt.failure = std::current_exception();
    }
    return attempt;
}

Layout computeLayout(const GridModel& model, const render::Viewport& viewport, const render::Appearance& look,
                     const navigation::Selection& selection, const navigation::ResizeZones& zones,
                     const Surroundings& around)
{
    LayoutAttempt attempt = attemptLayout(model, viewport, look, selection, zones, around);
    if (attempt.failure)
        std::rethrow_exception(attempt.failure);
    return std::move(attempt.layout);
}

}  // namespace TabulaControl::detail::layout
