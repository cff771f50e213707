#include "state/AppearanceSettings.h"

#include "state/GridModel.h"

namespace TabulaControl::detail::render {

namespace {

// The area around the drawing surface is light grey under any border; only
// a borderless control shows the background colour there.
constexpr OleColor BorderedBackColor = 0xC0C0C0;

}  // namespace

OleColor Appearance::surroundColor() const { return borderStyle_ != 0 ? BorderedBackColor : backgroundColor_; }

OleColor Appearance::cellBackColor(int32_t row) const
{
    return alternateRows_ && row % 2 == 1 ? alternateRowColor_ : SharedBackColor;
}

void Appearance::setCellFonts(CellFonts fonts)
{
    revision_.set(font_, fonts.font);
    revision_.set(headerFont_, fonts.headerFont);
}

void Appearance::restoreDefaults(const StdFont& ambient)
{
    *this = Appearance();
    font_ = std::make_shared<StdFont>(ambient);
    headerFont_ = std::make_shared<StdFont>(ambient);
    editorFont_ = std::make_shared<StdFont>(ambient);
    headerFont_->Bold = true;
    revision_.changed();
}

void Appearance::appendState(std::vector<int64_t>& state) const
{
    state.insert(state.end(), {borderStyle_, columnHeader_, rowHeader_, gridLines_, gridLinesSolid_, headerStyle_});
}

}  // namespace TabulaControl::detail::render
