#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace TabulaControl::detail {

enum class SortKind { Text, Number, Date };

// How a column of texts compares: as numbers when its mask is NumericOnly
// or every non-empty text is a number, as dates when its mask is DateOnly,
// otherwise as text in the user's locale.
SortKind sortKindOf(const std::vector<QString>& texts, int32_t mask);

// The new order of the texts as indexes into them: a stable sort, texts with
// no key of the kind (empty, or no number or date) after those that have one
// and the empty last, each in their old order, whichever the direction.
std::vector<int32_t> sortedOrder(const std::vector<QString>& texts, SortKind kind, bool descending);

}  // namespace TabulaControl::detail
