// SPDX-License-Identifier: Apache-2.0
// The requests for records of ranges of ports, or of all.
#include <utility>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"
#include "request_calls.h"

namespace {

using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::asked_token;
using unit::calls;
using unit::dropped;
using unit::handle;
using unit::received;
using unit::sent;

using ranges = std::vector<pm_if_index_range_t>;

const ranges one_range{{0x01040000, 0x01040001}};

// ---- full and brief queries

struct query_case {
    const char *name;
    uint32_t opcode;
    decltype(pm_send_get_port_info) *send;
    decltype(pm_get_port_info) *get;
};

void PrintTo(const query_case &query, std::ostream *to) { *to << query.name; }

class port_info_query : public support::library_test, public testing::WithParamInterface<query_case> {
  protected:
    // Sends about ranges; distinct bytes everywhere else.
    uint32_t send(uint8_t mode, uint32_t count, const pm_if_index_range_t *about) {
        return GetParam().send(handle, mode, 0x10203040, 0x50607080, 0x91, 0xa2, count, about, &message);
    }

    uint32_t send_all(const ranges &about) { return send(0, static_cast<uint32_t>(about.size()), about.data()); }

    static payload header(uint8_t mode, uint32_t count) {
        return payload().u8(mode).be32(0x10203040).be32(0x50607080).u8(0x91).u8(0xa2).be32(count);
    }

    [[nodiscard]] std::string send_name() const { return std::string("pm_send_get_") + GetParam().name; }
    [[nodiscard]] std::string get_name() const { return std::string("pm_get_") + GetParam().name; }

    void expect_refusals(uint8_t mode, uint32_t count, const pm_if_index_range_t *about) {
        EXPECT_EQ(GetParam().send(handle, mode, 0, 0, 0, 0, count, about, &message), PM_ERR_INVALID_PARAM);
        EXPECT_THAT(assertions.take(), ElementsAre("port_info_request.cc: " + send_name()));
        EXPECT_EQ(GetParam().get(handle, mode, 0, 0, 0, 0, count, about, &message), PM_ERR_INVALID_PARAM);
        EXPECT_THAT(assertions.take(), ElementsAre("port_info_request.cc: " + get_name()));
        EXPECT_THAT(support::call_log::take(), IsEmpty());
    }

    mts_msg_t message{};
};

TEST_P(port_info_query, sends_header_and_range) {
    transport.will_send();
    EXPECT_EQ(send_all({{0x01020304, 0x05060708}}), 0U);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre("malloc(23)", "hton_if_index(0x01020304)", "hton_if_index(0x05060708)",
                            "if_index_get_type(0x01020304)",
                            sent(43, GetParam().opcode, header(0, 1).be32(0x01020304).be32(0x05060708)), "free(23)"));
    transport.drop(message);
}

TEST_P(port_info_query, goes_to_the_owner_of_the_first_index_of_the_first_range) {
    const std::pair<if_index_t, uint32_t> owners[] = {{0x01000000, 43},  {0x02000000, 45},  {0x05000000, 179},
                                                      {0x14000000, 175}, {0x1a000000, 175}, {0xfe000000, 43}};
    for (const auto &[first, sap] : owners) {
        transport.will_send();
        EXPECT_EQ(send_all({{first, 0x02000009}, {0x05000000, 0x02000000}}), 0U);
        const calls log = support::call_log::take();
        EXPECT_EQ(
            log.at(log.size() - 2),
            sent(sap, GetParam().opcode, header(0, 2).be32(first).be32(0x02000009).be32(0x05000000).be32(0x02000000)));
        transport.drop(message);
    }
}

