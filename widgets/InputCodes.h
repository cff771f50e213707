#pragma once

#include "widgets/Controls.h"

#include <QMouseEvent>

#include <cstdint>
#include <utility>

// Qt's input as the grid's handlers take it: classic key codes, shift and
// button masks.
namespace TabulaControl::platform {

inline int16_t shiftState(Qt::KeyboardModifiers modifiers)
{
    int16_t shift = 0;
    if (modifiers & Qt::ShiftModifier)
        shift |= 1;
    if (modifiers & Qt::ControlModifier)
        shift |= 2;
    if (modifiers & Qt::AltModifier)
        shift |= 4;
    return shift;
}

inline int16_t buttonState(Qt::MouseButtons buttons)
{
    int16_t button = 0;
    if (buttons & Qt::LeftButton)
        button |= 1;
    if (buttons & Qt::RightButton)
        button |= 2;
    if (buttons & Qt::MiddleButton)
        button |= 4;
    return button;
}

// The classic virtual key code of a key.
inline int16_t keyCode(int key)
{
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
        return static_cast<int16_t>(key);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return static_cast<int16_t>(112 + key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Shift: return 16;
    case Qt::Key_Control: return 17;
    case Qt::Key_Alt: return 18;
    case Qt::Key_Pause: return 19;
    case Qt::Key_CapsLock: return 20;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Space: return 32;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Insert: return 45;
    case Qt::Key_Delete: return 46;
    default: return 0;
    }
}

inline MouseArgs mouseArgs(const QMouseEvent* e, Qt::MouseButtons buttons)
{
    return {buttonState(buttons), shiftState(e->modifiers()), static_cast<float>(e->position().x()),
            static_cast<float>(e->position().y())};
}

template <class H, class... A>
void notify(const H& handler, A&&... args)
{
    if (handler)
        handler(std::forward<A>(args)...);
}

}  // namespace TabulaControl::platform
