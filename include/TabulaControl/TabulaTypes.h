#pragma once

#include <TabulaControl/TabulaGlobal.h>

#include <QFont>
#include <QObject>
#include <QString>
#include <QVariant>

#include <cstdint>
#include <exception>
#include <memory>
#include <string>

namespace TabulaControl {
Q_NAMESPACE_EXPORT(TABULACONTROL_EXPORT)

// A colour value: 0x00BBGGRR, or 0x80000000 + index for a system colour.
using OleColor = uint32_t;

enum BorderStyles : int32_t { NoBorder = 0, Single = 1, ThinRaised = 2, ThinInset = 3 };
enum FixedStyles : int32_t { Flat = 0, ThreeD = 1 };
enum SelectModes : int32_t { SelectionFree = 0, SelectionByRow = 1, SelectionByCol = 2 };
enum EditMasks : int32_t { NoMask = 0, Uppercase = 1, NumericOnly = 2, DateOnly = 3, checkmark = 4 };
Q_ENUM_NS(BorderStyles)
Q_ENUM_NS(FixedStyles)
Q_ENUM_NS(SelectModes)
Q_ENUM_NS(EditMasks)

// The failure every member reports to its caller. It keeps the failure
// inside the member that caused it; as thrown it also carries that cause
// nested, for std::rethrow_if_nested.
class TABULACONTROL_EXPORT ComponentError : public std::exception {
public:
    static constexpr int32_t ErrorNumber = -2147221404;

    ComponentError(QString source, QString description, std::exception_ptr cause = nullptr)
        : Source(std::move(source)), Description(std::move(description)),
          what_(Description.toStdString()), cause_(std::move(cause))
    {
    }
    const char* what() const noexcept override { return what_.c_str(); }
    // The failure inside the member that caused this error, or null.
    std::exception_ptr cause() const { return cause_; }
    // The cause and the failures nested in it, outermost first; empty without a cause.
    QString causeText() const;

    int32_t Number = ErrorNumber;
    QString Source;
    QString Description;

private:
    std::string what_;
    std::exception_ptr cause_;
};

// A font object shared by reference: changes made through it after it was
// assigned to a grid show at the grid's next repaint.
class TABULACONTROL_EXPORT StdFont {
public:
    QString Name;
    float Size = 8.25f;
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    bool Strikethrough = false;

    static std::shared_ptr<StdFont> fromQFont(const QFont& font);
    QFont toQFont() const;
    friend bool operator==(const StdFont&, const StdFont&) = default;
};
using FontRef = std::shared_ptr<StdFont>;

// The host's store of a control's saved settings: named values, each read
// and written with a default. Writing a value equal to its default stores
// nothing; reading a missing name gives the default.
class TABULACONTROL_EXPORT PropertyBag {
public:
    virtual ~PropertyBag() = default;
    virtual QVariant ReadProperty(const QString& name, const QVariant& defaultValue = QVariant()) const = 0;
    virtual void WriteProperty(const QString& name, const QVariant& value,
                               const QVariant& defaultValue = QVariant()) = 0;
};

// A property store in memory.
class TABULACONTROL_EXPORT MemoryPropertyBag : public PropertyBag {
public:
    QVariant ReadProperty(const QString& name, const QVariant& defaultValue = QVariant()) const override;
    void WriteProperty(const QString& name, const QVariant& value,
                       const QVariant& defaultValue = QVariant()) override;
    QVariantMap values;
};

// The events a grid raises. By-reference arguments may be changed by a
// directly connected handler; the grid reads them back afterwards.
class TABULACONTROL_EXPORT TabulaEvents : public QObject {
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

}  // namespace TabulaControl

Q_DECLARE_METATYPE(TabulaControl::StdFont)
