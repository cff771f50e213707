#pragma once

#include <TabulaControl/Tabula.h>

#include "state/GridModel.h"
#include "layout/Positions.h"
#include "state/ResizeZones.h"
#include "state/Selection.h"
#include "state/AppearanceSettings.h"
#include "state/Viewport.h"

#include <cstdint>
#include <exception>
#include <vector>

namespace TabulaControl::detail::layout {

// What the child controls a repaint sets hold: the scroll bars' page steps
// and visibility, the hidden editor box and the editor's limit (never below 0).
struct ControlPlaces {
    int32_t verticalPage = 1;
    int32_t horizontalPage = 1;
    bool verticalBar = false;
    bool horizontalBar = false;
    EditorBox editor;
    int32_t editorMaxLength = 0;
};

// What a full repaint reads besides the grid's components: the sizes of the
// surface and of the control's window, and the child controls as they are
// now, which a repaint that does not set them leaves as they are.
struct Surroundings {
    SurfaceSize surface;
    int32_t windowWidth = 0;
    ControlPlaces controls;
};

// Everything a full repaint settles that the host can observe: the
// viewport's pages, drawn extents and scroll needs, the scroll bars' page
// steps and visibility, the resize zones, the hidden editor box, and the
// selection as the selection mode reshapes it. What a repaint does not
// reach keeps the value it had.
struct Layout {
    render::Viewport viewport;
    navigation::ResizeZones zones;
    navigation::Selection selection;
    ControlPlaces controls;
    // Whether the repaint places the editor box over the current cell, and
    // then gives it the column's limit.
    bool editorPlaced = false;
    bool editorLimited = false;

    // The values above as the host observes them, for comparing two layouts.
    std::vector<int64_t> observable() const;
};

// Lays out a full repaint of the grid without painting: the same walks over
// the rows and columns the painters make, with the same failures for cells
// outside the store, in the same order. Throws the first failure.
Layout computeLayout(const GridModel& model, const render::Viewport& viewport, const render::Appearance& look,
                     const navigation::Selection& selection, const navigation::ResizeZones& zones,
                     const Surroundings& around);

// A layout as far as it got before a failure stopped it, and the failure:
// what a repaint that fails part-way has settled.
struct LayoutAttempt {
    Layout layout;
    std::exception_ptr failure;
};
LayoutAttempt attemptLayout(const GridModel& model, const render::Viewport& viewport, const render::Appearance& look,
                            const navigation::Selection& selection, const navigation::ResizeZones& zones,
                            const Surroundings& around);

}  // namespace TabulaControl::detail::layout
