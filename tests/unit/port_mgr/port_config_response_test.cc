// SPDX-License-Identifier: Apache-2.0
// The parser of answers to a get.
#include "base_record.h"
#include "guarded_bytes.h"
#include "library_test.h"
#include "parse_outputs.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::payload;
using unit::answer;
using unit::base_record_of;

class port_config_response : public unit::parse_test<pm_port_info_t> {};

TEST_F(port_config_response, is_parsed_like_a_full_answer) {
    const bytes answers[] = {answer(0, 2).append(base_record_of(0x01020304)).append(base_record_of(0x01020305)),
                             answer(0, 0),
                             answer(7, 1),
                             answer(0, 1),
                             payload().be32(9),
                             bytes(4, 0)};
    for (const bytes &content : answers) {
        const guarded_bytes wire(content);
        unit::outputs<pm_port_info_t> expected;
        out = {};
        EXPECT_EQ(pm_parse_cmi_get_port_config_res_payload(wire.data(), wire.size(), &out.count, &out.records),
                  pm_parse_get_port_info_res_payload(wire.data(), wire.size(), &expected.count, &expected.records));
        EXPECT_EQ(out.count, expected.count);
        EXPECT_EQ(out.untouched_both(), expected.untouched_both());
        if (!out.untouched_both() && out.count != 0) {
            EXPECT_EQ(support::hex(out.records, out.count * sizeof(pm_port_info_t)),
                      support::hex(expected.records, expected.count * sizeof(pm_port_info_t)));
        }
        out.release();
        expected.release();
    }
    EXPECT_EQ(pm_parse_cmi_get_port_config_res_payload(nullptr, 500, &out.count, &out.records), PM_ERR_INVALID_PARAM);
    EXPECT_TRUE(out.untouched_both());
}

TEST_F(port_config_response, has_attributes_behind_its_records) {
    const guarded_bytes wire(answer(0, 1).append(base_record_of(0x01020304)).u8(0));
    elements.set_origin(wire.data());
    EXPECT_EQ(pm_parse_cmi_get_port_config_res_payload(wire.data(), wire.size(), &out.count, &out.records), 0U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(testing::HasSubstr("get_num_tlvs")));
    out.release();
    EXPECT_EQ(pm_parse_cmi_get_port_config_res_payload(wire.data(), wire.size() - 1, &out.count, &out.records), 0U);
    EXPECT_THAT(support::call_log::take(), testing::Not(testing::Contains(testing::HasSubstr("get_num_tlvs"))));
}

}  // namespace
