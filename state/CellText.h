#pragma once

#include <QAnyStringView>
#include <QString>
#include <QStringView>

#include <cstdint>

namespace TabulaControl::detail {

// A cell's text in 16 bytes. Latin-1 texts of up to 15 characters sit
// inline; longer texts go to a heap block, in Latin-1 when every character
// allows it and in UTF-16 code units otherwise. Every QString comes back
// exactly as stored, embedded NULs and lone surrogates included.
class CellText {
public:
    CellText() noexcept : small_{} {}
    explicit CellText(QStringView text) : small_{}
    {
        if (!encodeInline(text, small_))
            storeOnHeap(text);
    }
    CellText(const CellText& other);
    CellText(CellText&& other) noexcept;
    CellText& operator=(const CellText& other);
    CellText& operator=(CellText&& other) noexcept;
    CellText& operator=(QStringView text)
    {
        Inline encoded{};
        if (onHeap() || !encodeInline(text, encoded))
            return *this = CellText(text);
        small_ = encoded;
        return *this;
    }
    ~CellText();

    QString toString() const;
    // The text where it is stored: valid until the text changes.
    QAnyStringView view() const;

private:
    enum : uint8_t { InlineCapacity = 15, HeapLatin1 = 0xFE, HeapUtf16 = 0xFF };

    struct Inline {
        uint8_t size;
        char chars[InlineCapacity];
    };
    struct Heap {
        uint8_t encoding;
        uint32_t size;
        void* data;
    };

    bool onHeap() const { return small_.size > InlineCapacity; }
    static bool encodeInline(QStringView text, Inline& out)
    {
        if (text.size() > InlineCapacity)
            return false;
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (text[i].unicode() > 0xFF)
                return false;
            out.chars[i] = static_cast<char>(text[i].unicode());
        }
        out.size = static_cast<uint8_t>(text.size());
        return true;
    }
    void storeOnHeap(QStringView text);
    void take(CellText& other) noexcept;
    void release() noexcept;

    // Both members start with the byte that tells them apart.
    union {
        Inline small_;
        Heap large_;
    };
};

static_assert(sizeof(CellText) == 16);

}  // namespace TabulaControl::detail
