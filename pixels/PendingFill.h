#pragma once

#include "pixels/Box.h"

#include <QImage>

#include <cstdint>
#include <functional>
#include <vector>

namespace TabulaControl::platform {

// The pixels of an image that a fill of the whole image has yet to write, a
// bit each, so that a clear followed by drawing writes every pixel once.
// Opaque fills take their box off; other drawing, a move and a read make the
// pending pixels in their box first. Boxes are in the image's pixels.
class PendingFill {
public:
    // Leaves every pixel of image to be filled with colour.
    void start(const QImage& image, QRgb colour);
    // Forgets the pending pixels without writing them.
    void stop() { active_ = false; }
    bool active() const { return active_; }
    QRgb colour() const { return colour_; }

    // The caller writes every pixel of box.
    void cover(const Box& box);
    // Writes the pending pixels of box; returns the bounds of those that
    // changed.
    Box make(QImage& image, const Box& box);
    // Writes every pending pixel, reporting each row's runs of changes.
    void makeAll(QImage& image, const std::function<void(const Box&)>& written);

private:
    template <class PerRun>
    void takeRuns(const Box& box, PerRun perRun);

    bool active_ = false;
    int64_t width_ = 0;
    int64_t height_ = 0;
    size_t wordsPerRow_ = 0;
    QRgb colour_ = 0;
    std::vector<uint64_t> bits_;
    // A bit for each word of bits_ that may still hold a pending pixel.
    std::vector<uint64_t> summary_;
};

}  // namespace TabulaControl::platform
