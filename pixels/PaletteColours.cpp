#include "pixels/PaletteColours.h"

#include <utility>

namespace TabulaControl::platform {

namespace {

using Role = QPalette::ColorRole;
using Group = QPalette::ColorGroup;

// By system colour index: scroll bar, desktop, active and inactive caption,
// menu, window, window frame, menu text, window text, caption text, active
// and inactive border, application workspace, highlight and its text,
// button face, shadow, grey text, button text, inactive caption text, button
// highlight, 3-D dark shadow and light, tool tip text and background, an
// unused index, hot-tracked link, caption gradients, menu highlight and bar.
constexpr std::pair<Group, Role> Roles[] = {
    {Group::Active, Role::Button},        {Group::Active, Role::Window},
    {Group::Active, Role::Highlight},     {Group::Inactive, Role::Mid},
    {Group::Active, Role::Window},        {Group::Active, Role::Base},
    {Group::Active, Role::WindowText},    {Group::Active, Role::WindowText},
    {Group::Active, Role::Text},          {Group::Active, Role::HighlightedText},
    {Group::Active, Role::Window},        {Group::Active, Role::Window},
    {Group::Active, Role::Dark},          {Group::Active, Role::Highlight},
    {Group::Active, Role::HighlightedText}, {Group::Active, Role::Button},
    {Group::Active, Role::Dark},          {Group::Disabled, Role::Text},
    {Group::Active, Role::ButtonText},    {Group::Inactive, Role::WindowText},
    {Group::Active, Role::Light},         {Group::Active, Role::Shadow},
    {Group::Active, Role::Midlight},      {Group::Active, Role::ToolTipText},
    {Group::Active, Role::ToolTipBase},   {Group::Active, Role::Button},
    {Group::Active, Role::Link},          {Group::Active, Role::Highlight},
    {Group::Inactive, Role::Mid},         {Group::Active, Role::Highlight},
    {Group::Active, Role::Window},
};
static_assert(std::size(Roles) == std::tuple_size_v<SystemColours>);

}  // namespace

SystemColours systemColoursFrom(const QPalette& palette)
{
    SystemColours colours{};
    for (size_t i = 0; i < colours.size(); ++i)
        colours[i] = palette.color(Roles[i].first, Roles[i].second).rgb() & 0xFFFFFF;
    return colours;
}

}  // namespace TabulaControl::platform
