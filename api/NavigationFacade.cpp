#include "api/Facade.h"

namespace TabulaControl {

using platform::MouseArgs;

void Tabula::wireChildren()
{
    auto& ui = grid_->ui;
    auto& input = ui.handlers;
    input.mouseDown = [this](const MouseArgs& e) {
        notify("picGrid_MouseDown", [&] { grid_->onSurfaceMousePress(e); });
    };
    input.mouseUp = [this](const MouseArgs& e) { notify("picGrid_MouseUp", [&] { grid_->onSurfaceMouseRelease(e); }); };
    input.mouseMove = [this](const MouseArgs& e) {
        notify("picGrid_MouseMove", [&] { grid_->onSurfaceMouseMove(e); });
    };
    input.click = [this] { notify("picGrid_Click", [&] { grid_->events.Click(); }); };
    input.dblClick = [this] { notify("picGrid_DblClick", [&] { grid_->onSurfaceDoubleClick(); }); };
    input.keyDown = [this](int16_t keyCode, int16_t shift) {
        notify("picGrid_KeyDown", [&] { grid_->onSurfaceKeyDown(keyCode, shift); });
    };
    input.keyPress = [this](int16_t keyAscii) {
        notify("picGrid_KeyPress", [&] { grid_->onSurfaceCharacter(keyAscii); });
    };
    input.keyUp = [this](int16_t keyCode, int16_t shift) {
        notify("picGrid_KeyUp", [&] { grid_->onSurfaceKeyUp(keyCode, shift); });
    };
    ui.scrVertical.onChange = [this] { notify("scrVertical_Change", [&] { grid_->onVerticalScroll(); }); };
    ui.scrHorizontal.onChange = [this] { notify("scrHorizontal_Change", [&] { grid_->onHorizontalScroll(); }); };
    ui.scrVertical.onFocus = [this] { notify("scrVertical_GotFocus", [&] { grid_->ui.picGrid.SetFocus(); }); };
    ui.scrHorizontal.onFocus = [this] { notify("scrHorizontal_GotFocus", [&] { grid_->ui.picGrid.SetFocus(); }); };
}

int32_t Tabula::LeftCol() const { return grid_->viewport.leftCol(); }
void Tabula::setLeftCol(int32_t value) { call("LeftCol", [&] { grid_->setLeftCol(value); }); }

void Tabula::MouseDown(int16_t Button, int16_t Shift, float x, float Y)
{
    call("MouseDown", [&] { grid_->MouseDown(Button, Shift, x, Y); });
}

void Tabula::DblClick() { call("DblClick", [&] { grid_->DblClick(); }); }

void Tabula::MouseUp(int16_t Button, int16_t Shift, float x, float Y)
{
    call("MouseUp", [&] { grid_->MouseUp(Button, Shift, x, Y); });
}

void Tabula::MouseMove(int16_t Button, int16_t Shift, float x, float Y)
{
    call("MouseMove", [&] { grid_->MouseMove(Button, Shift, x, Y); });
}

void Tabula::KeyDown(int16_t KeyCode, int16_t Shift) { call("KeyDown", [&] { grid_->KeyDown(KeyCode, Shift); }); }

}  // namespace TabulaControl
