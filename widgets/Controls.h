#pragma once

#include <TabulaControl/Tabula.h>

#include "widgets/ListForm.h"
#include "pixels/Surface.h"

#include <QPointer>

#include <cstdint>
#include <functional>
#include <vector>

class QLineEdit;
class QScrollBar;

namespace TabulaControl::platform {

struct MouseArgs {
    int16_t Button = 0;  // bit 0 left, bit 1 right, bit 2 middle
    int16_t Shift = 0;   // bit 0 Shift, bit 1 Ctrl, bit 2 Alt
    float X = 0;
    float Y = 0;
};

// What the drawing surface reports; set by the grid.
struct SurfaceHandlers {
    std::function<void(const MouseArgs&)> mouseDown, mouseUp, mouseMove;
    std::function<void()> click, dblClick;
    std::function<void(int16_t keyCode, int16_t shift)> keyDown, keyUp;
    std::function<void(int16_t keyAscii)> keyPress;
};

// A child control placed on its parent in pixels.
class Child {
public:
    explicit Child(QWidget* widget) : widget_(widget) {}

    int32_t Left() const;
    int32_t Top() const;
    int32_t Width() const;
    int32_t Height() const;
    void Move(int32_t left, int32_t top, int32_t width, int32_t height);
    void setLeft(int32_t left);
    void setTop(int32_t top);
    bool Visible() const;
    void setVisible(bool visible);
    // Appends whether it shows and where, for a layout's key.
    void appendPlacement(std::vector<int64_t>& key) const;
    void SetFocus();
    bool HasFocus() const;
    void ZOrderFront();
    void ZOrderBack();
    QWidget* widget() const { return widget_; }

protected:
    // Runs act on the widget unless something deleted it.
    template <class F>
    void ifAlive(F act) const
    {
        if (widget_)
            act(*widget_);
    }

private:
    QPointer<QWidget> widget_;
};

class ScrollBar : public Child {
public:
    explicit ScrollBar(QWidget* bar);

    int32_t Value() const;
    // Changing the value raises the change notification before returning;
    // values outside 1..Max are brought inside.
    void setValue(int32_t value);
    int32_t Max() const { return max_; }
    // A new range raises the change notification only when it moves the
    // value, as the view follows its bar.
    void setMax(int32_t max);
    void setLargeChange(int16_t pageStep);

    std::function<void()> onChange;
    std::function<void()> onFocus;

private:
    QScrollBar* bar() const;
    int32_t max_ = 1;
};

class Editor : public Child {
public:
    explicit Editor(QWidget* edit);

    QString Text() const;
    void setText(const QString& text);
    // Limits what the user types; text set or already longer is never cut.
    void setMaxLength(int32_t length);  // 0: no limit
    int32_t MaxLength() const;
    void setSelection(int32_t start, int32_t length);
    void setFont(const StdFont& font);
    void setColors(OleColor back, OleColor fore);
    // Delivers a character as if typed, through the key-press filter.
    void typeKey(int16_t keyAscii);

    std::function<void(int16_t keyCode, int16_t shift)> onKeyDown;
    // May change the character; 0 swallows the key.
    std::function<void(int16_t& keyAscii)> onKeyPress;
    // Delivered after the event that moved the focus away has been handled.
    std::function<void()> onLostFocus;

private:
    QLineEdit* edit() const;
    // Lets the line edit hold at least its current text.
    void applyMaxLength(qsizetype textLength);

    int32_t maxLength_ = 0;
};

class Button : public Child {
public:
    explicit Button(QWidget* button);
    std::function<void()> onClick;
};

// The drawing surface: shows the persistent image and reports input.
class SurfaceChild : public Child {
public:
    SurfaceChild(QWidget* view, Surface& surface) : Child(view), surface_(surface) {}

    int32_t ScaleWidth() const { return surface_.width(); }
    int32_t ScaleHeight() const { return surface_.height(); }
    // Shows on screen what was drawn on the image.
    void Refresh();
    // Queues a press and release of Up (38) or Down (40) for the surface,
    // handled after the current notification returns; other codes queue nothing.
    void postKey(int16_t keyCode);
    // Reports the last mouse move once more, after the current notification
    // returns, as if the pointer had been set to where it already is (which
    // Qt itself does not report).
    void repeatMouseMove();
    QString ToolTipText() const;
    void setToolTipText(const QString& text);

private:
    Surface& surface_;
};

// The control's own window, around the children.
class Window {
public:
    explicit Window(QWidget* control) : control_(control) {}

    int32_t ScaleWidth() const;
    int32_t ScaleHeight() const;
    int16_t MousePointer() const { return mousePointer_; }
    void setMousePointer(int16_t shape);
    void setBackColor(OleColor colour);
    OleColor BackColor() const { return backColor_; }
    // Repaints the control's own surface with its border style.
    void setBorder(int16_t style);
    QString ToolTipText() const;
    FontRef AmbientFont() const;
    // Width in pixels of s in the control's own font, at 96 DPI.
    double TextWidth(const QString& s) const;
    bool UserMode() const { return userMode_; }
    void setUserMode(bool value) { userMode_ = value; }
    // Paints the control's own surface; called from its paint notification.
    void paint(const QRegion& region) const;

private:
    // The control's face, drawn again only when what it shows changed.
    const QImage& face() const;

    struct FaceKey {
        int width = -1, height = -1;
        qreal ratio = 0;
        OleColor backColor = 0;
        int16_t border = -1;
        friend bool operator==(const FaceKey&, const FaceKey&) = default;
    };
    mutable FaceKey faceKey_;
    mutable QImage face_;
    QWidget* control_;
    int16_t mousePointer_ = 0;
    OleColor backColor_ = 0xC0C0C0;
    int16_t border_ = 1;
    bool userMode_ = true;
};

// The child controls of one grid, by their names.
class Controls {
public:
    explicit Controls(QWidget* control);
    ~Controls();

    Surface surface;
    SurfaceHandlers handlers;
    Window window;
    SurfaceChild picGrid;
    Editor txtEdit;
    ScrollBar scrHorizontal;
    ScrollBar scrVertical;
    Button cmdButton;
    Button cmdLookup;
    Child picSizer;
    ListForm listForm;
};

}  // namespace TabulaControl::platform