TEST_P(port_info_query, goes_to_the_owner_of_a_port_channel_without_asking_for_a_member) {
    interfaces.map_count = 1;
    interfaces.map_member = 0x02000000;
    transport.will_send();
    EXPECT_EQ(send_all({{0x04001000, 0x04001000}}), 0U);
    const calls log = support::call_log::take();
    EXPECT_EQ(log.at(log.size() - 2), sent(175, GetParam().opcode, header(0, 1).be32(0x04001000).be32(0x04001000)));
    EXPECT_THAT(log, testing::Not(testing::Contains(testing::StartsWith("cmi_req_resp"))));
    transport.drop(message);
}

TEST_P(port_info_query, goes_to_the_port_manager_when_the_first_index_has_no_type) {
    interfaces.without_type = {0x02000000};
    transport.will_send();
    EXPECT_EQ(send_all({{0x02000000, 0x02000001}}), 0U);
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
    const calls log = support::call_log::take();
    EXPECT_EQ(log.at(log.size() - 2), sent(43, GetParam().opcode, header(0, 1).be32(0x02000000).be32(0x02000001)));
    transport.drop(message);
}

TEST_P(port_info_query, puts_interface_indexes_on_the_wire_as_the_platform_does) {
    interfaces.wire_mask = 0xffffffff;
    transport.will_send();
    EXPECT_EQ(send_all({{0x01020304, 0x05060708}}), 0U);
    EXPECT_THAT(support::call_log::take(),
                testing::Contains(sent(43, GetParam().opcode, header(0, 1).be32(0xfefdfcfb).be32(0xfaf9f8f7))));
    transport.drop(message);
}

TEST_P(port_info_query, sends_a_thousand_ranges) {
    payload expected = header(0, 1000);
    ranges about;
    for (uint32_t i = 0; i < 1000; ++i) {
        about.push_back({0x01000000 + i, 0x02000000 + i});
        expected.be32(0x01000000 + i).be32(0x02000000 + i);
    }
    transport.will_send();
    EXPECT_EQ(send_all(about), 0U);
    const calls log = support::call_log::take();
    EXPECT_EQ(log.front(), "malloc(8015)");
    EXPECT_EQ(log.at(log.size() - 2), sent(43, GetParam().opcode, expected));
    transport.drop(message);
}

TEST_P(port_info_query, of_all_ports_sends_the_header_alone_to_the_port_manager) {
    for (const uint32_t count : {0U, 1U, 3U, 0x20000000U, 0xffffffffU}) {
        const ranges about{{0x02000000, 0x02000001}, {0x02000000, 0x02000001}, {0x02000000, 0x02000001}};
        transport.will_send();
        EXPECT_EQ(send(1, count, about.data()), 0U);
        EXPECT_THAT(support::call_log::take(),
                    ElementsAre("malloc(15)", sent(43, GetParam().opcode, header(1, count)), "free(15)"));
        transport.drop(message);
    }
}

TEST_P(port_info_query, of_all_ports_needs_no_ranges) {
    transport.will_send();
    EXPECT_EQ(send(1, 3, nullptr), 0U);
    transport.drop(message);
}

TEST_P(port_info_query, blocking_passes_every_argument_on) {
    const ranges about{{0x02020304, 0x05060708}};
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(GetParam().get(handle, 0, 0x10203040, 0x50607080, 0x91, 0xa2, 1, about.data(), &message), 0U);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre("malloc(23)", "hton_if_index(0x02020304)", "hton_if_index(0x05060708)",
                            "if_index_get_type(0x02020304)",
                            sent(45, GetParam().opcode, header(0, 1).be32(0x02020304).be32(0x05060708)), "free(23)",
                            asked_token, received, dropped));
    transport.drop(message);
}

TEST_P(port_info_query, blocking_of_all_ports_is_valid_without_ranges) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(GetParam().get(handle, 1, 0x10203040, 0x50607080, 0x91, 0xa2, 0, nullptr, &message), 0U);
    EXPECT_EQ(support::call_log::take().at(1), sent(43, GetParam().opcode, header(1, 0)));
    transport.drop(message);
}

