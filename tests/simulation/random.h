// Random numbers that are the same everywhere for the same seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace simulation {

// Splitmix: one word of state, any seed is a good one.
class Random {
 public:
  explicit Random(uint64_t seed) : state(seed) {}

  uint64_t Next() {
    state += 0x9E3779B97F4A7C15;
    uint64_t mixed = state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31);
  }

  // Less than `bound`, which is not 0.
  uint64_t Below(uint64_t bound) { return Next() % bound; }
  uint64_t Between(uint64_t least, uint64_t most) { return least + Below(most - least + 1); }
  bool OneIn(uint64_t count) { return Below(count) == 0; }
  bool Percent(uint64_t chance) { return Below(100) < chance; }

  // Small numbers as often as large ones: up to 2^bits, every power of two alike.
  uint64_t UpToPower(unsigned bits) { return Below(uint64_t{1} << Below(bits + 1)); }

  template <class Value, size_t count>
  Value Of(const Value (&values)[count]) {
    return values[Below(count)];
  }
  template <class Value>
  const Value& Of(std::span<const Value> values) {
    return values[Below(values.size())];
  }

 private:
  uint64_t state;
};

// A number for each pair, to seed one generator from another's seed.
inline uint64_t Mixed(uint64_t seed, uint64_t stream) {
  Random random(seed ^ (stream * 0xD1342543DE82EF95));
  random.Next();
  return random.Next();
}

}  // namespace simulation
