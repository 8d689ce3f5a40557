// SPDX-License-Identifier: Apache-2.0
// random_source.h: numbers and bytes that a seed decides, the same on every machine.
#ifndef MODEL_RANDOM_SOURCE_H
#define MODEL_RANDOM_SOURCE_H

#include <random>
#include <vector>

#include "bytes.h"

namespace model {

class random_source {
  public:
    explicit random_source(uint32_t seed) : engine_(seed) {}

    // Any number of 32 bits, one at an edge every so often.
    uint32_t word();
    uint8_t byte() { return static_cast<uint8_t>(engine_()); }
    // From 0 to the limit, without it.
    uint32_t below(uint32_t limit) { return static_cast<uint32_t>(engine_() % limit); }
    bool one_in(uint32_t count) { return below(count) == 0; }
    support::bytes some_bytes(size_t count);

    template <typename Value>
    Value pick(const std::vector<Value> &values) {
        return values[below(static_cast<uint32_t>(values.size()))];
    }

  private:
    std::mt19937 engine_;
};

}  // namespace model

#endif
