// SPDX-License-Identifier: Apache-2.0
// record_fixture.h: parses one base record with the attribute elements that a test sets.
#ifndef UNIT_PORT_MGR_RECORD_FIXTURE_H
#define UNIT_PORT_MGR_RECORD_FIXTURE_H

#include "base_record.h"
#include "guarded_bytes.h"
#include "library_test.h"

namespace unit {

inline constexpr if_index_t this_port = 0x01020304;
inline constexpr if_index_t other_port = 0x01020305;

inline support::bytes attribute(if_index_t if_index, const support::bytes &value) {
    return support::payload().be32(if_index).append(value);
}

class record_test : public support::library_test {
  protected:
    // Parses the base record with the elements set so far.
    support::bytes parse() {
        EXPECT_EQ(pm_parse_port_info(base.data(), base.data(), &record), 0U);
        return bytes_of(record);
    }

    support::bytes parse(uint16_t type, const support::bytes &value) {
        elements.clear();
        elements.add(type, attribute(this_port, value));
        return parse();
    }

    const support::guarded_bytes base{base_record()};
    const support::bytes without_attributes = expected_record(base_record());
    pm_port_info_t record = [] {
        pm_port_info_t rubbish;
        std::memset(&rubbish, 0x5a, sizeof rubbish);
        return rubbish;
    }();
};

}  // namespace unit

#endif
