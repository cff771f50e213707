#pragma once

#include <TabulaControl/Tabula.h>

#include "state/Errors.h"
#include "grid/Grid.h"

#include <type_traits>

namespace TabulaControl {

template <class F>
auto Tabula::call(const char* member, F&& body, std::source_location where) const
{
    return detail::trap("Tabula", member, where.line(), [&] {
        // A member that may change what the picture shows meets the pixels
        // as they were; reading members leave owed pixels owed.
        if constexpr (std::is_void_v<decltype(body())>)
            grid_->flushPaint();
        const detail::HostCall running(*grid_);
        return body();
    });
}

template <class F>
void Tabula::repaintingCall(const char* member, F&& body, std::source_location where) const
{
    detail::trap("Tabula", member, where.line(), [&] {
        const detail::RepaintsDeferred deferred(*grid_);
        body();
    });
}

template <class F>
void Tabula::change(const char* member, F&& body, std::source_location where)
{
    call(member, std::forward<F>(body), where);
    emit settingsChanged();
}

template <class F>
void Tabula::repaintingChange(const char* member, F&& body, std::source_location where)
{
    repaintingCall(member, std::forward<F>(body), where);
    emit settingsChanged();
}

template <class F>
void Tabula::changeProperty(const char* member, F&& body, std::source_location where)
{
    change(member, [&] {
        body();
        grid_->notifyPropertyChanged(member);
    }, where);
}

}  // namespace TabulaControl
