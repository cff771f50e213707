#include <TabulaControl/SettingsPropertyBag.h>

#include <QColor>
#include <QStringList>

#include <array>

namespace TabulaControl {

namespace {

constexpr OleColor SystemColourFlag = 0x80000000;

// The system colours by index.
constexpr std::array<const char*, 25> SystemColourNames = {
    "ScrollBar",       "Desktop",        "ActiveCaption",       "InactiveCaption", "Menu",
    "Window",          "WindowFrame",    "MenuText",            "WindowText",      "CaptionText",
    "ActiveBorder",    "InactiveBorder", "AppWorkspace",        "Highlight",       "HighlightText",
    "ButtonFace",      "ButtonShadow",   "GrayText",            "ButtonText",      "InactiveCaptionText",
    "ButtonHighlight", "DarkShadow3D",   "Light3D",             "InfoText",        "InfoBackground",
};

bool isColour(const QVariant& value) { return value.typeId() == QMetaType::UInt; }
bool isFont(const QVariant& value) { return value.typeId() == qMetaTypeId<StdFont>(); }

// An INI value holding unquoted commas reads back as a list.
QString textOf(const QVariant& stored)
{
    if (stored.typeId() == QMetaType::QStringList)
        return stored.toStringList().join(QLatin1Char(','));
    return stored.toString();
}

bool isTextual(const QVariant& stored)
{
    return stored.typeId() == QMetaType::QString || stored.typeId() == QMetaType::QStringList;
}

}  // namespace

SettingsPropertyBag::SettingsPropertyBag(QSettings& settings, QString group)
    : settings_(settings), group_(std::move(group))
{
}

QString SettingsPropertyBag::key(const QString& name) const
{
    return group_.isEmpty() ? name : group_ + QLatin1Char('/') + name;
}

QVariant SettingsPropertyBag::ReadProperty(const QString& name, const QVariant& defaultValue) const
{
    const QVariant stored = settings_.value(key(name));
    if (!stored.isValid())
        return defaultValue;
    // A colour or font kept as text that does not read back stays text.
    QVariant read;
    if (isTextual(stored) && isColour(defaultValue))
        read = colourFromText(textOf(stored));
    else if (isTextual(stored) && isFont(defaultValue))
        read = fontFromText(textOf(stored));
    return read.isValid() ? read : stored;
}

void SettingsPropertyBag::WriteProperty(const QString& name, const QVariant& value, const QVariant& defaultValue)
{
    if (defaultValue.isValid() && value == defaultValue) {
        settings_.remove(key(name));
        return;
    }
    if (isColour(value))
        settings_.setValue(key(name), colourText(value.toUInt()));
    else if (isFont(value))
        settings_.setValue(key(name), fontText(value.value<StdFont>()));
    else
        settings_.setValue(key(name), value);
}

QString SettingsPropertyBag::colourText(OleColor colour)
{
    if (colour & SystemColourFlag) {
        const OleColor index = colour & ~SystemColourFlag;
        if (index < SystemColourNames.size())
            return QLatin1String(SystemColourNames[index]);
        return QString::number(colour);
    }
    const QColor rgb(static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
                     static_cast<int>((colour >> 16) & 0xFF));
    return rgb.name().toUpper();
}

QVariant SettingsPropertyBag::colourFromText(const QString& text)
{
    const QString trimmed = text.trimmed();
    for (size_t i = 0; i < SystemColourNames.size(); ++i) {
        if (trimmed.compare(QLatin1String(SystemColourNames[i]), Qt::CaseInsensitive) == 0)
            return QVariant::fromValue(OleColor(SystemColourFlag | i));
    }
    if (!trimmed.startsWith(QLatin1Char('#')) || trimmed.size() != 7)
        return {};
    const QColor rgb = QColor::fromString(trimmed);
    if (!rgb.isValid())
        return {};
    return QVariant::fromValue(OleColor(rgb.red() | (rgb.green() << 8) | (rgb.blue() << 16)));
}

namespace {

struct FontStyle {
    const char* word;
    bool StdFont::*flag;
};

constexpr std::array<FontStyle, 4> FontStyles = {{
    {"Bold", &StdFont::Bold},
    {"Italic", &StdFont::Italic},
    {"Underline", &StdFont::Underline},
    {"Strikeout", &StdFont::Strikethrough},
}};

// Sets the style word's flag; false when the word names no style.
bool applyStyle(StdFont& font, const QString& word)
{
    for (const FontStyle& style : FontStyles) {
        if (word.compare(QLatin1String(style.word), Qt::CaseInsensitive) == 0) {
            font.*style.flag = true;
            return true;
        }
    }
    return false;
}

}  // namespace

QString SettingsPropertyBag::fontText(const StdFont& font)
{
    QStringList parts{font.Name, QString::number(font.Size)};
    for (const FontStyle& style : FontStyles) {
        if (font.*style.flag)
            parts << QLatin1String(style.word);
    }
    return parts.join(QLatin1Char(','));
}

// The name may hold commas itself, so the styles and the size are taken
// from the end.
QVariant SettingsPropertyBag::fontFromText(const QString& text)
{
    QStringList parts = text.split(QLatin1Char(','));
    StdFont font;
    while (parts.size() > 2 && applyStyle(font, parts.last().trimmed()))
        parts.removeLast();
    if (parts.size() < 2)
        return {};
    bool ok = false;
    font.Size = parts.takeLast().trimmed().toFloat(&ok);
    if (!ok || font.Size <= 0)
        return {};
    font.Name = parts.join(QLatin1Char(',')).trimmed();
    return QVariant::fromValue(font);
}

}  // namespace TabulaControl
