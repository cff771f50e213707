#pragma once

#include <TabulaControl/Csv.h>
#include <TabulaControl/General.h>
#include <TabulaControl/TabulaTypes.h>

#include <QByteArray>
#include <QFont>
#include <QImage>
#include <QObject>
#include <QRect>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>
#include <source_location>

QT_BEGIN_NAMESPACE
class QAbstractItemModel;
class QIODevice;
class QPagedPaintDevice;
class QUndoStack;
QT_END_NAMESPACE

namespace TabulaControl {

namespace detail {
class Grid;
class OwnCellsModel;
}

class TABULACONTROL_EXPORT Tabula : public QWidget {
    Q_OBJECT
    // Integer members publish as int and colours (OleColor) as uint: the types
    // Designer edits and .ui files keep, system colours included. Fonts publish
    // as QFont copies; assigning one gives the grid a new font object.
    // settingsChanged, without arguments, notifies every saved setting: one
    // change can move several (Rows clamps Row), and a listener reads back.
    Q_PROPERTY(int MouseRow READ MouseRow DESIGNABLE false)
    Q_PROPERTY(int MouseCol READ MouseCol DESIGNABLE false)
    Q_PROPERTY(int Rows READ Rows WRITE setRows NOTIFY settingsChanged)
    Q_PROPERTY(int Cols READ Cols WRITE setCols NOTIFY settingsChanged)
    Q_PROPERTY(bool ColHeader READ ColHeader WRITE setColHeader NOTIFY settingsChanged)
    Q_PROPERTY(bool RowHeader READ RowHeader WRITE setRowHeader NOTIFY settingsChanged)
    Q_PROPERTY(int TopRow READ TopRow WRITE setTopRow)
    Q_PROPERTY(int LeftCol READ LeftCol WRITE setLeftCol)
    Q_PROPERTY(bool ShowGrid READ ShowGrid WRITE setShowGrid NOTIFY settingsChanged)
    Q_PROPERTY(bool GridSolid READ GridSolid WRITE setGridSolid NOTIFY settingsChanged)
    Q_PROPERTY(int Row READ Row WRITE setRow NOTIFY settingsChanged)
    Q_PROPERTY(int Col READ Col WRITE setCol NOTIFY settingsChanged)
    Q_PROPERTY(QString Text READ Text WRITE setText DESIGNABLE false)
    Q_PROPERTY(bool AutoRedraw READ AutoRedraw WRITE setAutoRedraw NOTIFY settingsChanged)
    Q_PROPERTY(uint GridLineColor READ GridLineColor WRITE setGridLineColor NOTIFY settingsChanged)
    Q_PROPERTY(int Row1 READ Row1 WRITE setRow1 DESIGNABLE false)
    Q_PROPERTY(int Col1 READ Col1 WRITE setCol1 DESIGNABLE false)
    Q_PROPERTY(int Row2 READ Row2 WRITE setRow2 DESIGNABLE false)
    Q_PROPERTY(int Col2 READ Col2 WRITE setCol2 DESIGNABLE false)
    Q_PROPERTY(TabulaControl::BorderStyles BorderStyle READ BorderStyle WRITE setBorderStyle NOTIFY settingsChanged)
    Q_PROPERTY(int MousePointer READ MousePointer WRITE setMousePointer NOTIFY settingsChanged)
    Q_PROPERTY(bool AllowSelection READ AllowSelection WRITE setAllowSelection NOTIFY settingsChanged)
    Q_PROPERTY(bool UseBackColorAlt READ UseBackColorAlt WRITE setUseBackColorAlt NOTIFY settingsChanged)
    Q_PROPERTY(uint BackColor READ BackColor WRITE setBackColor NOTIFY settingsChanged)
    Q_PROPERTY(uint BackColorAlt READ BackColorAlt WRITE setBackColorAlt NOTIFY settingsChanged)
    Q_PROPERTY(uint BackColorFixed READ BackColorFixed WRITE setBackColorFixed NOTIFY settingsChanged)
    Q_PROPERTY(uint ForeColor READ ForeColor WRITE setForeColor NOTIFY settingsChanged)
    Q_PROPERTY(uint ForeColorFixed READ ForeColorFixed WRITE setForeColorFixed NOTIFY settingsChanged)
    Q_PROPERTY(TabulaControl::FixedStyles FixedStyle READ FixedStyle WRITE setFixedStyle NOTIFY settingsChanged)
    Q_PROPERTY(TabulaControl::SelectModes SelectionMode READ SelectionMode WRITE setSelectionMode NOTIFY settingsChanged)
    Q_PROPERTY(QFont Font READ fontValue WRITE setFont NOTIFY settingsChanged)
    Q_PROPERTY(QFont FontEdit READ fontEditValue WRITE setFontEdit NOTIFY settingsChanged)
    Q_PROPERTY(QFont FontFixed READ fontFixedValue WRITE setFontFixed NOTIFY settingsChanged)
    Q_PROPERTY(uint BackColorBkg READ BackColorBkg WRITE setBackColorBkg NOTIFY settingsChanged)
    Q_PROPERTY(bool AllowUserResizing READ AllowUserResizing WRITE setAllowUserResizing NOTIFY settingsChanged)
    Q_PROPERTY(QString FormatString READ FormatString WRITE setFormatString NOTIFY settingsChanged)
    Q_PROPERTY(bool AutoNewRow READ AutoNewRow WRITE setAutoNewRow NOTIFY settingsChanged)
    Q_PROPERTY(bool UseItemData READ UseItemData WRITE setUseItemData NOTIFY settingsChanged)
    Q_PROPERTY(int ListBoxRows READ ListBoxRows WRITE setListBoxRows NOTIFY settingsChanged)
    Q_PROPERTY(bool SelectText READ SelectText WRITE setSelectText NOTIFY settingsChanged)
    Q_PROPERTY(QImage Picture READ Picture DESIGNABLE false)
    Q_PROPERTY(bool Enabled READ Enabled WRITE setEnabled)
    Q_PROPERTY(bool spreadsheetKeys READ spreadsheetKeys WRITE setSpreadsheetKeys NOTIFY settingsChanged)
    Q_PROPERTY(bool sortOnHeaderClick READ sortOnHeaderClick WRITE setSortOnHeaderClick NOTIFY settingsChanged)
    Q_PROPERTY(bool followPalette READ followPalette WRITE setFollowPalette NOTIFY settingsChanged)

