#include "render/AppearanceSettings.h"

#include "core/GridModel.h"

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
    font_ = std::move(fonts.font);
    headerFont_ = std::move(fonts.headerFont);
}

void Appearance::restoreDefaults(const StdFont& ambient)
{
    *this = Appearance();
    font_ = std::make_shared<StdFont>(ambient);
    headerFont_ = std::make_shared<StdFont>(ambient);
    editorFont_ = std::make_shared<StdFont>(ambient);
    headerFont_->Bold = true;
}

void Appearance::appendLayoutKey(std::vector<int64_t>& key) const
{
    key.insert(key.end(), {borderStyle_, columnHeader_, rowHeader_, gridLines_, gridLinesSolid_, headerStyle_});
}

}  // namespace TabulaControl::detail::render
