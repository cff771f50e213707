#include "grid/Grid.h"
#include "pixels/PaletteColours.h"

#include <cmath>

namespace TabulaControl {

QVariant MemoryPropertyBag::ReadProperty(const QString& name, const QVariant& defaultValue) const
{
    return values.value(name, defaultValue);
}

void MemoryPropertyBag::WriteProperty(const QString& name, const QVariant& value, const QVariant& defaultValue)
{
    if (defaultValue.isValid() && value == defaultValue) {
        values.remove(name);
        return;
    }
    values.insert(name, value);
}

}  // namespace TabulaControl

namespace TabulaControl::detail {

namespace {

constexpr OleColor ButtonFace = 0x8000000F;
constexpr OleColor ButtonText = 0x80000012;

double numberOf(const QVariant& value)
{
    bool ok = false;
    const double number = value.typeId() == QMetaType::Bool ? (value.toBool() ? -1.0 : 0.0) : value.toDouble(&ok);
    if (value.typeId() != QMetaType::Bool && !ok)
        raise(RuntimeError::TypeMismatch);
    return number;
}

// Reads saved values by name, converting each as an assignment would.
class Reader {
public:
    explicit Reader(const PropertyBag& bag) : bag_(bag) {}

    int16_t int16(const char* name, QVariant fallback = {}) const
    {
        return to16(roundTo32(numberOf(read(name, std::move(fallback)))));
    }
    OleColor colour(const char* name, OleColor fallback) const
    {
        const double number = numberOf(read(name, fallback));
        if (number < INT32_MIN || number > UINT32_MAX)
            raise(RuntimeError::Overflow);
        return static_cast<OleColor>(static_cast<int64_t>(std::nearbyint(number)));
    }
    bool boolean(const char* name, bool fallback) const
    {
        const QVariant value = read(name, fallback);
        if (value.typeId() == QMetaType::QString) {
            const QString text = value.toString().trimmed().toLower();
            if (text == QLatin1String("true") || text == QLatin1String("false"))
                return text == QLatin1String("true");
        }
        return numberOf(value) != 0;
    }
    QString text(const char* name, QVariant fallback = {}) const
    {
        const QVariant value = read(name, std::move(fallback));
        if (!value.isValid() || !value.canConvert<QString>())
            raise(RuntimeError::TypeMismatch);
        return value.toString();
    }
    FontRef font(const char* name, const FontRef& fallback) const
    {
        const QVariant value = read(name, QVariant::fromValue(*fallback));
        if (!value.canConvert<StdFont>())
            raise(RuntimeError::TypeMismatch);
        return std::make_shared<StdFont>(value.value<StdFont>());
    }

private:
    QVariant read(const char* name, QVariant fallback) const
    {
        return bag_.ReadProperty(QLatin1String(name), std::move(fallback));
    }
    const PropertyBag& bag_;
};

}  // namespace

void Grid::readProperties(const PropertyBag& bag)
{
    // A saved grid that lacks Rows, Cols, GridLineColor or BackColorFixed
    // reads 10 x 10 in button-face colours, not a new grid's defaults:
    // settings saved without them have always loaded that way.
    const Reader in(bag);
    autoRedraw_ = false;
    appearance.setFont(in.font("Font", ui.window.AmbientFont()));
    appearance.setHeaderFont(in.font("FontFixed", ui.window.AmbientFont()));
    setRows(in.int16("Rows", 10));
    setCols(in.int16("Cols", 10));
    setRow(in.int16("Row", 1));
    setCol(in.int16("Col", 1));
    appearance.setShowsGridLines(in.boolean("ShowGrid", true));
    appearance.setGridLinesSolid(in.boolean("GridSolid", true));
    appearance.setGridLineColor(in.colour("GridLineColor", ButtonFace));
    autoRedraw_ = in.boolean("Redraw", true);
    appearance.setBorderStyle(in.int16("BorderStyle", 1));
    ui.window.setMousePointer(in.int16("MousePointer", 0));
    selection.setAllowed(in.boolean("AllowSelection", true));
    SharedBackColor = in.colour("BackColor", 0xFFFFFF);
    appearance.setAlternateRowColor(in.colour("BackColorAlt", 0xFFFFFF));
    appearance.setAlternatesRowColors(in.boolean("UseBackColorAlt", false));
    appearance.setHeaderBackColor(in.colour("BackColorFixed", ButtonFace));
    SharedForeColor = in.colour("ForeColor", ButtonText);
    appearance.setHeaderForeColor(in.colour("ForeColorFixed", ButtonText));
    appearance.setHeaderStyle(in.int16("FixedStyle", 1));
    appearance.setShowsColumnHeader(in.boolean("ColHeader", true));
    appearance.setShowsRowHeader(in.boolean("RowHeader", true));
    selection.setMode(in.int16("SelectionMode", 0));
    appearance.setEditorFont(in.font("FontEdit", ui.window.AmbientFont()));
    appearance.setBackgroundColor(in.colour("BackColorBkg", 0x808080));
    resizeZones.setEnabled(in.boolean("AllowUserResizing", true));
    model.setFormatString(in.text("FormatString", QString()));
    editorState.setAddsRowOnEdit(in.boolean("AutoNewRow", false));
    dropDownSettings.setMinimumRows(in.int16("ListBoxRows", 6));
    dropDownSettings.setPicksItemData(in.boolean("UseItemData", false));
    editorState.setSelectsTextOnOpen(in.boolean("SelectText", false));
    spreadsheetKeys = in.boolean("SpreadsheetKeys", false);
    sortOnHeaderClick = in.boolean("SortOnHeaderClick", false);
    ui.picGrid.setToolTipText(ui.window.ToolTipText());
    const bool followPalette = in.boolean("FollowPalette", false);
    surface.setSystemColours(followPalette ? std::optional(platform::systemColoursFrom(control.palette())) : std::nullopt);
    const int16_t count = in.int16("Count", 0);
    for (int32_t n = 1; n <= count; ++n) {
        const QByteArray column = QByteArray::number(n) + "Column";
        const QByteArray value = QByteArray::number(n) + "Value";
        const int16_t col = in.int16(column.constData());
        AddLookup(col, in.text(value.constData()), QVariant());
    }
    updateHeader();
    Refresh();
}

void Grid::writeProperties(PropertyBag& bag) const
{
    auto write = [&bag](const char* name, const QVariant& value, const QVariant& fallback = {}) {
        bag.WriteProperty(QLatin1String(name), value, fallback);
    };
    auto font = [](const FontRef& f) { return QVariant::fromValue(*f); };
    const FontRef ambient = ui.window.AmbientFont();
    write("Rows", model.rows().count(), 10);
    write("Cols", model.cols().count(), 10);
    write("Row", selection.row(), 1);
    write("Col", selection.col(), 1);
    write("Redraw", autoRedraw_);
    write("ShowGrid", appearance.showsGridLines());
    write("GridSolid", appearance.gridLinesSolid());
    write("GridLineColor", appearance.gridLineColor());
    write("BorderStyle", appearance.borderStyle(), int16_t{1});
    write("MousePointer", ui.window.MousePointer(), int16_t{0});
    write("AllowSelection", selection.allowed(), true);
    write("BackColor", SharedBackColor, OleColor{0xFFFFFF});
    write("BackColorAlt", appearance.alternateRowColor(), OleColor{0xFFFFFF});
    write("UseBackColorAlt", appearance.alternatesRowColors(), false);
    write("BackColorFixed", appearance.headerBackColor(), ButtonFace);
    write("ForeColor", SharedForeColor, ButtonText);
    write("ForeColorFixed", appearance.headerForeColor(), ButtonText);
    write("FixedStyle", appearance.headerStyle(), int16_t{1});
    write("ColHeader", appearance.showsColumnHeader(), true);
    write("RowHeader", appearance.showsRowHeader(), true);
    write("SelectionMode", selection.mode(), int16_t{0});
    write("Font", font(appearance.font()), font(ambient));
    write("FontFixed", font(appearance.headerFont()), font(ambient));
    write("FontEdit", font(appearance.editorFont()), font(ambient));
    write("BackColorBkg", appearance.backgroundColor(), OleColor{0x808080});
    write("AllowUserResizing", resizeZones.enabled(), true);
    write("FormatString", model.formatString(), QString());
    write("AutoNewRow", editorState.addsRowOnEdit(), false);
    write("ListBoxRows", dropDownSettings.minimumRows(), int16_t{6});
    write("UseItemData", dropDownSettings.picksItemData(), false);
    write("SelectText", editorState.selectsTextOnOpen(), false);
    write("SpreadsheetKeys", spreadsheetKeys, false);
    write("SortOnHeaderClick", sortOnHeaderClick, false);
    write("FollowPalette", surface.hasOwnSystemColours(), false);
    if (ui.window.UserMode())
        return;
    const auto saved = lookupLists_.savedValues();
    write("Count", static_cast<int32_t>(saved.size()), 0);
    for (size_t i = 0; i < saved.size(); ++i) {
        const QByteArray n = QByteArray::number(static_cast<qulonglong>(i + 1));
        write((n + "Column").constData(), saved[i].column);
        write((n + "Value").constData(), saved[i].value);
    }
}

}  // namespace TabulaControl::detail
