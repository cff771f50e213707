#pragma once

#include "core/Errors.h"
#include "tests/support/EngineFixture.h"

#include <QImage>
#include <QRect>
#include <QSignalSpy>
#include <QStringList>

#include <functional>
#include <string>

namespace TabulaTest {

// 0x00BBGGRR as the 0xRRGGBB of a pixel.
inline uint32_t rgbOf(uint32_t colour)
{
    return ((colour & 0xFF) << 16) | (colour & 0xFF00) | ((colour >> 16) & 0xFF);
}

inline int countOf(const QImage& image, const QRect& area, uint32_t rgb)
{
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            n += (image.pixel(x, y) & 0xFFFFFF) == rgb ? 1 : 0;
    return n;
}

inline QStringList namesIn(const QSignalSpy& spy)
{
    QStringList names;
    for (const auto& args : spy)
        names.append(args.at(0).toString());
    return names;
}

// The code of the run-time error body raises; fails the test when it raises none.
inline TabulaControl::detail::RuntimeError::Code errorCodeOf(const std::function<void()>& body)
{
    try {
        body();
    } catch (const TabulaControl::detail::RuntimeError& e) {
        return e.code();
    }
    ADD_FAILURE() << "no error";
    return {};
}

template <class Case>
std::string caseName(const ::testing::TestParamInfo<Case>& info)
{
    return info.param.name;
}

// The engine fixture with the cell rectangles it paints; header cells start
// at the surface's first pixel.
class PaintFixture : public EngineFixture {
protected:
    QRect cell(int32_t row, int32_t col)
    {
        int32_t x = 0, y = 0;
        g().cellCoordinates(row, col, x, y);
        return QRect(col == 0 ? 1 : x, row == 0 ? 1 : y, s().mColWidth(col), s().mRowHeight(row));
    }
    QImage image() { return g().surface.image(); }
    int count(const QRect& area, uint32_t rgb) { return countOf(image(), area, rgb); }
};

}  // namespace TabulaTest
