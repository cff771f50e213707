#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <random>
#include <vector>

namespace TabulaFuzz {

class Harness;

// One step of a sequence. Every argument is fixed when the step is generated,
// so the step replays and prints the same way on a fresh grid.
struct Operation {
    int kind = 0;
    int64_t a = 0;
    int64_t b = 0;
    int64_t c = 0;
    int64_t d = 0;
    QString text;
    // A host call the next step follows straight away, as in a host's loop of
    // calls: no turn of the event loop and no check in between, so pixels
    // this one owes meet the next.
    bool chained = false;
};
using Sequence = std::vector<Operation>;

class Rng {
public:
    explicit Rng(uint64_t seed) : engine_(seed) {}
    // A value in lo..hi, both included.
    int64_t range(int64_t lo, int64_t hi);
    bool percent(int chance) { return range(0, 99) < chance; }
    uint64_t next() { return engine_(); }

private:
    std::mt19937_64 engine_;
};

// Draws the next step for the grid in its current state.
Operation generate(Rng& rng, const Harness& harness);
// Runs a step; a ComponentError raised by a public member propagates.
void run(Harness& harness, const Operation& op);
// The step as a line of C++ for a test.
QString print(const Operation& op);
// Whether the step is user input (keys, mouse, wheel, resize, waiting) rather
// than a call by the host.
bool isInput(const Operation& op);
QString nameOf(const Operation& op);

// Builds a valid grid and puts it through the restoring sequence.
Operation restoreStep(Rng& rng);

QString serialize(const Operation& op);
std::optional<Operation> deserialize(const QString& line);

}  // namespace TabulaFuzz
