#pragma once

#include <TabulaControl/Tabula.h>

#include "core/Errors.h"
#include "core/Grid.h"

namespace TabulaControl {

template <class F>
auto Tabula::call(const char* member, F&& body, std::source_location where) const
{
    return detail::trap("Tabula", member, where.line(), std::forward<F>(body));
}

template <class F>
void Tabula::change(const char* member, F&& body, std::source_location where)
{
    call(member, std::forward<F>(body), where);
    emit settingsChanged();
}

}  // namespace TabulaControl
