#include "core/Errors.h"

#include <cfenv>
#include <cmath>

namespace TabulaControl::detail {

const char* RuntimeError::what() const noexcept
{
    switch (code_) {
    case InvalidCall: return "Invalid procedure call or argument";
    case Overflow: return "Overflow";
    case OutOfMemory: return "Out of memory";
    case Subscript: return "Subscript out of range";
    case TypeMismatch: return "Type mismatch";
    }
    return "Run-time error";
}

void raise(RuntimeError::Code code) { throw RuntimeError(code); }

int32_t roundTo32(double value)
{
    if (!std::isfinite(value))
        raise(RuntimeError::Overflow);
    return to32(static_cast<int64_t>(std::nearbyint(value)));
}

ComponentError componentError(const char* className, const char* procedure, uint32_t line)
{
    return ComponentError(QStringLiteral("TabulaControl.%1.%2").arg(QLatin1String(className), QLatin1String(procedure)),
                          QStringLiteral("%1 component failureat line %2").arg(QLatin1String(className)).arg(line));
}

}  // namespace TabulaControl::detail
