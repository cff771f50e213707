#pragma once

#include <TabulaControl/Tabula.h>

#include <QPointer>
#include <QRect>
#include <QStringList>

#include <cstdint>
#include <functional>

class QListWidget;
class QTimer;
class QWidget;

namespace TabulaControl::platform {

// The borderless pop-up window of the drop-down list, always above its
// grid's window: one list box, List1, and a watchdog timer, Timer1.
class ListForm {
public:
    explicit ListForm(QWidget* control);
    ~ListForm();

    bool Visible() const;
    void Show();
    void Hide();
    // Places the window at a screen rectangle, in pixels.
    void Place(const QRect& screen);

    void Clear();
    void AddItem(const QString& item);
    int32_t ListCount() const;
    QString List(int32_t index) const;
    int32_t ListIndex() const;
    void setListIndex(int32_t index);
    double FontSize() const;
    int32_t ListHeight() const;
    void setListSize(int32_t width, int32_t height);
    void FocusList();

    void setTimer(int32_t intervalMs, bool enabled);
    // Whether, since the list was last shown, another window was activated or
    // a widget outside the list took the focus, or the list had the focus
    // and lost it. A list shown under load receives its focus a little later;
    // until then, with nothing else focused, nothing has left.
    bool focusHasLeft();
    // Whether the window of the grid is the active window.
    bool GridWindowActive() const;
    // Brings the grid's window to the front without keeping it topmost.
    void RaiseGridWindow();

    std::function<void(int16_t keyCode, int16_t shift)> onKeyDown;
    std::function<void(int16_t button, int16_t shift, float x, float y)> onMouseUp;
    std::function<void()> onTimer;

private:
    void watchFocusElsewhere();

    QWidget* control_;
    QPointer<QWidget> form_;
    QListWidget* list_ = nullptr;
    QTimer* timer_ = nullptr;
    bool focusArrived_ = false;
    bool focusTakenElsewhere_ = false;
    QPointer<QWidget> focusAtOpening_;
};

// The screen rectangle of a child control.
QRect screenRect(const QWidget* widget);

}  // namespace TabulaControl::platform
