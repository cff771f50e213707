#pragma once

#include <TabulaControl/Tabula.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <limits>
#include <source_location>
#include <utility>

namespace TabulaControl::detail {

// A run-time failure inside a procedure, before a trap turns it into the
// component error of the procedure's caller.
class RuntimeError : public std::exception {
public:
    enum Code : int32_t {
        InvalidCall = 5,
        Overflow = 6,
        OutOfMemory = 7,
        Subscript = 9,
        TypeMismatch = 13,
    };
    explicit RuntimeError(Code code) : code_(code) {}
    Code code() const { return code_; }
    const char* what() const noexcept override;

private:
    Code code_;
};

[[noreturn]] void raise(RuntimeError::Code code);

template <class T>
T narrow(int64_t value)
{
    if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max())
        raise(RuntimeError::Overflow);
    return static_cast<T>(value);
}
inline int16_t to16(int64_t value) { return narrow<int16_t>(value); }
inline int32_t to32(int64_t value) { return narrow<int32_t>(value); }
inline uint8_t to8(int64_t value) { return narrow<uint8_t>(value); }
inline int16_t saturate16(int64_t value)
{
    return static_cast<int16_t>(std::clamp<int64_t>(value, INT16_MIN, INT16_MAX));
}
inline int32_t saturate32(int64_t value)
{
    return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

// Converts a floating value the way a 16- or 32-bit integer assignment does:
// rounded half to even, overflow-checked.
int32_t roundTo32(double value);

ComponentError componentError(const char* className, const char* procedure, uint32_t line);

// Runs body; any failure inside becomes a fresh component error whose source
// names className.procedure and whose description carries the line.
template <class F>
auto trap(const char* className, const char* procedure, uint32_t line, F&& body)
{
    try {
        return std::forward<F>(body)();
    } catch (...) {
        throw componentError(className, procedure, line);
    }
}

}  // namespace TabulaControl::detail
