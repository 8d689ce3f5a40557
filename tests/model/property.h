// SPDX-License-Identifier: Apache-2.0
// property.h: the fixture of tests that compare the library with a model of it in many random cases. Two environment
// variables replay a case and lengthen a run: PORT_MGR_SEED is the seed of the first case, each one after it has the
// next seed; PORT_MGR_CASES is how many there are.
#ifndef MODEL_PROPERTY_H
#define MODEL_PROPERTY_H

#include <functional>

#include "library_test.h"
#include "random_source.h"

namespace model {

// The caller's queue and longest wait, which the library carries on.
inline constexpr mts_handle_t handle = 0x55667788;
inline constexpr uint32_t last = 9;

class property : public support::library_test {
  protected:
    property();

    // Runs a body with a source of its own for every case, until one fails. A body that takes long runs in one of
    // `share` cases only.
    void for_random_cases(const std::function<void(random_source &)> &body, uint32_t share = 1);

    // Functions that have reported a failed check since the last call.
    std::vector<std::string> take_reporters();

    // The calls since the last time whose lines begin like this, and no others.
    static std::vector<std::string> take_calls(const std::string &beginning);
};

}  // namespace model

#endif