    Q_CLASSINFO("CellTag", "Stores any extra data needed for your program")
    Q_CLASSINFO("MouseRow", "Returns the current mouse position, in row and column coordinates")
    Q_CLASSINFO("MouseCol", "Returns the current mouse position, in row and column coordinates")
    Q_CLASSINFO("Rows", "Returns or sets the total number of rows in the grid")
    Q_CLASSINFO("Cols", "Returns or sets a value to determine the total number of columns")
    Q_CLASSINFO("ColHeader", "Returns or sets a value to determine whether or not column headings are displayed")
    Q_CLASSINFO("RowHeader", "Returns or sets a value to determine of row headers are displayed")
    Q_CLASSINFO("TopRow", "Returns or sets the uppermost visible row (other than a fixed row) in the grid")
    Q_CLASSINFO("LeftCol", "Returns or sets the left-most visible column (other than a fixed column) in the grid control")
    Q_CLASSINFO("ShowGrid", "Returns or sets a value to determine if grid lines are displayed")
    Q_CLASSINFO("GridSolid", "Returns or sets a value to determine if the grid lines are solid or dashed")
    Q_CLASSINFO("Row", "Returns/sets the current row in the grid")
    Q_CLASSINFO("Col", "Returns or sets  the current column number")
    Q_CLASSINFO("Text", "Returns or sets the text contents of the current cell")
    Q_CLASSINFO("TextMatrix", "Returns or sets the text contents of an arbitrary cell")
    Q_CLASSINFO("AutoRedraw", "Determines if the grid will redraw itself after deleting or adding a row")
    Q_CLASSINFO("GridLineColor", "Returns or sets  the color used to draw the lines between the cells of the grid")
    Q_CLASSINFO("Row1", "Gets the top most selected row number")
    Q_CLASSINFO("Col1", "Gets the left most selected column number")
    Q_CLASSINFO("Row2", "Gets the bottom most selected row number")
    Q_CLASSINFO("Col2", "Gets the right most selected column number")
    Q_CLASSINFO("RowHeight", "Returns or sets the height of the specified row, in twips")
    Q_CLASSINFO("RowBookmark", "Set/get a recordset bookmark for the specified row")
    Q_CLASSINFO("ColWidth", "Returns or sets  the width of the specific column")
    Q_CLASSINFO("ColAlign", "Returns or sets the alignment for a column")
    Q_CLASSINFO("BorderStyle", "Returns or sets  the borderstyle for the control")
    Q_CLASSINFO("MousePointer", "Sets/gets mouse pointer")
    Q_CLASSINFO("AllowSelection", "Returns or sets  a value to determine whether or not the user can select more than column or row")
    Q_CLASSINFO("UseBackColorAlt", "Sets/gets a boolean value to determine if the alternate backcolor is used")
    Q_CLASSINFO("BackColor", "Returns or sets the background color of grid")
    Q_CLASSINFO("BackColorAlt", "Returns or sets the alternate background color of grid to be used for every other row")
    Q_CLASSINFO("BackColorFixed", "Returns or sets the color of the background behind the grid")
    Q_CLASSINFO("ForeColor", "Returns/sets the forecolor of the grid")
    Q_CLASSINFO("ForeColorFixed", "Returns/sets the forecolor of the grid")
    Q_CLASSINFO("FixedStyle", "Returns/sets a value to determine the style of the column and row headers")
    Q_CLASSINFO("SelectionMode", "")
    Q_CLASSINFO("Font", "Returns/set the grid font")
    Q_CLASSINFO("FontEdit", "Returns/sets the font of the cell editor")
    Q_CLASSINFO("FontFixed", "Returns/sets the font for the column headers")
    Q_CLASSINFO("BackColorBkg", "Returns or sets the color of the background behind the grid")
    Q_CLASSINFO("AllowUserResizing", "Returns or sets a value to determine whether the user can resize the columns")
    Q_CLASSINFO("FormatString", "Sets a format string that sets up a the control's column widths, alignments, and fixed row and column text")
    Q_CLASSINFO("AutoNewRow", "Returns or sets  the AutoNewRow property for an object")
    Q_CLASSINFO("UseItemData", "Returns or sets a value to determine if the ItemData is returned from a listbox instead if the item")
    Q_CLASSINFO("ListBoxRows", "Returns or sets the default number of items to display in the dropdown listbox when a column has a dropdown")
    Q_CLASSINFO("ColAllowEdit", "This property will allow the user to determine which columns allow editing")
    Q_CLASSINFO("SelectText", "Determines if text is selected upon editing of a cell")
    Q_CLASSINFO("ColMask", "Returns or sets a value for a column to determine what type of edit mask to use")
    Q_CLASSINFO("ColEditWidth", "Sets/gets maximum number of characters that the specified column will allow to be entered")
    Q_CLASSINFO("Picture", "Returns a picture of your grid. This picture is suitable for printing, saving to disk, copying to the clipboard, or assigning to a different control.")
    Q_CLASSINFO("Enabled", "")
    Q_CLASSINFO("Refresh", "Refresh the grid")
    Q_CLASSINFO("MouseDown", "Occurs when a mouse button  is pressed down")
    Q_CLASSINFO("DblClick", "Occurs when the grid if double clicked")
    Q_CLASSINFO("MouseUp", "Occurs when the mouse button is let up")
    Q_CLASSINFO("MouseMove", "Occurs when the mouse cursor moves over the grid")
    Q_CLASSINFO("KeyDown", "Occurs when a key is pressed")
    Q_CLASSINFO("BlockSelected", "Gets a value used to determine if a block of cells has been selected")
    Q_CLASSINFO("AutoSetup", "Setup grid according to predetermined arguments")
    Q_CLASSINFO("RowEmpty", "Used to determine if a row is empty, meaning it contains no text in any of the columns for that row")
    Q_CLASSINFO("AddButton", "Creates a button for the specified column")
    Q_CLASSINFO("RemoveButton", "Removes a button from a specified column")
    Q_CLASSINFO("ColHasButton", "Returns a boolean value to determine if the specified column has a button")
    Q_CLASSINFO("AddLookup", "Add a lookup list item for a specific column in a grid")
    Q_CLASSINFO("LookupItemData", "Returns itemdata from LookupValue list")
    Q_CLASSINFO("RemoveLookupValue", "Remove a specific lookup list item for a column")
    Q_CLASSINFO("RemoveLookup", "Clear all lookup list items for a specific column in a grid")
    Q_CLASSINFO("ColHasLookup", "This method is used to determine whether or not a column has lookup list items")
    Q_CLASSINFO("AddItem", "Adds a new row to the grid")
    Q_CLASSINFO("RemoveItem", "Remove the specified row from the grid")
    Q_CLASSINFO("Clear", "Removes all rows from grid")
    Q_CLASSINFO("ShowAboutBox", "Show the about box")

public:
    explicit Tabula(QWidget* parent = nullptr);
    // A control loaded from the settings a host saved.
    explicit Tabula(const PropertyBag& saved, QWidget* parent = nullptr);
    ~Tabula() override;

