#pragma once

class QWidget;

namespace TabulaControl::platform {

// The modal about dialog: title, version, description and an OK button.
void showAboutBox(QWidget* parent);

}  // namespace TabulaControl::platform
