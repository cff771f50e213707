#pragma once

#include <QFont>
#include <QHash>
#include <QPoint>
#include <QString>

#include <cstdint>
#include <vector>

namespace TabulaControl::platform {

// The pixels one text covers when it is drawn in a rectangle, as runs of
// device pixels relative to the rectangle's device origin.
struct TextMask {
    struct Run {
        int32_t y;
        int32_t left;
        int32_t right;
    };
    std::vector<Run> runs;
    // False when the text has pixels that are not wholly the pen colour
    // (colour glyphs, smoothed edges): such a text is drawn every time.
    bool exact = true;
    // The mask holds only where the rectangle's device origin is at least
    // this far from the image's left and top edges.
    QPoint overhang;
};

// What decides a text's pixels besides its place: the same key drawn at
// another place whose device origin differs by whole device pixels gives
// the same pixels, moved.
struct TextKey {
    QString fontKey;
    // A digest of fontKey, made once per font rather than once per lookup.
    size_t fontKeyHash = 0;
    QString text;
    int64_t width = 0;
    int64_t height = 0;
    unsigned flags = 0;
    double phaseX = 0;
    double phaseY = 0;
    double ratio = 1;
    friend bool operator==(const TextKey&, const TextKey&) = default;
};

size_t qHash(const TextKey& key, size_t seed = 0);

// Masks of recently drawn texts, so a text drawn again in a cell of the
// same size costs a copy of its pixels instead of a layout. Two generations:
// a mask used in the current one stays, the older one is dropped whole
// when the current one is full.
class TextCache {
public:
    explicit TextCache(qsizetype generationSize = 4096) : generationSize_(generationSize) {}

    // One cache for every surface of a thread, as a new grid often shows
    // the texts another one showed.
    static TextCache& forThisThread();

    const TextMask* find(const TextKey& key);
    // Whether a text with this key was drawn before; remembers that it was.
    // A mask costs more than drawing once, so it is made on the second draw.
    bool drawnBefore(const TextKey& key);
    const TextMask& insert(const TextKey& key, TextMask mask);

private:
    template <class Value>
    struct Generations {
        QHash<TextKey, Value> current;
        QHash<TextKey, Value> previous;
    };
    template <class Value>
    Value* find(Generations<Value>& g, const TextKey& key);
    template <class Value>
    Value& insert(Generations<Value>& g, const TextKey& key, Value value);

    qsizetype generationSize_;
    Generations<TextMask> masks_;
    Generations<bool> drawn_;
};

}  // namespace TabulaControl::platform
