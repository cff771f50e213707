#pragma once

#include <TabulaControl/Tabula.h>

#include "state/GridModel.h"
#include "state/EditorState.h"
#include "layout/Layout.h"
#include "state/DropDownSettings.h"
#include "state/LookupLists.h"
#include "state/PointerState.h"
#include "state/ResizeZones.h"
#include "state/Selection.h"
#include "widgets/Controls.h"
#include "pixels/Surface.h"
#include "state/AppearanceSettings.h"
#include "render/Marks.h"
#include "grid/OnDemand.h"
#include "state/Viewport.h"
#include "grid/UndoCommands.h"
#include "grid/Events.h"

#include <QUndoStack>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace TabulaControl::detail {

using platform::MouseArgs;
using platform::Rect;
using navigation::CellIndex;

// One grid: its state, its child controls and the procedures that keep them
// in step. The public Tabula members call these under the error trap; the
// procedures themselves let failures propagate to that trap.
class Grid {
public:
    Grid(Tabula& control, TabulaEvents& events);

    GridModel model;
    platform::Controls ui;
    platform::Surface& surface;
    render::Marks marks;
    navigation::ResizeZones resizeZones;
    navigation::Selection selection;
    navigation::PointerState pointer;
    editing::EditorState editorState;
    lookups::DropDownSettings dropDownSettings;
    render::Viewport viewport;
    render::Appearance appearance;
    GridEvents events;
    QWidget& control;

    // Lifecycle
    void initialize();
    void applyDefaultProperties();
    void fitToControl();
    void shutDown();
    void readProperties(const PropertyBag& bag);
    void writeProperties(PropertyBag& bag) const;
    void notifyPropertyChanged(const char* name);

    // Rows, columns and cell access
    void setRows(int32_t n);
    void setCols(int32_t n);
    void setRow(int32_t n);
    void setCol(int32_t n);
    QString Text() const;
    void setText(const QString& value);
    QString TextMatrix(int32_t row, int32_t col) const;
    void setTextMatrix(int32_t row, int32_t col, const QString& value);
    void setAutoRedraw(bool value);
    void setRowHeight(int32_t row, int32_t value);
    void setColWidth(int32_t col, int32_t value);
    int32_t ColAlign(int32_t col);
    void setColAlign(int32_t col, int32_t value);
    void setColMask(int32_t col, int32_t value);
    void AddItem(const QString& rowData, const QVariant& backColor, const QVariant& foreColor);
    // Whether AddItem can store every field of rowData.
    bool itemFits(const QString& rowData) const;
    void RemoveItem(int32_t row);
    void Clear();

    // A host's table shown instead of the own cells (Binding.cpp). The own
    // cells wait, as they were, until unbound.
    void bindCells(std::unique_ptr<CellSource> source);
    void unbindCells();
    void scrollBarsHome();
    const CellSource* cellSource() const { return source_.get(); }
    // What the bound table did by itself: rows first..last (grid rows) came
    // or went, or anything else changed.
    void sourceRowsInserted(int32_t first, int32_t last);
    void sourceRowsRemoved(int32_t first, int32_t last);
    void sourceChanged();

    // Editing entry points
    QString Validate(const QString& text, int32_t col) const;

    // Geometry
    bool cellCoordinates(int32_t row, int32_t col, int32_t& x, int32_t& y);

    // Painting
    void Refresh();
    void redrawAllCells(bool full);
    void drawRow(int32_t row, int32_t y);
    void drawColumn(int32_t col, int32_t x);
    void drawGrid();
    void drawGridBorder();
    void drawBottomRows(int32_t fromRow, int32_t lines);
    void drawRightColumns(int32_t fromCol, int32_t pixels);
    void drawCell(int32_t row, int32_t col, int32_t x, int32_t y, int32_t width, int32_t height);
    // Paints one cell where it stands now; a cell outside the grid is drawn
    // nowhere.
    void redrawCell(int32_t row, int32_t col);
    void applyBorderStyle();
    void showScrollBars();
    // Whether both scroll bars are shown, as the painters see it.
    bool barsShown() const;
    render::Canvas canvas() { return {surface, marks}; }
    // Moves the pixels of area by (dx, dy) with the marks on them.
    void scrollPixels(int32_t dx, int32_t dy, Rect area);
    // Whether the cells are on the surface as the last pass over them drew
    // them from the current inputs, with top and left the first row and
    // column shown, the header row included when asked: then a one-step
    // scroll need not draw the cells it carries whole.
    bool cellsCurrent(int32_t top, int32_t left, bool headerRow) const;
    // Runs body, which draws cells only where they belong: a pass over the
    // cells, or a scroll step's strip and pass. With keepCarried, the cells
    // whose pixels the memo holds in place are left as they are.
    void inPass(bool keepCarried, const std::function<void()>& body);