    // Saves the settings into the host's store.
    void WriteProperties(PropertyBag& store) const;
    // Whether the host runs its form (user mode) or designs it; lookup values
    // are saved only at design time.
    bool UserMode() const;
    void setUserMode(bool value);

    TabulaEvents* events() const { return events_; }

    // Rows, columns and cells
    int32_t Rows() const;
    void setRows(int32_t value);
    int32_t Cols() const;
    void setCols(int32_t value);
    int32_t Row() const;
    void setRow(int32_t value);
    int32_t Col() const;
    void setCol(int32_t value);
    QString Text() const;
    void setText(const QString& value);
    Q_INVOKABLE QString TextMatrix(int32_t Row, int32_t Col) const;
    Q_INVOKABLE void setTextMatrix(int32_t Row, int32_t Col, const QString& value);
    Q_INVOKABLE QString CellTag(int32_t Row, int32_t Col) const;
    Q_INVOKABLE void setCellTag(int32_t Row, int32_t Col, const QString& value);
    bool AutoRedraw() const;
    void setAutoRedraw(bool value);
    Q_INVOKABLE int32_t RowHeight(int32_t Row) const;
    Q_INVOKABLE void setRowHeight(int32_t Row, int32_t value);
    Q_INVOKABLE QVariant RowBookmark(int32_t Row) const;
    Q_INVOKABLE void setRowBookmark(int32_t Row, const QVariant& value);
    Q_INVOKABLE int32_t ColWidth(int32_t Col) const;
    Q_INVOKABLE void setColWidth(int32_t Col, int32_t value);
    Q_INVOKABLE int32_t ColAlign(int32_t Col);
    Q_INVOKABLE void setColAlign(int32_t Col, int32_t value);
    Q_INVOKABLE int16_t ColMask(int32_t Col) const;
    Q_INVOKABLE void setColMask(int32_t Col, int32_t value);
    int16_t MouseRow() const;
    int16_t MouseCol() const;
    Q_INVOKABLE QVariant RowEmpty(int32_t Row) const;

