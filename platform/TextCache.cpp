#include "platform/TextCache.h"

namespace TabulaControl::platform {

size_t qHash(const TextKey& key, size_t seed)
{
    return qHashMulti(seed, key.fontKey, key.text, key.width, key.height, key.flags, key.phaseX, key.phaseY,
                      key.ratio);
}

TextCache& TextCache::forThisThread()
{
    thread_local TextCache cache;
    return cache;
}

const TextMask* TextCache::find(const TextKey& key)
{
    if (const auto it = current_.constFind(key); it != current_.constEnd())
        return &*it;
    const auto old = previous_.find(key);
    if (old == previous_.end())
        return nullptr;
    TextMask mask = std::move(*old);
    previous_.erase(old);
    return &insert(key, std::move(mask));
}

const TextMask& TextCache::insert(const TextKey& key, TextMask mask)
{
    if (current_.size() >= generationSize_) {
        previous_ = std::move(current_);
        current_.clear();
    }
    return *current_.insert(key, std::move(mask));
}

}  // namespace TabulaControl::platform