    // Marks over the cells, kept in `marks`: the current cell's focus
    // rectangle, and the selection block, inverted, with its anchor cell in
    // normal colours. Each is an exclusive-or: showing or hiding one flips
    // it where the geometry places it now, so hiding a mark that is not
    // shown shows it. Only these procedures flip marks; the painters take
    // away the marks on what they cover.
    void showFocus() { flipFocusMark(); }
    void hideFocus() { flipFocusMark(); }
    // Runs moveCurrentCell between hiding and showing the focus rectangle.
    void moveFocus(const std::function<void()>& moveCurrentCell);
    void showSelectionMarks() { flipSelectionMarks(); }
    void hideSelectionMarks() { flipSelectionMarks(); }
    // Runs change, which reshapes the selection, between hiding and showing
    // the selection block.
    void changeSelection(const std::function<void()>& change);
    // Runs body with the block of a line selection taken off, then puts it
    // back over whatever body painted.
    void withLineSelectionLifted(const std::function<void()>& body);
    // Widens the selection to the current row or column in the modes that
    // select whole lines.
    void fitSelectionToMode();
    // The marks over a repaint of every cell.
    void showMarksAfterPaint();
    // The marks after one scroll step repainted the cells.
    void flipSelectionAfterScrollStep();
    // Moves the current cell to the anchor after a press on a header.
    void showMarksAtAnchor();

    // Headers
    void setFormatString(const QString& value);
    void updateHeader();
    void AutoSetup(const QVariant& rows, const QVariant& cols, bool rowHeader, bool colHeader,
                   const QVariant& formatString);

    // Appearance (setters that need more than a store)
    void setColHeader(bool value);
    void setRowHeader(bool value);
    void setShowGrid(bool value);
    void setGridSolid(bool value);
    void setGridLineColor(OleColor value);
    void setBorderStyle(int32_t value);
    void setMousePointer(int16_t value);
    void setUseBackColorAlt(bool value);
    void setBackColor(OleColor value);
    void setBackColorAlt(OleColor value);
    void setBackColorFixed(OleColor value);
    void setForeColor(OleColor value);
    void setForeColorFixed(OleColor value);
    void setFixedStyle(int32_t value);
    void setFont(FontRef value);
    void setFontEdit(FontRef value);
    void setFontFixed(FontRef value);
    void setBackColorBkg(OleColor value);

    // Scrolling
    void setLeftCol(int32_t value);
    void onVerticalScroll();
    void onHorizontalScroll();

    // Mouse, selection and resizing
    int32_t rowAt(float x, float y);
    int32_t columnAt(float x, float y);
    void MouseDown(int16_t button, int16_t shift, float x, float y);
    void MouseUp(int16_t button, int16_t shift, float x, float y);
    void MouseMove(int16_t button, int16_t shift, float x, float y);
    void DblClick();
    void placeResizeZones();
    void onSurfaceMousePress(const MouseArgs& e);
    void onSurfaceMouseRelease(const MouseArgs& e);
    void onSurfaceMouseMove(const MouseArgs& e);
    void onSurfaceDoubleClick();

    // Keyboard
    void KeyDown(int16_t keyCode, int16_t shift);
    void onSurfaceKeyDown(int16_t keyCode, int16_t shift);
    void onSurfaceCharacter(int16_t keyAscii);
    void onSurfaceKeyUp(int16_t keyCode, int16_t shift);

    // The cell editor's entry points
    void startEdit(int16_t keyAscii);
    void hideEditor();
    // Commits and closes an open editor before a full repaint.
    void endEdit();
    // Closes an open editor without storing what it holds.
    void cancelEdit();

