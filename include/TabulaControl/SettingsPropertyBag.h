#pragma once

#include <TabulaControl/Tabula.h>

#include <QSettings>

namespace TabulaControl {

// A property store in a settings file (QSettings, INI or native format).
// Colours are kept as "#RRGGBB" or the name of a system colour such as
// "ButtonFace", fonts as "Name,Size" followed by any of Bold, Italic,
// Underline, Strikeout; every other value as QSettings keeps it. The values
// live under group, or at the top level when group is empty.
//
//     QSettings settings("grid.ini", QSettings::IniFormat);
//     grid->WriteProperties(SettingsPropertyBag(settings, "grid"));
//     auto* restored = new Tabula(SettingsPropertyBag(settings, "grid"), parent);
class TABULACONTROL_EXPORT SettingsPropertyBag : public PropertyBag {
public:
    explicit SettingsPropertyBag(QSettings& settings, QString group = QString());

    QVariant ReadProperty(const QString& name, const QVariant& defaultValue = QVariant()) const override;
    void WriteProperty(const QString& name, const QVariant& value,
                       const QVariant& defaultValue = QVariant()) override;

    // The text a colour or font is stored as, and back; an unreadable text
    // gives an invalid QVariant.
    static QString colourText(OleColor colour);
    static QVariant colourFromText(const QString& text);
    static QString fontText(const StdFont& font);
    static QVariant fontFromText(const QString& text);

private:
    QString key(const QString& name) const;

    QSettings& settings_;
    QString group_;
};

}  // namespace TabulaControl
