#include "pixels/TextCache.h"

#include "pixels/Digest.h"

#include <bit>

namespace TabulaControl::platform {

namespace {

size_t digestOfText(const QString& text, size_t seed)
{
    return digestOfBytes(text.constData(), static_cast<size_t>(text.size()) * sizeof(QChar), seed);
}

}  // namespace

size_t qHash(const TextKey& key, size_t seed)
{
    size_t digest = digestOfText(key.text, mixed(seed, key.fontKeyHash));
    for (const uint64_t v : {uint64_t(key.width), uint64_t(key.height), uint64_t{key.flags},
                             std::bit_cast<uint64_t>(key.phaseX), std::bit_cast<uint64_t>(key.phaseY),
                             std::bit_cast<uint64_t>(key.ratio)})
        digest = mixed(digest, v);
    return digest;
}

TextCache& TextCache::forThisThread()
{
    thread_local TextCache cache;
    return cache;
}

template <class Value>
Value* TextCache::find(Generations<Value>& g, const TextKey& key)
{
    if (const auto it = g.current.find(key); it != g.current.end())
        return &*it;
    const auto old = g.previous.find(key);
    if (old == g.previous.end())
        return nullptr;
    Value value = std::move(*old);
    g.previous.erase(old);
    return &insert(g, key, std::move(value));
}

// A key may view the text it is looked up with (a cell's text is drawn
// without a copy); the one kept owns its own.
template <class Value>
Value& TextCache::insert(Generations<Value>& g, const TextKey& key, Value value)
{
    if (g.current.size() >= generationSize_) {
        g.previous = std::move(g.current);
        g.current.clear();
    }
    TextKey kept = key;
    kept.text.detach();
    return *g.current.insert(std::move(kept), std::move(value));
}

const TextMask* TextCache::find(const TextKey& key) { return find(masks_, key); }

bool TextCache::drawnBefore(const TextKey& key)
{
    if (find(drawn_, key))
        return true;
    insert(drawn_, key, true);
    return false;
}

const TextMask& TextCache::insert(const TextKey& key, TextMask mask) { return insert(masks_, key, std::move(mask)); }

}  // namespace TabulaControl::platform