    // Editing
    Q_INVOKABLE bool ColAllowEdit(int32_t Col) const;
    Q_INVOKABLE void setColAllowEdit(int32_t Col, bool value);
    Q_INVOKABLE int16_t ColEditWidth(int32_t Col) const;
    Q_INVOKABLE void setColEditWidth(int32_t Col, int16_t value);
    bool SelectText() const;
    void setSelectText(bool value);
    bool AutoNewRow() const;
    void setAutoNewRow(bool value);

    // Lookup lists
    Q_INVOKABLE void AddLookup(int32_t Col, const QString& Value, const QVariant& ItemData = QVariant());
    Q_INVOKABLE QVariant LookupItemData(int32_t Col, const QString& Value) const;
    Q_INVOKABLE void RemoveLookupValue(int32_t Col, const QString& Value);
    Q_INVOKABLE void RemoveLookup(int32_t Col);
    Q_INVOKABLE bool ColHasLookup(int32_t Col) const;
    bool UseItemData() const;
    void setUseItemData(bool value);
    int16_t ListBoxRows() const;
    void setListBoxRows(int16_t value);

    // Column buttons
    Q_INVOKABLE void AddButton(int32_t Col);
    Q_INVOKABLE void RemoveButton(int32_t Col);
    Q_INVOKABLE bool ColHasButton(int32_t Col) const;

