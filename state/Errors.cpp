#include "state/Errors.h"

#include <QStringList>

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

Q_LOGGING_CATEGORY(errorLog, "tabula.errors")

ComponentError componentError(const char* className, const char* procedure, uint32_t line,
                              std::exception_ptr cause)
{
    return ComponentError(QStringLiteral("TabulaControl.%1.%2").arg(QLatin1String(className), QLatin1String(procedure)),
                          QStringLiteral("%1 component failureat line %2").arg(QLatin1String(className)).arg(line),
                          std::move(cause));
}

namespace {

std::exception_ptr nestedIn(const std::exception& failure)
{
    const auto* nested = dynamic_cast<const std::nested_exception*>(&failure);
    return nested ? nested->nested_ptr() : nullptr;
}

}  // namespace

QString describe(std::exception_ptr failure)
{
    QStringList texts;
    while (failure) {
        try {
            std::rethrow_exception(failure);
        } catch (const ComponentError& error) {
            texts << QStringLiteral("%1 (%2)").arg(error.Description, error.Source);
            failure = error.cause();
        } catch (const std::exception& error) {
            texts << QString::fromLocal8Bit(error.what());
            failure = nestedIn(error);
        } catch (...) {
            texts << QStringLiteral("a failure that is not a std::exception");
            failure = nullptr;
        }
    }
    return texts.join(QLatin1String(": "));
}

void logFailure(const ComponentError& error)
{
    qCWarning(errorLog).noquote() << QStringLiteral("%1: %2; caused by: %3").arg(error.Source, error.Description,
                                                                                   error.causeText());
}

void logContained(const char* activity, std::exception_ptr failure)
{
    qCWarning(errorLog).noquote() << QStringLiteral("ignored a failure while %1; caused by: %2")
                                         .arg(QLatin1String(activity), describe(failure));
}

void report(Tabula& grid, const ComponentError& error)
{
    logFailure(error);
    try {
        emit grid.errorOccurred(error);
    } catch (...) {
        // A host slot that throws here would throw through Qt's event loop.
        logContained("reporting a failure to the host", std::current_exception());
    }
}

}  // namespace TabulaControl::detail

QString TabulaControl::ComponentError::causeText() const { return detail::describe(cause_); }
