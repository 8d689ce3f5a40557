// SPDX-License-Identifier: Apache-2.0
#include "base_record.h"
#include "port_config_fixture.h"

namespace {

using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::MatchesRegex;
using unit::answer;
using unit::base_record_of;
using unit::blocks_and_exchanges;
using unit::bytes_of;
using unit::expected_record;
using unit::handle;
using unit::queried;
using unit::report_start;

class module_interface_listing : public unit::parse_test<pm_port_info_t> {
  protected:
    uint32_t list(uint8_t module, if_index_t if_index) {
        return pm_cmi_get_module_interface_listing(handle, module, if_index, unit::wait, &out.count, &out.records);
    }

    void expect_asked(uint8_t module, uint8_t type, uint32_t sap) {
        EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                    ElementsAre(queried(2840, 1, {module, type}, sap), "free(answer)"));
    }
};

TEST_F(module_interface_listing, asks_the_owner_of_the_type_for_any_module) {
    for (uint32_t type = 0; type < 256; ++type) {
        uint32_t sap = 43;
        if (type == 2) sap = 45;
        if (type == 5) sap = 179;
        if (type == 20 || type == 26) sap = 175;
        transport.will_answer_query(0, answer(0, 0));
        const auto module = static_cast<uint8_t>(255 - type);
        EXPECT_EQ(list(module, type << 24 | 0x123456), 0U);
        expect_asked(module, static_cast<uint8_t>(type), sap);
    }
}

TEST_F(module_interface_listing, of_channels_asks_the_owner_of_the_channel) {
    interfaces.map_count = 1;
    interfaces.map_member = 0x02000000;
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(list(3, 0x04000001), 0U);
    expect_asked(3, 4, 175);
    interfaces.map_member = 0x01000000;
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(list(3, 0x04000001), 0U);
    expect_asked(3, 4, 43);
}

TEST_F(module_interface_listing, of_an_index_without_type_asks_the_port_manager_about_type_0) {
    interfaces.without_type = {0x02000001};
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(list(3, 0x02000001), 0U);
    expect_asked(3, 0, 43);
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
}

TEST_F(module_interface_listing, passes_handle_and_last_argument_on) {
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(pm_cmi_get_module_interface_listing(0xfffffffd, 3, 0x01000000, 0xfffffffe, &out.count, &out.records), 0U);
    EXPECT_THAT(support::call_log::take(),
                testing::Contains("cmi_req_resp(2840, 1, <0301>, 2, 0, 0, 43, 0xfffffffd, 4294967294)"));
}

TEST_F(module_interface_listing, has_a_record_for_each_port_in_one_block) {
    transport.will_answer_query(0, answer(0, 2).append(base_record_of(0x01020304)).append(base_record_of(0x01020305)));
    EXPECT_EQ(list(3, 0x01000000), 0U);
    ASSERT_EQ(out.count, 2U);
    EXPECT_EQ(bytes_of(out.records[0]), expected_record(base_record_of(0x01020304)));
    EXPECT_EQ(bytes_of(out.records[1]), expected_record(base_record_of(0x01020305)));
    EXPECT_EQ(heap.live_blocks(), 1);
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                ElementsAre(queried(2840, 1, {3, 1}, 43), "malloc(776)", "free(answer)"));
}

TEST_F(module_interface_listing, has_a_null_array_when_there_are_no_ports) {
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(list(3, 0x01000000), 0U);
    EXPECT_EQ(out.count, 0U);
    EXPECT_EQ(out.records, nullptr);
}

TEST_F(module_interface_listing, returns_the_services_status_without_records) {
    for (const uint32_t status : {1U, 5U, PM_ERR_INVALID_RANGE, 0xffffffffU}) {
        transport.will_answer_query(0, answer(status, 1).append(base_record_of(0x01020304)));
        EXPECT_EQ(list(3, 0x01000000), status);
        transport.will_answer_query(0, payload().be32(status));
        EXPECT_EQ(list(3, 0x01000000), status);
        EXPECT_TRUE(out.untouched_both());
    }
}

TEST_F(module_interface_listing, refuses_an_empty_or_malformed_answer) {
    const std::optional<bytes> answers[] = {std::nullopt,
                                            bytes{},
                                            bytes(3, 1),
                                            bytes(4, 0),
                                            bytes(7, 0),
                                            answer(0, 1).fill(188, 0),
                                            answer(0, 0x80000000).fill(400, 0)};
    for (const auto &content : answers) {
        transport.will_answer_query(0, content);
        EXPECT_EQ(list(3, 0x01000000), PM_ERR_INVALID_PARAM);
        EXPECT_TRUE(out.untouched_both());
        EXPECT_EQ(heap.live_blocks(), 0);
    }
    transport.will_answer_query(0, answer(0, 1).append(base_record_of(0x01020304)), 196);
    EXPECT_EQ(list(3, 0x01000000), PM_ERR_INVALID_PARAM);
    EXPECT_TRUE(out.untouched_both());
}

TEST_F(module_interface_listing, leaves_its_outputs_alone_when_the_exchange_fails) {
    for (const uint32_t status : {1U, 113U, 0xffffffffU}) {
        transport.will_answer_query(status, {});
        EXPECT_EQ(list(3, 0x01000000), status);
        transport.will_answer_query(status, answer(0, 1).append(base_record_of(0x01020304)));
        EXPECT_EQ(list(3, 0x01000000), status);
        EXPECT_TRUE(out.untouched_both());
        EXPECT_EQ(heap.live_blocks(), 0);
    }
}

TEST_F(module_interface_listing, without_memory_for_its_records_frees_the_answer) {
    heap.fail_allocation(1);
    transport.will_answer_query(0, answer(0, 1).append(base_record_of(0x01020304)));
    EXPECT_EQ(list(3, 0x01000000), 1U);
    EXPECT_THAT(output.take(), MatchesRegex(report_start + std::string("388\n")));
    EXPECT_EQ(out.count, 1U);
    EXPECT_EQ(out.records, nullptr);
}

}  // namespace
