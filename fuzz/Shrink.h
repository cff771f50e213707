#pragma once

#include "fuzz/Operation.h"

#include <QString>

#include <functional>

namespace TabulaFuzz {

// What replaying a sequence gave: the failure's signature (empty when every
// check held) and the index of the step that failed.
struct Verdict {
    QString signature;
    size_t failedAt = 0;
    QString detail;
    bool failed() const { return !signature.isEmpty(); }
};
using Replay = std::function<Verdict(const Sequence&)>;

// Delta debugging: drops chunks of steps, halving the chunk down to single
// steps, keeping every removal after which the replay still fails with the
// same signature. Stops after maxReplays replays.
Sequence shrink(Sequence failing, const QString& signature, const Replay& replay, int maxReplays);

// A fresh grid, the steps, and the failing check, as C++ for a test body.
QString reproduction(const Sequence& steps, const Verdict& verdict, uint64_t seed, size_t originalLength);

}  // namespace TabulaFuzz
