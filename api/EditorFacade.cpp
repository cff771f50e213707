#include "api/Facade.h"

namespace TabulaControl {

void Tabula::wireEditor()
{
    auto& editor = grid_->ui.txtEdit;
    editor.onKeyDown = [this](int16_t keyCode, int16_t shift) {
        notify("EditKeyDown", [&] { grid_->onEditorKeyDown(keyCode, shift); });
    };
    editor.onKeyPress = [this](int16_t& keyAscii) {
        notify("txtEdit_KeyPress", [&] { grid_->onEditorCharacter(keyAscii); });
    };
    editor.onLostFocus = [this] { notify("txtEdit_LostFocus", [&] { grid_->onEditorFocusLost(); }); };
    grid_->ui.cmdButton.onClick = [this] { notify("cmdButton_Click", [&] { grid_->onCellButtonClick(); }); };
    grid_->ui.cmdLookup.onClick = [this] { notify("cmdLookup_Click", [&] { grid_->startEdit(32); }); };
    auto& list = grid_->ui.listForm;
    list.onKeyDown = [this](int16_t keyCode, int16_t shift) {
        notify("ListBox_KeyDown", [&] { grid_->onListKeyDown(keyCode, shift); });
    };
    list.onMouseUp = [this](int16_t button, int16_t shift, float x, float y) {
        notify("ListBox_MouseUp", [&] { grid_->onListMouseRelease(button, shift, x, y); });
    };
    list.onTimer = [this] { notify("Timer1_Timer", [&] { grid_->closeListIfFocusLeft(); }); };
}

bool Tabula::ColAllowEdit(int32_t Col) const
{
    return call("ColAllowEdit", [&] { return bool(grid_->model.columns().editAllowed(Col)); });
}
void Tabula::setColAllowEdit(int32_t Col, bool value)
{
    call("ColAllowEdit", [&] {
        grid_->model.columns().setEditAllowed(Col, value);
        grid_->notifyPropertyChanged("ColAllowEdit");
    });
}

int16_t Tabula::ColEditWidth(int32_t Col) const
{
    return call("ColEditWidth", [&] { return grid_->model.columns().editWidth(Col); });
}
void Tabula::setColEditWidth(int32_t Col, int16_t value)
{
    call("ColEditWidth", [&] { grid_->setColEditWidth(Col, value); });
}

bool Tabula::SelectText() const { return grid_->editorState.selectsTextOnOpen(); }
void Tabula::setSelectText(bool value)
{
    changeProperty("SelectText", [&] { grid_->editorState.setSelectsTextOnOpen(value); });
}

bool Tabula::AutoNewRow() const { return grid_->editorState.addsRowOnEdit(); }
void Tabula::setAutoNewRow(bool value)
{
    changeProperty("AutoNewRow", [&] { grid_->editorState.setAddsRowOnEdit(value); });
}

}  // namespace TabulaControl