    // Rows added and removed by the host
    Q_INVOKABLE void AddItem(const QString& RowData, const QVariant& BackColor = QVariant(),
                 const QVariant& ForeColor = QVariant());
    Q_INVOKABLE void RemoveItem(int32_t Row);
    Q_INVOKABLE void Clear();

    bool Enabled() const;
    void setEnabled(bool value);

    // The drawing surface as drawn.
    QImage Picture() const;
    Q_INVOKABLE void ShowAboutBox();

    // Painting and appearance
    Q_INVOKABLE void Refresh();
    bool ColHeader() const;
    void setColHeader(bool value);
    bool RowHeader() const;
    void setRowHeader(bool value);
    bool ShowGrid() const;
    void setShowGrid(bool value);
    bool GridSolid() const;
    void setGridSolid(bool value);
    OleColor GridLineColor() const;
    void setGridLineColor(OleColor value);
    BorderStyles BorderStyle() const;
    void setBorderStyle(BorderStyles value);
    int16_t MousePointer() const;
    void setMousePointer(int16_t value);
    bool UseBackColorAlt() const;
    void setUseBackColorAlt(bool value);
    OleColor BackColor() const;
    void setBackColor(OleColor value);
    OleColor BackColorAlt() const;
    void setBackColorAlt(OleColor value);
    OleColor BackColorFixed() const;
    void setBackColorFixed(OleColor value);
    OleColor ForeColor() const;
    void setForeColor(OleColor value);
    OleColor ForeColorFixed() const;
    void setForeColorFixed(OleColor value);
    FixedStyles FixedStyle() const;
    void setFixedStyle(FixedStyles value);
    FontRef Font() const;
    void setFont(FontRef value);
    FontRef FontEdit() const;
    void setFontEdit(FontRef value);
    FontRef FontFixed() const;
    void setFontFixed(FontRef value);
    // The same from a QFont, as forms compiled by uic call them: each gives the
    // grid a new font object. QWidget::setFont on the grid sets Font as well.
    void setFont(const QFont& value);
    void setFontEdit(const QFont& value);
    void setFontFixed(const QFont& value);
    OleColor BackColorBkg() const;
    void setBackColorBkg(OleColor value);

    // Headers
    QString FormatString() const;
    void setFormatString(const QString& value);
    Q_INVOKABLE void AutoSetup(const QVariant& NRows, const QVariant& NCols, bool vRowHeader,
                               bool vColHeader, const QVariant& vFormatString);

    // Scrolling, selection and input
    int32_t TopRow() const;
    void setTopRow(int32_t value);
    int32_t LeftCol() const;
    void setLeftCol(int32_t value);
    int32_t Row1() const;
    void setRow1(int32_t value);
    int32_t Col1() const;
    void setCol1(int32_t value);
    int32_t Row2() const;
    void setRow2(int32_t value);
    int32_t Col2() const;
    void setCol2(int32_t value);
    Q_INVOKABLE bool BlockSelected() const;
    SelectModes SelectionMode() const;
    void setSelectionMode(SelectModes value);
    bool AllowSelection() const;
    void setAllowSelection(bool value);
    bool AllowUserResizing() const;
    void setAllowUserResizing(bool value);
    Q_INVOKABLE void MouseDown(int16_t Button, int16_t Shift, float x, float Y);
    Q_INVOKABLE void DblClick();
    Q_INVOKABLE void MouseUp(int16_t Button, int16_t Shift, float x, float Y);
    Q_INVOKABLE void MouseMove(int16_t Button, int16_t Shift, float x, float Y);
    Q_INVOKABLE void KeyDown(int16_t KeyCode, int16_t Shift);

