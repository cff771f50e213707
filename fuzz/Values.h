#pragma once

#include "fuzz/Operation.h"

#include <TabulaControl/Tabula.h>

#include <QVariant>

namespace TabulaFuzz {

// The argument values a step draws, each with the C++ text that makes it.
// Indexes into the tables below are what an Operation stores.

// Integers at and across the edges of 16 and 32 bits.
int64_t boundaryInt(Rng& rng);
// An index for an array 0..count: mostly inside, sometimes just outside,
// sometimes a boundary value.
int64_t indexFor(Rng& rng, int64_t count);
// A count of rows or columns from 0 to thousands, sometimes a boundary value.
int64_t countFrom(Rng& rng, std::initializer_list<int64_t> typical);
// A size in pixels, a colour or an enumeration value.
int64_t pixels(Rng& rng);
int64_t colour(Rng& rng);
int64_t smallEnum(Rng& rng, int64_t last);

QString text(Rng& rng);
QString formatString(Rng& rng);
QString literal(const QString& text);

int variantCount();
QVariant variant(int64_t index);
QString variantLiteral(int64_t index);

int fontCount();
TabulaControl::FontRef font(int64_t index);
QString fontLiteral(int64_t index);

// Host coordinates for MouseDown and the like, stored as the bits of a
// double so that NaN and infinities replay exactly.
int64_t coordinate(Rng& rng, int64_t extent);
float coordinateValue(int64_t bits);
QString coordinateLiteral(int64_t bits);

}  // namespace TabulaFuzz
