// SPDX-License-Identifier: Apache-2.0
// parse_outputs.h: answers to parse, and what parsing them leaves behind.
#ifndef UNIT_PORT_MGR_PARSE_OUTPUTS_H
#define UNIT_PORT_MGR_PARSE_OUTPUTS_H

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

#include "bytes.h"
#include "library_test.h"

namespace unit {

inline constexpr uint32_t untouched = 0xcafe;
inline constexpr const char *report_start =
    "\\(Error\\) Malloc Failure in infra/port_manager/lib/pm_api_common/port_info_response\\.cc\\[[1-9][0-9]*\\] for "
    "size ";

// How many allocations the log shows.
inline long allocations() {
    return std::ranges::count_if(support::call_log::take(),
                                 [](const std::string &call) { return call.starts_with("malloc"); });
}

// Outputs of one parse; a record's pointer starts out as one that was never allocated.
template <typename Record>
struct outputs {
    uint32_t count = untouched;
    Record *records = unset();

    static Record *unset() { return reinterpret_cast<Record *>(&mark); }
    [[nodiscard]] bool untouched_both() const { return count == untouched && records == unset(); }
    void release() {
        if (records != unset()) std::free(std::exchange(records, unset()));
    }

    static inline Record mark{};
};

// A test that parses into outputs of its own and frees what it was handed.
template <typename Record>
class parse_test : public support::library_test {
  protected:
    void TearDown() override {
        out.release();
        library_test::TearDown();
    }

    outputs<Record> out;
};

inline support::payload answer(uint32_t status, uint32_t count) { return support::payload().be32(status).be32(count); }

// The first `size` bytes.
inline support::bytes cut(const support::bytes &content, size_t size) {
    return {content.begin(), content.begin() + static_cast<ptrdiff_t>(size)};
}

}  // namespace unit

#endif