    // Lookup lists and the drop-down list
    void AddLookup(int32_t col, const QString& value, const QVariant& itemData);
    QVariant LookupItemData(int32_t col, const QString& value) const;
    void RemoveLookupValue(int32_t col, const QString& value);
    void RemoveLookup(int32_t col);
    void ClearAllLookups();
    bool ColHasLookup(int32_t col) const;
    void fillList(int32_t col);
    // Hides the drop-down list when it is open.
    void hideList();
    void onListKeyDown(int16_t keyCode, int16_t shift);
    void onListMouseRelease(int16_t button, int16_t shift, float x, float y);
    void onListFocusLost();
    void closeListIfFocusLeft();

    // Column buttons
    void AddButton(int32_t col);
    void RemoveButton(int32_t col);
    bool ColHasButton(int32_t col) const;
    void onCellButtonClick();

    // The cell editor
    void onEditorKeyDown(int16_t keyCode, int16_t shift);
    // Raises BeforeEdit and, unless it is cancelled, stores the validated
    // editor text in the current cell.
    void storeEditorText();
    // Raises AfterEdit with the current cell's stored text. An edit whose
    // cell the host moved out of the grid has no text to report.
    void raiseAfterEdit();
    void onEditorCharacter(int16_t& keyAscii);
    void onEditorFocusLost();
    void setColEditWidth(int32_t col, int32_t value);

    // Drop-down button and column button of the current cell
    void showCellButtons();

    // Undo: each change the user makes through the grid is one command on
    // undoStack; changes made by the host are not recorded.
    QUndoStack undoStack;
    // Stores text in a cell as the user's change.
    void storeUserText(int32_t row, int32_t col, const QString& text);
    // AutoNewRow added row for the user's edit.
    void noteAddedRow(int32_t row);
    // Puts back the texts before (undo) or after the changes, raising
    // AfterEdit for each cell, and removes or adds again the added row.
    void restoreCells(const std::vector<CellChange>& changes, bool undo, int32_t addedRow);
    // Runs an undo or redo step; the undo stack has no caller to throw to.
    std::function<void(const std::function<void()>&)> runUndoStep;
    // The spreadsheet keys' filter on the child controls; it reads this grid,
    // so it goes with it rather than with the widget's children.
    std::unique_ptr<QObject> sheetKeyFilter;

    // Editing as in a spreadsheet (grid/SheetEditing.cpp).
    // Stores value as if typed into the cell's editor and committed:
    // ColAllowEdit, BeforeEdit, the column's mask and edit width, Validate,
    // AfterEdit.
    void storeAsTyped(int32_t row, int32_t col, const QString& value);
    // Empties the cells of block as one user change.
    void clearCells(const QRect& block);
    // Opens the editor on the current cell with the caret after its text.
    void editAtEnd();
    void goToCell(int32_t row, int32_t col);
    // Goes to the first or the last data cell.
    void goToCorner(bool last);
    // Commits the open edit and moves right (left when back).
    void commitAndTab(bool back);
    void commitAndGoDown();
    bool spreadsheetKeys = false;

    // Sorting (grid/Sorting.cpp). A sort moves whole rows, the current cell
    // and the block's rows with them, marks the column's header and repaints.
    void sort(int32_t col, Qt::SortOrder order);
    // A header click: ascending, or descending when the column was just
    // sorted ascending.
    void sortByHeader(int32_t col);
    // Puts the rows back in their order before (undo) or after a sort.
    void restoreRowOrder(const std::vector<int32_t>& order, bool undo);
    bool sortOnHeaderClick = false;

    // Whether changes repaint the grid at once (AutoRedraw).
    bool autoRedraw() const { return autoRedraw_; }

    // Tells the host that a saved property changed.
    std::function<void(const QString&)> onPropertyChanged;

