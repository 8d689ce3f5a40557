// SPDX-License-Identifier: Apache-2.0
// range_fixture.h: counts and steps through ranges, in a process that has not asked for the number of slots yet.
#ifndef UNIT_PORT_MGR_RANGE_FIXTURE_H
#define UNIT_PORT_MGR_RANGE_FIXTURE_H

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

#include "fresh_process.h"
#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace unit {

using calls = std::vector<std::string>;

inline constexpr uint32_t untouched_output = 0xdeadbeef;

// A status and the count or the member that came with it.
struct range_result {
    uint32_t status;
    uint32_t output;
    bool operator==(const range_result &) const = default;
};

inline void PrintTo(const range_result &result, std::ostream *to) {
    *to << fmt::format("status {:#x}, output {:#x}", result.status, result.output);
}

inline range_result count(if_index_t first, if_index_t last) {
    range_result result{0, untouched_output};
    result.status = pm_get_num_ports_in_if_index_range(first, last, &result.output);
    return result;
}

inline range_result member(if_index_t first, if_index_t last, uint32_t offset) {
    range_result result{0, untouched_output};
    result.status = pm_get_if_index_in_range(first, last, &result.output, offset);
    return result;
}

inline constexpr range_result not_counted{PM_ERR_INVALID_RANGE, 0};
inline constexpr range_result no_such_range{PM_ERR_INVALID_RANGE, untouched_output};
inline constexpr range_result behind_the_last_port{PM_ERR_REJECTED, untouched_output};

inline range_result counted(uint32_t number) { return {0, number}; }
inline range_result found(if_index_t if_index) { return {0, if_index}; }

inline if_index_t port(uint32_t type, uint32_t slot, uint32_t port, uint32_t sub_interface = 0) {
    return type << 24 | slot << 16 | port << 8 | sub_interface;
}

// A channel or a tunnel.
inline if_index_t numbered(uint32_t type, uint32_t number) { return type << 24 | number; }

inline std::string call_of(const char *function, if_index_t if_index) {
    return fmt::format("{}({:#010x})", function, if_index);
}

inline const std::string asks_platform = "get_platform_info()";

class range_test : public support::library_test {
  protected:
    // Only here may ranges of slots be used: the library keeps the number of slots for the life of its process.
    void in_fresh_process(const std::function<void()> &part) {
        support::in_fresh_process([&] {
            part();
            TearDown();
        });
    }

    // For each result of a call that fails.
    template <typename Part>
    void for_each_result(Part part) {
        for (const int32_t result : {-1, 1, 0x40290003}) {
            numbers.failure = result;
            SCOPED_TRACE(fmt::format("result {}", result));
            part();
        }
    }

    // For each way to fail of a call whose failure is not overlooked.
    template <typename Part>
    void for_each_failure(Part part) {
        for (const bool stores : {false, true}) {
            numbers.stores_on_failure = stores;
            for_each_result(part);
        }
    }

    static void expect_types_asked_alone(if_index_t first, if_index_t last) {
        EXPECT_THAT(support::call_log::take(), testing::UnorderedElementsAre(call_of("if_index_get_type", first),
                                                                             call_of("if_index_get_type", last)));
    }

    // The calls were these steps, one after the other; within a step, the order does not matter.
    static void expect_steps(const std::vector<calls> &steps) {
        calls seen = support::call_log::take();
        calls expected;
        for (calls step : steps) {
            const size_t end = std::min(expected.size() + step.size(), seen.size());
            if (expected.size() < end) {
                std::sort(seen.begin() + static_cast<ptrdiff_t>(expected.size()),
                          seen.begin() + static_cast<ptrdiff_t>(end));
            }
            std::ranges::sort(step);
            expected.insert(expected.end(), step.begin(), step.end());
        }
        EXPECT_EQ(seen, expected);
    }

    static calls both(const char *function, if_index_t first, if_index_t last) {
        return {call_of(function, first), call_of(function, last)};
    }

    static calls slots_and_ports(if_index_t first, if_index_t last) {
        calls expected = both("if_index_get_slot", first, last);
        std::ranges::copy(both("if_index_get_port", first, last), std::back_inserter(expected));
        return expected;
    }
};

}  // namespace unit

#endif
