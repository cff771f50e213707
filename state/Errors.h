#pragma once

#include <TabulaControl/Tabula.h>

#include <QLoggingCategory>

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

Q_DECLARE_LOGGING_CATEGORY(errorLog)

ComponentError componentError(const char* className, const char* procedure, uint32_t line,
                              std::exception_ptr cause);

// Runs body; any failure inside becomes a fresh component error whose source
// names className.procedure and whose description carries the line, with the
// failure kept as its cause. Nothing is logged: the caller gets it all.
template <class F>
auto trap(const char* className, const char* procedure, uint32_t line, F&& body)
{
    try {
        return std::forward<F>(body)();
    } catch (...) {
        std::throw_with_nested(componentError(className, procedure, line, std::current_exception()));
    }
}

// The text of a failure and of the failures nested in it, outermost first.
QString describe(std::exception_ptr failure);

// Logs a failure that has no caller to reach, with its cause.
void logFailure(const ComponentError& error);

// Logs a failure that the grid contains on purpose while doing activity.
void logContained(const char* activity, std::exception_ptr failure);

// Reports a failure that has no caller to the host: logged, then errorOccurred.
void report(Tabula& grid, const ComponentError& error);

}  // namespace TabulaControl::detail