    // Painting on demand. While repaints are deferred, a full repaint
    // settles at once everything the host can observe and leaves the pixels
    // owed to the surface, which makes them when it is next read or drawn
    // on. Scopes nest.
    void deferRepaints();
    void endDeferredRepaints();
    // Makes owed pixels now; a failure goes to onPaintFailure.
    void flushPaint();
    std::function<void(const std::exception_ptr&)> onPaintFailure;

private:
    void flipFocusMark();
    void flipSelectionBlock();
    void flipSelectionBlock(int32_t row1, int32_t col1, int32_t row2, int32_t col2);
    void flipSelectionMarks();
    void paintAll();
    void layoutAll();
    void runLayout();
    // Sets the state and the child controls as the layout says.
    void applyLayout(const layout::Layout& laid);
#ifdef TABULA_CACHE_CHECKS
    // The layout now, or nothing when computing it fails.
    std::optional<layout::Layout> layoutOrNothing() const;
    // What the state and the child controls hold of a layout.
    layout::Layout observedLayout() const;
#endif
    // Whether the layout key is the one the last layout left.
    bool layoutKeyCurrent();
    // Whether a layout now would settle nothing new; cache checks lay out
    // anyway and compare.
    bool layoutSettled();
    void redrawIfAuto();
    void repaintEditedCell(bool highlight);
    // Stores the edit, closes the editor, repaints the cell with its focus
    // rectangle, queues an Up or Down key for the surface, then raises AfterEdit.
    void commitAndReport(int16_t keyCode);
    void openList(int16_t keyAscii);
    void pickListValue();
    CellInputs cellInputs() const;
    void notePass(bool full);
    void passOverCells(bool full);
    void notePaintOutsidePass();
    bool keepsCarriedCell(int32_t row, int32_t col, int32_t x, int32_t y, int32_t width, int32_t height);

    // Takes the model's counts into the bars and the selection, then repaints.
    void followCounts();
    // Sets the vertical bar's range to the row count: 16-bit for the own cells.
    void setRowsMax(int64_t rows);

    lookups::LookupLists lookupLists_;
    std::optional<GridModel> ownCells_;
    std::unique_ptr<CellSource> source_;

    void pushUserEdit();
    void reorderRows(const std::vector<int32_t>& order);
    // A bound grid's rows are ordered by the host's model itself.
    void sortBoundRows(int32_t col, bool descending);

    std::vector<CellChange> pendingChanges_;
    int32_t pendingAddedRow_ = 0;
    int userEditDepth_ = 0;
    bool restoringCells_ = false;
    bool autoRedraw_ = true;
    int deferDepth_ = 0;
    std::optional<RepaintInputs> owedRepaint_;
    std::optional<PaintedCells> painted_;
    bool keepCarriedCells_ = false;
    int passDepth_ = 0;
    std::optional<bool> barsShownOverride_;
    // What the last layout left, empty when unknown; see layoutSettled().
    std::vector<int64_t> settledLayout_;
    // The key of the layout now, kept between calls for its storage.
    std::vector<int64_t> layoutKey_;
    int hostCalls_ = 0;
    friend class InputsRestored;
    friend class HostCall;
    friend class RepaintsDeferred;
    friend class RedrawDeferred;
    friend class UserEdit;
};

// Turns AutoRedraw off for a scope, so that a run of changes is painted once
// by the caller afterwards. The host's setting comes back however the scope ends.
class RedrawDeferred {
public:
    explicit RedrawDeferred(Grid& grid) : grid_(grid), autoRedraw_(grid.autoRedraw_) { grid.autoRedraw_ = false; }
    ~RedrawDeferred() { grid_.autoRedraw_ = autoRedraw_; }
    RedrawDeferred(const RedrawDeferred&) = delete;
    RedrawDeferred& operator=(const RedrawDeferred&) = delete;

private:
    Grid& grid_;
    bool autoRedraw_;
};

// Marks a member of the host's interface as running on the grid.
class HostCall {
public:
    explicit HostCall(Grid& grid) : grid_(grid) { ++grid_.hostCalls_; }
    ~HostCall() { --grid_.hostCalls_; }
    HostCall(const HostCall&) = delete;
    HostCall& operator=(const HostCall&) = delete;

private:
    Grid& grid_;
};

// A host call that ends in a full repaint. Only an outermost one defers
// repaints: one made from an event inside another member must leave
// finished pixels to the code that goes on drawing after it.
class RepaintsDeferred {
public:
    explicit RepaintsDeferred(Grid& grid) : grid_(grid), defers_(grid.hostCalls_ == 0), call_(grid)
    {
        if (defers_)
            grid_.deferRepaints();
    }
    ~RepaintsDeferred()
    {
        if (defers_)
            grid_.endDeferredRepaints();
    }
    RepaintsDeferred(const RepaintsDeferred&) = delete;
    RepaintsDeferred& operator=(const RepaintsDeferred&) = delete;

private:
    Grid& grid_;
    bool defers_;
    HostCall call_;
};

}  // namespace TabulaControl::detail
