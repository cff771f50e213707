#pragma once

#include <QImage>
#include <QObject>
#include <QRect>
#include <QString>
#include <QVariant>
#include <QWidget>

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <source_location>
#include <string>

namespace TabulaControl {

namespace detail {
class Grid;
}

// A colour value: 0x00BBGGRR, or 0x80000000 + index for a system colour.
using OleColor = uint32_t;

enum BorderStyles : int32_t { NoBorder = 0, Single = 1, ThinRaised = 2, ThinInset = 3 };
enum FixedStyles : int32_t { Flat = 0, ThreeD = 1 };
enum SelectModes : int32_t { SelectionFree = 0, SelectionByRow = 1, SelectionByCol = 2 };
enum EditMasks : int32_t { NoMask = 0, Uppercase = 1, NumericOnly = 2, DateOnly = 3, checkmark = 4 };

// The failure every member reports to its caller.
class ComponentError : public std::exception {
public:
    static constexpr int32_t ErrorNumber = -2147221404;

    ComponentError(QString source, QString description)
        : Source(std::move(source)), Description(std::move(description)),
          what_(Description.toStdString())
    {
    }
    const char* what() const noexcept override { return what_.c_str(); }

    int32_t Number = ErrorNumber;
    QString Source;
    QString Description;

private:
    std::string what_;
};

// A font object shared by reference: changes made through it after it was
// assigned to a grid show at the grid's next repaint.
class StdFont {
public:
    QString Name;
    float Size = 8.25f;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool Strikethrough = false;

    static std::shared_ptr<StdFont> fromQFont(const QFont& font);
    friend bool operator==(const StdFont&, const StdFont&) = default;
};
using FontRef = std::shared_ptr<StdFont>;

// The host's store of a control's saved settings: named values, each read
// and written with a default. Writing a value equal to its default stores
// nothing; reading a missing name gives the default.
class PropertyBag {
public:
    virtual ~PropertyBag() = default;
    virtual QVariant ReadProperty(const QString& name, const QVariant& defaultValue = QVariant()) const = 0;
    virtual void WriteProperty(const QString& name, const QVariant& value,
                               const QVariant& defaultValue = QVariant()) = 0;
};

// A property store in memory.
class MemoryPropertyBag : public PropertyBag {
public:
    QVariant ReadProperty(const QString& name, const QVariant& defaultValue = QVariant()) const override;
    void WriteProperty(const QString& name, const QVariant& value,
                       const QVariant& defaultValue = QVariant()) override;
    QVariantMap values;
};

// The events a grid raises. By-reference arguments may be changed by a
// directly connected handler; the grid reads them back afterwards.
class TabulaEvents : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

signals:
    void Click();
    void BtnClick(int32_t Row, int32_t Col);
    void DblClick();
    void KeyDown(int16_t KeyCode, int16_t Shift);
    void KeyPress(int16_t KeyAscii);
    void KeyUp(int16_t KeyCode, int16_t Shift);
    void MouseDown(int16_t Button, int16_t Shift, float x, float Y);
    void MouseMove(int16_t Button, int16_t Shift, float x, float Y);
    void MouseUp(int16_t Button, int16_t Shift, float x, float Y);
    void Scroll();
    void BeforeEdit(int32_t Row, int32_t Col, bool& Cancel);
    void AfterEdit(int32_t Row, int32_t Col, QString NewValue);
    void BeforeAddRow(bool& Cancel);
    void AfterAddRow(int32_t Row);
    void BeforeDeleteRow(int32_t Row, bool& Cancel);
    void AfterDeleteRow(int32_t Row);
    void Resize();
    void RowColChange(int32_t LastRow, int32_t LastCol);
};

class Tabula : public QWidget {
    Q_OBJECT
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
    QString TextMatrix(int32_t Row, int32_t Col) const;
    void setTextMatrix(int32_t Row, int32_t Col, const QString& value);
    QString CellTag(int32_t Row, int32_t Col) const;
    void setCellTag(int32_t Row, int32_t Col, const QString& value);
    bool AutoRedraw() const;
    void setAutoRedraw(bool value);
    int32_t RowHeight(int32_t Row) const;
    void setRowHeight(int32_t Row, int32_t value);
    QVariant RowBookmark(int32_t Row) const;
    void setRowBookmark(int32_t Row, const QVariant& value);
    int32_t ColWidth(int32_t Col) const;
    void setColWidth(int32_t Col, int32_t value);
    int32_t ColAlign(int32_t Col);
    void setColAlign(int32_t Col, int32_t value);
    int16_t ColMask(int32_t Col) const;
    void setColMask(int32_t Col, int32_t value);
    int16_t MouseRow() const;
    int16_t MouseCol() const;
    QVariant RowEmpty(int32_t Row) const;

    // Editing
    bool ColAllowEdit(int32_t Col) const;
    void setColAllowEdit(int32_t Col, bool value);
    int16_t ColEditWidth(int32_t Col) const;
    void setColEditWidth(int32_t Col, int16_t value);
    bool SelectText() const;
    void setSelectText(bool value);
    bool AutoNewRow() const;
    void setAutoNewRow(bool value);

