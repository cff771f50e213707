#pragma once

#include "widgets/Controls.h"

#include <QMouseEvent>

#include <cstdint>
#include <utility>

// Qt's input as the grid's handlers take it: classic key codes, shift and
// button masks.
namespace TabulaControl::platform {

// Bits 0, 1 and 2 set for the first, second and third flag that flags hold.
template <class Flags, class Flag>
int16_t maskOf(Flags flags, Flag first, Flag second, Flag third)
{
    return static_cast<int16_t>((flags & first ? 1 : 0) | (flags & second ? 2 : 0) | (flags & third ? 4 : 0));
}

inline int16_t shiftState(Qt::KeyboardModifiers modifiers)
{
    return maskOf(modifiers, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier);
}

inline int16_t buttonState(Qt::MouseButtons buttons)
{
    return maskOf(buttons, Qt::LeftButton, Qt::RightButton, Qt::MiddleButton);
}

// The classic virtual key code of a key.
inline int16_t keyCode(int key)
{
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
        return static_cast<int16_t>(key);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return static_cast<int16_t>(112 + key - Qt::Key_F1);
    static constexpr std::pair<int, int16_t> codes[] = {
        {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},       {Qt::Key_Backtab, 9},   {Qt::Key_Return, 13},
        {Qt::Key_Enter, 13},    {Qt::Key_Shift, 16},    {Qt::Key_Control, 17},  {Qt::Key_Alt, 18},
        {Qt::Key_Pause, 19},    {Qt::Key_CapsLock, 20}, {Qt::Key_Escape, 27},   {Qt::Key_Space, 32},
        {Qt::Key_PageUp, 33},   {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},      {Qt::Key_Home, 36},
        {Qt::Key_Left, 37},     {Qt::Key_Up, 38},       {Qt::Key_Right, 39},    {Qt::Key_Down, 40},
        {Qt::Key_Insert, 45},   {Qt::Key_Delete, 46}};
    for (const auto& [qtKey, code] : codes) {
        if (qtKey == key)
            return code;
    }
    return 0;
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