    // Settings files, clipboard and accessibility
    Q_PROPERTY(bool clipboardShortcuts READ clipboardShortcuts WRITE setClipboardShortcuts)
    // Saves into a temporary store, such as a SettingsPropertyBag made on the spot.
    void WriteProperties(PropertyBag&& store) const { WriteProperties(store); }

public slots:
    // Puts the selected block, or the current cell, on the clipboard as
    // tab-separated text and as an HTML table.
    void copySelection() const;
    // Pastes tab-separated text from the clipboard into the grid from the
    // current cell, each value stored as a committed edit would be
    // (ColAllowEdit, BeforeEdit, the column's mask and edit width, Validate,
    // AfterEdit). Returns the number of cells that lay beyond the grid and
    // were not pasted; pasteClipped reports them too.
    int32_t paste();

public:
    // Whether Ctrl+C and Ctrl+V on the surface copy and paste; off by
    // default, since those keys otherwise reach KeyPress and open the editor.
    bool clipboardShortcuts() const;
    void setClipboardShortcuts(bool enabled);
    // A data cell's rectangle in the control's pixels; empty when it is not
    // scrolled into view.
    QRect cellRect(int32_t Row, int32_t Col) const;

    // Qt item models: the grid's cells as a model, or a host's model shown.
    // Model row r, column c is the grid's cell (r + 1, c + 1); the header row
    // and column are the model's header data.
    // Unbound, a live table model of the grid's own cells; bound, the host's.
    QAbstractItemModel* model() const;
    // Shows and edits model instead of the own cells, reading only the cells
    // drawn or asked for; nullptr shows the own cells again as they were.
    // Edits go through setData; a refused one keeps the old text.
    void setModel(QAbstractItemModel* model);

    // Sheet editing: undo, keys, sorting
    // Each change the user makes through the grid (an edit, a check-mark
    // toggle, a pick from a list, a paste, a clear, a cut, a row AutoNewRow
    // adds) is one command; undoing it restores the texts and raises
    // AfterEdit for each cell. Changes made in code are not recorded.
    QUndoStack* undoStack() const;
    // F2, Delete, Enter, Tab, Ctrl+Home/End and the clipboard and undo keys
    // as in a spreadsheet; off by default, the keys then keep their meaning.
    bool spreadsheetKeys() const;
    void setSpreadsheetKeys(bool value);
    // Orders the data rows by col: stable, numbers and dates by value, other
    // texts in the user's locale, empty cells last. Each row keeps its cells'
    // texts, colours and tags and its bookmark; the current cell and the
    // selection follow their rows; the column's header shows an arrow.
    void sort(int32_t col, Qt::SortOrder order = Qt::AscendingOrder);
    // Whether a click on a column header sorts by it, a second click on the
    // same column descending; off by default.
    bool sortOnHeaderClick() const;
    void setSortOnHeaderClick(bool value);