    // Lookup lists
    void AddLookup(int32_t Col, const QString& Value, const QVariant& ItemData = QVariant());
    QVariant LookupItemData(int32_t Col, const QString& Value) const;
    void RemoveLookupValue(int32_t Col, const QString& Value);
    void RemoveLookup(int32_t Col);
    bool ColHasLookup(int32_t Col) const;
    bool UseItemData() const;
    void setUseItemData(bool value);
    int16_t ListBoxRows() const;
    void setListBoxRows(int16_t value);

    // Column buttons
    void AddButton(int32_t Col);
    void RemoveButton(int32_t Col);
    bool ColHasButton(int32_t Col) const;

    // Rows added and removed by the host
    void AddItem(const QString& RowData, const QVariant& BackColor = QVariant(),
                 const QVariant& ForeColor = QVariant());
    void RemoveItem(int32_t Row);
    void Clear();

    bool Enabled() const;
    void setEnabled(bool value);

    // The drawing surface as drawn.
    QImage Picture() const;
    void ShowAboutBox();

    // Painting and appearance
    void Refresh();
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
    OleColor BackColorBkg() const;
    void setBackColorBkg(OleColor value);

    // Headers
    QString FormatString() const;
    void setFormatString(const QString& value);
    void AutoSetup(const QVariant& NRows, const QVariant& NCols, bool vRowHeader, bool vColHeader,
                   const QVariant& vFormatString);

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
    bool BlockSelected() const;
    SelectModes SelectionMode() const;
    void setSelectionMode(SelectModes value);
    bool AllowSelection() const;
    void setAllowSelection(bool value);
    bool AllowUserResizing() const;
    void setAllowUserResizing(bool value);
    void MouseDown(int16_t Button, int16_t Shift, float x, float Y);
    void DblClick();
    void MouseUp(int16_t Button, int16_t Shift, float x, float Y);
    void MouseMove(int16_t Button, int16_t Shift, float x, float Y);
    void KeyDown(int16_t KeyCode, int16_t Shift);

    // Settings files, clipboard and accessibility
    Q_PROPERTY(bool clipboardShortcuts READ clipboardShortcuts WRITE setClipboardShortcuts)
    // Saves into a temporary store, such as a SettingsPropertyBag made on the spot.
    void WriteProperties(PropertyBag&& store) const { WriteProperties(store); }
    // Puts the selected block, or the current cell, on the clipboard as
    // tab-separated text and as an HTML table.
    void copySelection() const;
    // Pastes tab-separated text from the clipboard into the grid from the
    // current cell, each value stored as a committed edit would be
    // (ColAllowEdit, BeforeEdit, the column's mask and edit width, Validate,
    // AfterEdit). Returns the number of cells that lay beyond the grid and
    // were not pasted; pasteClipped reports them too.
    int32_t paste();
    // Whether Ctrl+C and Ctrl+V on the surface copy and paste; off by
    // default, since those keys otherwise reach KeyPress and open the editor.
    bool clipboardShortcuts() const;
    void setClipboardShortcuts(bool enabled);
    // A data cell's rectangle in the control's pixels; empty when it is not
    // scrolled into view.
    QRect cellRect(int32_t Row, int32_t Col) const;

signals:
    // A saved property changed; the host marks its form as modified.
    void propertyChanged(const QString& name);
    // A failure inside a notification from a child control, which has no
    // caller to report to.
    void errorOccurred(const TabulaControl::ComponentError& error);
    // A paste left droppedCells cells of the clipboard text out: they lay
    // beyond the last row or column.
    void pasteClipped(int32_t droppedCells);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    // Runs a member's body under the error trap: any failure reaches the
    // caller as the component error of that member.
    template <class F>
    auto call(const char* member, F&& body,
              std::source_location where = std::source_location::current()) const;
    // Runs a child control's notification; a failure has no caller there and
    // is reported through errorOccurred instead.
    void notify(const char* procedure, const std::function<void()>& body);
    void wireChildren();
    void wireEditor();

    TabulaEvents* events_;
    std::unique_ptr<detail::Grid> grid_;
};

namespace detail {
struct GeneralControls;
}

// The design-time page that edits a grid's general settings: it loads them
// from the first selected grid and writes them back when applied.
class General : public QWidget {
    Q_OBJECT
public:
    explicit General(QWidget* parent = nullptr);
    ~General() override;

    void PropertyPage_SelectionChanged(const QList<Tabula*>& selectedControls);
    void PropertyPage_ApplyChanges();
    // Whether an edit was made since the page was loaded or applied.
    bool Changed() const { return changed_; }

signals:
    // The page has edits to apply.
    void changedChanged(bool changed);

private:
    void markChanged();
    void setChanged(bool changed);

    std::unique_ptr<detail::GeneralControls> controls_;
    QList<Tabula*> selected_;
    bool changed_ = false;
};

}  // namespace TabulaControl

Q_DECLARE_METATYPE(TabulaControl::StdFont)
