#include "pixels/PendingFill.h"

#include <algorithm>
#include <bit>

namespace TabulaControl::platform {

namespace {

constexpr int64_t WordBits = 64;

// The bits of a word from first up to last (exclusive), both within 0..64.
uint64_t bitsBetween(int64_t first, int64_t last)
{
    const uint64_t upTo = last >= WordBits ? ~uint64_t{0} : (uint64_t{1} << last) - 1;
    return upTo & ~((uint64_t{1} << first) - 1);
}

}  // namespace

void PendingFill::start(const QImage& image, QRgb colour)
{
    width_ = image.width();
    height_ = image.height();
    wordsPerRow_ = static_cast<size_t>((width_ + WordBits - 1) / WordBits);
    colour_ = colour;
    bits_.assign(wordsPerRow_ * static_cast<size_t>(height_), ~uint64_t{0});
    summary_.assign((bits_.size() + WordBits - 1) / WordBits, ~uint64_t{0});
    active_ = width_ > 0 && height_ > 0;
    // Bits past the right edge stay clear, so that a run never leaves the row.
    if (const int64_t tail = width_ % WordBits; tail != 0) {
        for (int64_t y = 0; y < height_; ++y)
            bits_[static_cast<size_t>(y) * wordsPerRow_ + wordsPerRow_ - 1] = bitsBetween(0, tail);
    }
}

// Clears the pending bits of box and calls perRun(y, left, right) for each
// run of pixels that was pending.
template <class PerRun>
void PendingFill::takeRuns(const Box& box, PerRun perRun)
{
    const Box b = intersect(box, {0, 0, width_, height_});
    if (!active_ || b.empty())
        return;
    const int64_t firstWord = b.left / WordBits, lastWord = (b.right - 1) / WordBits;
    const size_t stride = wordsPerRow_;  // a local copy: the words written could alias the member
    for (int64_t w = firstWord; w <= lastWord; ++w) {
        const int64_t base = w * WordBits;
        const uint64_t mask = bitsBetween(std::max(b.left - base, int64_t{0}), std::min(b.right - base, WordBits));
        const auto wordOfRow = [&](int64_t y) { return static_cast<size_t>(y) * stride + static_cast<size_t>(w); };
        for (size_t at = wordOfRow(b.top), end = wordOfRow(b.bottom); at < end; at += stride) {
            uint64_t taken = bits_[at] & mask;
            if (taken == 0)
                continue;
            bits_[at] &= ~mask;
            if (bits_[at] == 0)
                summary_[at / WordBits] &= ~(uint64_t{1} << (at % WordBits));
            while (taken != 0) {
                const int start = std::countr_zero(taken);
                const int length = std::countr_one(taken >> start);
                perRun(static_cast<int64_t>(at / stride), base + start, base + start + length);
                taken = start + length >= WordBits ? 0 : taken & ~bitsBetween(start, start + length);
            }
        }
    }
}

void PendingFill::cover(const Box& box)
{
    takeRuns(box, [](int64_t, int64_t, int64_t) {});
}

Box PendingFill::make(QImage& image, const Box& box)
{
    if (!active_)
        return {};
    QRgb* const bits = reinterpret_cast<QRgb*>(image.bits());
    const qsizetype stride = image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
    Box written;
    takeRuns(box, [&](int64_t y, int64_t left, int64_t right) {
        QRgb* const row = bits + y * stride;
        if (std::all_of(row + left, row + right, [this](QRgb p) { return p == colour_; }))
            return;
        std::fill(row + left, row + right, colour_);
        written = written.empty() ? Box{left, y, right, y + 1}
                                  : Box{std::min(written.left, left), std::min(written.top, y),
                                        std::max(written.right, right), y + 1};
    });
    return written;
}

// Only the words the summary still marks are visited.
void PendingFill::makeAll(QImage& image, const std::function<void(const Box&)>& written)
{
    if (!active_)
        return;
    const auto words = static_cast<int64_t>(wordsPerRow_);
    Box run;
    const auto extend = [&](const Box& made) {
        if (!run.empty() && made.top == run.top && made.left <= run.right + WordBits) {
            run.right = std::max(run.right, made.right);
            return;
        }
        if (!run.empty())
            written(run);
        run = made;
    };
    for (size_t s = 0; s < summary_.size(); ++s) {
        for (uint64_t marked = summary_[s]; marked != 0; marked &= marked - 1) {
            const auto at = static_cast<int64_t>(s) * WordBits + std::countr_zero(marked);
            if (at >= static_cast<int64_t>(bits_.size()))
                break;
            const int64_t y = at / words, left = (at % words) * WordBits;
            if (const Box made = make(image, {left, y, std::min(left + WordBits, width_), y + 1}); !made.empty())
                extend(made);
        }
    }
    if (!run.empty())
        written(run);
    active_ = false;
}

}  // namespace TabulaControl::platform
