#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace TabulaControl::platform {

// One step of a 64-bit digest.
inline size_t mixed(size_t digest, uint64_t value)
{
    uint64_t h = (uint64_t{digest} ^ value) * 0x9E3779B97F4A7C15ULL;
    h ^= h >> 29;
    h *= 0xBF58476D1CE4E5B9ULL;
    return static_cast<size_t>(h ^ (h >> 32));
}

// A digest of bytes, eight at a time. Texts on the drawing path are short,
// and Qt's seeded string hash costs more than drawing a remembered cell.
inline size_t digestOfBytes(const void* data, size_t size, size_t seed)
{
    const auto* bytes = static_cast<const unsigned char*>(data);
    size_t digest = mixed(seed, size);
    for (; size >= 8; bytes += 8, size -= 8) {
        uint64_t word;
        std::memcpy(&word, bytes, 8);
        digest = mixed(digest, word);
    }
    uint64_t tail = 0;
    if (size > 0)
        std::memcpy(&tail, bytes, size);
    return mixed(digest, tail);
}

}  // namespace TabulaControl::platform