    // Files and paper: CSV, printing, the desktop's colours, a saved layout.
    // Replaces the grid's rows, columns and texts with the file's; a
    // malformed file changes nothing. Cancelled (cancelCsv) it returns with
    // the grid unchanged.
    void loadCsv(QIODevice& device, const CsvOptions& options = {});
    void saveCsv(QIODevice& device, const CsvOptions& options = {}) const;
    // Prints every row and column, the headers repeated on each page.
    void print(QPagedPaintDevice* device) const;
    // Whether system colours (0x80000000 + index) come from the palette.
    bool followPalette() const;
    void setFollowPalette(bool on);
    // Column widths, row heights and column alignments; restoring a layout
    // from a grid with other counts keeps what fits and returns false.
    QByteArray saveLayout() const;
    bool restoreLayout(const QByteArray& layout);

public slots:
    // Copies the selected block, or the current cell, then clears it as the
    // Delete key does, as one undo command.
    void cut();
    // Stops a loadCsv under way; the grid stays as it was.
    void cancelCsv();

signals:
    // While loadCsv reads: bytes read so far of total (0 when unknown).
    void csvProgress(qint64 done, qint64 total);
    // A saved property changed; the host marks its form as modified.
    void propertyChanged(const QString& name);
    // A failure inside a notification from a child control, which has no
    // caller to report to. It is also logged under "tabula.errors".
    void errorOccurred(const TabulaControl::ComponentError& error);
    // A paste left droppedCells cells of the clipboard text out: they lay
    // beyond the last row or column.
    void pasteClipped(int32_t droppedCells);
    // A setting the grid saves may have changed.
    void settingsChanged();

    // The grid's events, the same as those of events(). An event whose name
    // and arguments are those of a method takes the suffix Event.
    void Click();
    void BtnClick(int32_t Row, int32_t Col);
    void DblClickEvent();
    void KeyDownEvent(int16_t KeyCode, int16_t Shift);
    void KeyPress(int16_t KeyAscii);
    void KeyUp(int16_t KeyCode, int16_t Shift);
    void MouseDownEvent(int16_t Button, int16_t Shift, float x, float Y);
    void MouseMoveEvent(int16_t Button, int16_t Shift, float x, float Y);
    void MouseUpEvent(int16_t Button, int16_t Shift, float x, float Y);
    void Scroll();
    void BeforeEdit(int32_t Row, int32_t Col, bool& Cancel);
    void AfterEdit(int32_t Row, int32_t Col, QString NewValue);
    void BeforeAddRow(bool& Cancel);
    void AfterAddRow(int32_t Row);
    void BeforeDeleteRow(int32_t Row, bool& Cancel);
    void AfterDeleteRow(int32_t Row);
    void Resize();
    void RowColChange(int32_t LastRow, int32_t LastCol);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // Runs a member's body under the error trap: any failure reaches the
    // caller as the component error of that member.
    template <class F>
    auto call(const char* member, F&& body,
              std::source_location where = std::source_location::current()) const;
    // The same for a member that ends in a full repaint: its pixels are made
    // when the surface is next shown or read, once for any number of such
    // members in a row.
    template <class F>
    void repaintingCall(const char* member, F&& body,
                        std::source_location where = std::source_location::current()) const;
    // Runs a child control's notification; a failure has no caller there and
    // is reported through errorOccurred instead.
    void notify(const char* procedure, const std::function<void()>& body);
    // Runs a member that changes saved settings under the error trap, then
    // reports the change.
    template <class F>
    void change(const char* member, F&& body, std::source_location where = std::source_location::current());
    // The same for a member that ends in a full repaint.
    template <class F>
    void repaintingChange(const char* member, F&& body,
                          std::source_location where = std::source_location::current());
    // The same for a setting the property page edits: propertyChanged names it.
    template <class F>
    void changeProperty(const char* member, F&& body, std::source_location where = std::source_location::current());
    QFont fontValue() const;
    QFont fontEditValue() const;
    QFont fontFixedValue() const;
    void applyPalette();
    // A deferred repaint failed when its pixels were made.
    void reportPaintFailure(const std::exception_ptr& cause);
    // Connects the grid, its children and its editor, and starts it empty.
    void wireGrid();
    void wireChildren();
    void wireEditor();
    void wireSheetEditing();

    TabulaEvents* events_;
    std::unique_ptr<detail::Grid> grid_;
    mutable detail::OwnCellsModel* ownCellsModel_ = nullptr;
    // The bound model and the object its connections live on.
    QAbstractItemModel* boundModel_ = nullptr;
    QObject* binding_ = nullptr;
    // The font last set on the grid as a widget, as Font took it.
    StdFont widgetFont_;
    // A load is running; cancelCsv asked it to stop.
    bool csvLoading_ = false;
    bool csvCancelled_ = false;
};

}  // namespace TabulaControl
