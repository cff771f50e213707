#include "state/CellText.h"

#include "state/Errors.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace TabulaControl::detail {

namespace {

bool isLatin1(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar ch) { return ch.unicode() < 0x100; });
}

void toLatin1(QStringView text, char* out)
{
    std::transform(text.begin(), text.end(), out, [](QChar ch) { return static_cast<char>(ch.unicode()); });
}

}  // namespace

void CellText::storeOnHeap(QStringView text)
{
    const bool latin1 = isLatin1(text);
    if (text.size() > std::numeric_limits<uint32_t>::max())
        raise(RuntimeError::OutOfMemory);
    const auto size = static_cast<uint32_t>(text.size());
    const size_t bytes = latin1 ? size : size * sizeof(char16_t);
    void* data = ::operator new(bytes);
    if (latin1)
        toLatin1(text, static_cast<char*>(data));
    else
        std::memcpy(data, text.utf16(), bytes);
    large_ = Heap{latin1 ? HeapLatin1 : HeapUtf16, size, data};
}

// The encoding follows from the text alone, so a copy made from the text is
// stored as the original is.
CellText::CellText(const CellText& other) : CellText(QStringView(other.toString())) {}

CellText::CellText(CellText&& other) noexcept : small_{} { take(other); }

CellText& CellText::operator=(const CellText& other)
{
    if (this != &other)
        *this = CellText(other);
    return *this;
}

CellText& CellText::operator=(CellText&& other) noexcept
{
    if (this == &other)
        return *this;
    release();
    take(other);
    return *this;
}

CellText::~CellText() { release(); }

void CellText::take(CellText& other) noexcept
{
    if (other.onHeap())
        large_ = other.large_;
    else
        small_ = other.small_;
    other.small_ = Inline{};
}

void CellText::release() noexcept
{
    if (onHeap())
        ::operator delete(large_.data);
    small_ = Inline{};
}

QAnyStringView CellText::view() const
{
    if (!onHeap())
        return QLatin1StringView(small_.chars, small_.size);
    if (large_.encoding == HeapLatin1)
        return QLatin1StringView(static_cast<const char*>(large_.data), large_.size);
    return QStringView(static_cast<const QChar*>(large_.data), large_.size);
}

QString CellText::toString() const
{
    if (small_.size == 0)
        return {};
    if (!onHeap())
        return QString::fromLatin1(small_.chars, small_.size);
    if (large_.encoding == HeapLatin1)
        return QString::fromLatin1(static_cast<const char*>(large_.data), large_.size);
    return QString(static_cast<const QChar*>(large_.data), large_.size);
}

}  // namespace TabulaControl::detail
