#pragma once

#include "core/Grid.h"

#include <QApplication>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

namespace TabulaTest {

// The grid engine on a plain 400 x 300 host window (surface 395 x 295), for
// tests that look at working fields the public interface does not show.
class EngineFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        host_.resize(400, 300);
        grid_ = std::make_unique<TabulaControl::detail::Grid>(host_, events_);
        g().initialize();
        g().applyDefaultProperties();
        g().fitToControl();
    }

    TabulaControl::detail::Grid& g() { return *grid_; }
    TabulaControl::detail::GridState& s() { return grid_->s; }
    uint32_t pixel(int x, int y) const { return grid_->surface.image().pixel(x, y) & 0xFFFFFF; }

    QWidget host_;
    TabulaControl::TabulaEvents events_;
    std::unique_ptr<TabulaControl::detail::Grid> grid_;
};

}  // namespace TabulaTest
