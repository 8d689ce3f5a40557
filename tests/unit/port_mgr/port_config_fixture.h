// SPDX-License-Identifier: Apache-2.0
// port_config_fixture.h: sets of port attributes, their requests and the answers to them.
#ifndef UNIT_PORT_MGR_PORT_CONFIG_FIXTURE_H
#define UNIT_PORT_MGR_PORT_CONFIG_FIXTURE_H

#include <optional>
#include <string>
#include <vector>

#include "config_attribute_expectations.h"
#include "library_test.h"
#include "parse_outputs.h"
#include "port_mgr/port_mgr_common.h"
#include "request_calls.h"

namespace unit {

inline constexpr uint32_t wait = 77;
inline constexpr const char *cmi_report_start =
    "\\(Error\\) Malloc Failure in infra/port_manager/lib/pm_cmi_common/[a-z_]+\\.cc\\[[1-9][0-9]*\\] for size ";

// A text, or none.
using text = std::optional<std::string>;

inline const char *pointer_to(const text &some) { return some ? some->c_str() : nullptr; }

// What one call sets. The value is of the attribute's kind, with a distinct value in every byte.
struct set_arguments {
    text first = {};
    text second = {};
    std::vector<pm_if_index_range_t> ranges = {{0x01020304, 0x01020506}};
    uint8_t type = 7;
    uint8_t length = static_cast<uint8_t>(attribute_width(type));
};

// The two texts' fields, 100 bytes.
inline support::bytes texts_of(const set_arguments &arguments) {
    support::bytes field(100, 0);
    const std::string first = arguments.first.value_or("");
    for (size_t i = 0; i < first.size() && i < 59; ++i) field[i] = static_cast<uint8_t>(first[i]);
    if (!arguments.second) return field;
    for (size_t i = 0; i < arguments.second->size() && i < 40; ++i)
        field[60 + i] = static_cast<uint8_t>((*arguments.second)[i]);
    if (first.size() > 39) field[39] = 0;
    return field;
}

// Indexes are written by a plain swap, which is the fake platform's way, too, unless a test sets a mask.
inline support::bytes set_request_of(const set_arguments &arguments) {
    support::payload request;
    request.append(texts_of(arguments)).be16(static_cast<uint16_t>(arguments.ranges.size()));
    for (const auto &range : arguments.ranges) request.be32(range.first).be32(range.last);
    support::bytes element = element_of(arguments.type, arguments.length);
    element.resize(size_t{2} + arguments.length);
    return request.append(element);
}

inline std::string queried(uint32_t opcode, uint32_t kind, const support::bytes &request, uint32_t sap) {
    return "cmi_req_resp(" + std::to_string(opcode) + ", " + std::to_string(kind) + ", <" + support::hex(request) +
           ">, " + std::to_string(request.size()) + ", 0, 0, " + std::to_string(sap) + ", 0x55667788, 77)";
}

// An answer with one entry an index, each with its own status.
inline support::payload set_answer(uint32_t status, const std::vector<if_index_t> &indexes) {
    support::payload all = answer(status, static_cast<uint32_t>(indexes.size()));
    for (const if_index_t each : indexes) all.be32(each).be32(each + 1);
    return all;
}

// The calls about blocks and exchanges alone.
inline calls blocks_and_exchanges(const calls &log) {
    calls some;
    for (const std::string &call : log) {
        if (call.starts_with("malloc") || call.starts_with("free") || call.starts_with("cmi_req_resp"))
            some.push_back(call);
    }
    return some;
}

class set_test : public parse_test<pm_set_port_result_t> {
  protected:
    void TearDown() override {
        release();
        parse_test::TearDown();
    }

    // Frees the entries, unless the library has done so, and makes the outputs as new.
    void release() {
        if (heap.is_live(out.records)) out.release();
        out = {};
    }

    uint32_t set(const set_arguments &arguments) {
        const support::guarded_bytes value(host_value(arguments.type));
        return pm_cmi_set_port_config(handle, pointer_to(arguments.first), pointer_to(arguments.second),
                                      static_cast<uint32_t>(arguments.ranges.size()), arguments.ranges.data(),
                                      arguments.type, arguments.length, value.data(), &out.count, &out.records, wait);
    }

    // A set that is answered without entries.
    uint32_t set_answered(const set_arguments &arguments) {
        transport.will_answer_query(0, set_answer(0, {}));
        release();
        return set(arguments);
    }

    void expect_entries(const std::vector<if_index_t> &indexes) {
        ASSERT_EQ(out.count, indexes.size());
        ASSERT_TRUE(heap.is_live(out.records));
        for (size_t i = 0; i < indexes.size(); ++i) {
            EXPECT_EQ(out.records[i].if_index, indexes[i]);
            EXPECT_EQ(out.records[i].status, __builtin_bswap32(indexes[i] + 1));
        }
    }

    void expect_no_entries() {
        EXPECT_EQ(out.count, 0U);
        EXPECT_EQ(out.records, nullptr);
    }
};

}  // namespace unit

#endif
