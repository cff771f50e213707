#pragma once

#include "pixels/Raster.h"

#include <QPalette>

namespace TabulaControl::platform {

// The system colour table (0x80000000 + index) taken from a widget's
// palette: each index reads the role that plays its part on the desktop.
SystemColours systemColoursFrom(const QPalette& palette);

}  // namespace TabulaControl::platform
