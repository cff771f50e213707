#pragma once

#include <TabulaControl/Tabula.h>

#include <cstdint>

namespace TabulaControl::detail {

// Raises each event on the control's signal of the same event and then on
// events()' signal, so handlers on the control run before those on events(),
// and a Cancel or value a handler sets reaches the next handler and the grid.
// Raising both directly spares each event a second dispatch through a
// signal-to-signal connection.
class GridEvents {
public:
    GridEvents(Tabula& control, TabulaEvents& events) : control_(control), events_(events) {}

    void Click() { raise(&Tabula::Click, &TabulaEvents::Click); }
    void BtnClick(int32_t row, int32_t col) { raise(&Tabula::BtnClick, &TabulaEvents::BtnClick, row, col); }
    void DblClick() { raise(&Tabula::DblClickEvent, &TabulaEvents::DblClick); }
    void KeyDown(int16_t key, int16_t shift) { raise(&Tabula::KeyDownEvent, &TabulaEvents::KeyDown, key, shift); }
    void KeyPress(int16_t keyAscii) { raise(&Tabula::KeyPress, &TabulaEvents::KeyPress, keyAscii); }
    void KeyUp(int16_t key, int16_t shift) { raise(&Tabula::KeyUp, &TabulaEvents::KeyUp, key, shift); }
    void MouseDown(int16_t button, int16_t shift, float x, float y)
    {
        raise(&Tabula::MouseDownEvent, &TabulaEvents::MouseDown, button, shift, x, y);
    }
    void MouseMove(int16_t button, int16_t shift, float x, float y)
    {
        raise(&Tabula::MouseMoveEvent, &TabulaEvents::MouseMove, button, shift, x, y);
    }
    void MouseUp(int16_t button, int16_t shift, float x, float y)
    {
        raise(&Tabula::MouseUpEvent, &TabulaEvents::MouseUp, button, shift, x, y);
    }
    void Scroll() { raise(&Tabula::Scroll, &TabulaEvents::Scroll); }
    void BeforeEdit(int32_t row, int32_t col, bool& cancel)
    {
        raise(&Tabula::BeforeEdit, &TabulaEvents::BeforeEdit, row, col, cancel);
    }
    void AfterEdit(int32_t row, int32_t col, const QString& value)
    {
        raise(&Tabula::AfterEdit, &TabulaEvents::AfterEdit, row, col, value);
    }
    void BeforeAddRow(bool& cancel) { raise(&Tabula::BeforeAddRow, &TabulaEvents::BeforeAddRow, cancel); }
    void AfterAddRow(int32_t row) { raiseSaved(&Tabula::AfterAddRow, &TabulaEvents::AfterAddRow, row); }
    void BeforeDeleteRow(int32_t row, bool& cancel)
    {
        raise(&Tabula::BeforeDeleteRow, &TabulaEvents::BeforeDeleteRow, row, cancel);
    }
    void AfterDeleteRow(int32_t row) { raiseSaved(&Tabula::AfterDeleteRow, &TabulaEvents::AfterDeleteRow, row); }
    void Resize() { raise(&Tabula::Resize, &TabulaEvents::Resize); }
    void RowColChange(int32_t lastRow, int32_t lastCol)
    {
        raiseSaved(&Tabula::RowColChange, &TabulaEvents::RowColChange, lastRow, lastCol);
    }

private:
    template <class... Params, class... Args>
    void raise(void (Tabula::*onControl)(Params...), void (TabulaEvents::*onEvents)(Params...), Args&&... args)
    {
        (control_.*onControl)(args...);
        (events_.*onEvents)(args...);
    }

    // The user moves the current cell and adds or deletes rows without a
    // setter, so these events also tell the host that saved settings changed.
    template <class... Params, class... Args>
    void raiseSaved(void (Tabula::*onControl)(Params...), void (TabulaEvents::*onEvents)(Params...), Args&&... args)
    {
        emit control_.settingsChanged();
        raise(onControl, onEvents, args...);
    }

    Tabula& control_;
    TabulaEvents& events_;
};

}  // namespace TabulaControl::detail