TEST_P(port_info_query, of_no_range_is_refused) { expect_refusals(0, 0, one_range.data()); }

TEST_P(port_info_query, of_null_ranges_is_refused) { expect_refusals(0, 1, nullptr); }

TEST_P(port_info_query, of_any_other_mode_is_refused) {
    for (int mode = 2; mode < 256; ++mode) expect_refusals(static_cast<uint8_t>(mode), 1, one_range.data());
}

// The size is told cut to 32 bits.
struct size_case {
    uint32_t count;
    const char *size;
};

TEST_P(port_info_query, that_does_not_fit_in_32_bits_is_a_failed_allocation) {
    const size_case sizes[] = {{0x20000000, "15"}, {0x1fffffff, "7"}, {0x20000001, "23"}, {0xffffffff, "7"}};
    for (const auto &[count, size] : sizes) {
        EXPECT_EQ(send(0, count, one_range.data()), 1U);
        EXPECT_THAT(support::call_log::take(), IsEmpty());
        EXPECT_THAT(
            output.take(),
            MatchesRegex("\\(Error\\) Malloc Failure in "
                         "infra/port_manager/lib/pm_api_common/port_info_request\\.cc\\[[0-9]+\\] for size " +
                         std::string(size) + "\n" + send_name() + ": malloc failure, size\\(" + size + "\\)\n"));
    }
}

TEST_P(port_info_query, of_the_most_ranges_that_fit_allocates_all_of_them) {
    heap.fail_allocation(1);
    EXPECT_EQ(send(0, 0x1ffffffe, one_range.data()), 1U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(4294967295) fails"));
    EXPECT_THAT(output.take(), testing::EndsWith(send_name() + ": malloc failure, size(-1)\n"));
}

TEST_P(port_info_query, blocking_that_does_not_fit_in_32_bits_sends_nothing) {
    EXPECT_EQ(GetParam().get(handle, 0, 0, 0, 0, 0, 0x20000000, one_range.data(), &message), 1U);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
    EXPECT_THAT(output.take(), testing::EndsWith(send_name() + ": malloc failure, size(15)\n"));
}

INSTANTIATE_TEST_SUITE_P(kinds, port_info_query,
                         testing::Values(query_case{"port_info", 324, pm_send_get_port_info, pm_get_port_info},
                                         query_case{"port_info_brief", 3141, pm_send_get_port_info_brief,
                                                    pm_get_port_info_brief}),
                         [](const auto &each) { return std::string(each.param.name); });

// ---- one range

class port_info_range : public support::library_test {
  protected:
    static payload expected(if_index_t first, if_index_t last) {
        return payload().u8(0).be32(0).be32(0).u8(0).u8(0).be32(1).be32(first).be32(last);
    }

    mts_msg_t message{};
};

TEST_F(port_info_range, sends_a_full_query_of_23_bytes) {
    transport.will_send();
    EXPECT_EQ(pm_send_get_port_info_range(handle, 0x02030405, 0x02060708, &message), 0U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(23)", "hton_if_index(0x02030405)",
                                                       "hton_if_index(0x02060708)", "if_index_get_type(0x02030405)",
                                                       sent(45, 324, expected(0x02030405, 0x02060708)), "free(23)"));
    transport.drop(message);
}

TEST_F(port_info_range, may_end_before_it_begins) {
    transport.will_send();
    EXPECT_EQ(pm_send_get_port_info_range(handle, 0x01000009, 0x01000001, &message), 0U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(sent(43, 324, expected(0x01000009, 0x01000001))));
    transport.drop(message);
}

TEST_F(port_info_range, blocks_for_its_answer) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(pm_get_port_info_range(handle, 0x02030405, 0x02060708, &message), 0U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(23)", testing::_, testing::_, testing::_,
                                                       sent(45, 324, expected(0x02030405, 0x02060708)), "free(23)",
                                                       asked_token, received, dropped));
    transport.drop(message);
}

}  // namespace
