#pragma once

#include "fuzz/Harness.h"
#include "fuzz/Values.h"

#include <functional>
#include <vector>

namespace TabulaFuzz {

using Generate = std::function<void(Rng&, const Harness&, Operation&)>;
using Run = std::function<void(Harness&, const Operation&)>;
using Print = std::function<QString(const Operation&)>;

// A kind of step: how to draw its arguments, run it and print it.
struct Kind {
    QString name;
    bool input = false;
    int weight = 1;
    Generate generate;
    Run run;
    Print print;
};

inline int32_t i32(int64_t v) { return static_cast<int32_t>(v); }
inline int16_t i16(int64_t v) { return static_cast<int16_t>(v); }

// Fills a printed line with the step's arguments: %a..%d as numbers, %A..%C
// as the variants they index, %s as the text.
inline QString fill(QString format, const Operation& op)
{
    for (const auto& [mark, value] : {std::pair{'a', op.a}, {'b', op.b}, {'c', op.c}, {'d', op.d}}) {
        if (const QString variantMark = QStringLiteral("%") + QChar(mark).toUpper(); format.contains(variantMark))
            format.replace(variantMark, variantLiteral(value));
        format.replace(QStringLiteral("%") + QLatin1Char(mark), QString::number(value));
    }
    format.replace(QLatin1String("%s"), literal(op.text));
    return format;
}

// Prints the step as a host call, such as "sort(%a, %b)" with the arguments filled in.
inline Print host(const QString& call)
{
    return [call](const Operation& op) { return fill(QStringLiteral("call([&] { grid->%1; });").arg(call), op); };
}

// A host call with one argument drawn into op.a, passed as value(op.a) and
// printed as literal(op.a).
template <class T>
Kind oneArgument(const char* name, void (TabulaControl::Tabula::*set)(T), int weight, Generate generate,
                 std::function<T(int64_t)> value, std::function<QString(int64_t)> literal)
{
    return {QLatin1String(name), false, weight, std::move(generate),
            [=](Harness& h, const Operation& op) { (h.grid().*set)(value(op.a)); },
            [=](const Operation& op) { return QStringLiteral("call([&] { grid->%1(%2); });").arg(QLatin1String(name), literal(op.a)); }};
}

// A switch set on or off.
Kind flag(const char* name, void (TabulaControl::Tabula::*set)(bool), int weight = 1);

// Steps through saved settings and whole host sequences: reloading the grid,
// building a second grid from its settings, and restoring a valid grid.
std::vector<Kind> savedSettingsKinds();
// Undo, spreadsheet keys, sorting, CSV, printing, palette, layout and models.
std::vector<Kind> sheetKinds();

}  // namespace TabulaFuzz
