// SPDX-License-Identifier: Apache-2.0
// The request for the port that follows: which service it goes to.
#include <initializer_list>
#include <utility>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"
#include "request_calls.h"

namespace {

using support::bytes;
using support::payload;
using testing::ElementsAre;
using unit::asked_token;
using unit::calls;
using unit::dropped;
using unit::handle;
using unit::received;
using unit::sent;
using unit::operator+;

std::string index_text(if_index_t if_index) { return "0x" + support::hex(payload().be32(if_index)); }

class next_port : public support::library_test {
  protected:
    // The calls of the classification of a channel that is no sub-interface and has no members.
    static calls classified(if_index_t channel) {
        const std::string index = index_text(channel);
        return {"if_index_get_type(" + index + ")", "if_index_is_port_channel_sub_interface(" + index + ")",
                "pdb_get_chassis_type(0)", "pcmap_get_port_channel(" + index + ")"};
    }

    // The calls up to a channel's member query, and what follows them.
    static calls asked_member(if_index_t channel, if_index_t asked, const calls &more) {
        const std::string index = index_text(channel);
        return classified(channel) +
               calls{"if_index_get_type(" + index + ")", "if_index_is_port_channel_sub_interface(" + index + ")",
                     "hton_if_index(" + index_text(asked) + ")",
                     "cmi_req_resp(624, 2, <" + support::hex(payload().be32(asked).fill(524, 0)) +
                         ">, 528, 0, 0, 34, 0x55667788, 5)"} +
               more;
    }

    // Sends about a channel and tells the calls behind the conversion of the index, which may come at any time.
    calls send(if_index_t if_index) {
        transport.will_send();
        EXPECT_EQ(pm_send_get_next_port_info(handle, if_index, &message), 0U);
        transport.drop(message);
        calls log = support::call_log::take();
        EXPECT_EQ(log.front(), "hton_if_index(" + index_text(if_index) + ")");
        log.erase(log.begin());
        return log;
    }

    static std::string sent_to(uint32_t sap, if_index_t if_index) { return sent(sap, 325, payload().be32(if_index)); }

    mts_msg_t message{};
};

TEST_F(next_port, sends_the_index_and_allocates_nothing) {
    EXPECT_THAT(send(0x01020304),
                ElementsAre("if_index_get_type(0x01020304)", "if_index_get_type(0x01020304)", sent_to(43, 0x01020304)));
}

TEST_F(next_port, puts_the_index_on_the_wire_as_the_platform_does) {
    interfaces.wire_mask = 0xffffffff;
    EXPECT_EQ(send(0x01020304).back(), sent_to(43, 0xfefdfcfb));
}

TEST_F(next_port, goes_to_the_owner_of_the_index) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (type == 4 || type == 22) continue;
        const if_index_t if_index = type << 24 | 0x1234;
        const uint32_t sap = type == 2 ? 45 : type == 5 ? 179 : type == 20 || type == 26 ? 175 : 43;
        EXPECT_EQ(send(if_index).back(), sent_to(sap, if_index)) << "type " << type;
    }
}

TEST_F(next_port, goes_to_the_port_manager_when_the_index_has_no_type) {
    interfaces.without_type = {0x04001000};
    EXPECT_EQ(send(0x04001000).back(), sent_to(43, 0x04001000));
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
}

TEST_F(next_port, blocks_for_its_answer) {
    transport.will_send();
    transport.will_receive();
    transport.will_drop();
    EXPECT_EQ(pm_get_next_port_info(handle, 0x02000000, &message), 0U);
    EXPECT_THAT(support::call_log::take(), ElementsAre(testing::_, testing::_, testing::_, sent_to(45, 0x02000000),
                                                       asked_token, received, dropped));
    transport.drop(message);
}

// Both kinds of port channel.
class next_of_channel : public next_port, public testing::WithParamInterface<if_index_t> {};

TEST_P(next_of_channel, goes_to_the_owner_of_the_member_that_the_query_names) {
    const std::pair<if_index_t, uint32_t> owners[] = {{0x02000001, 45},  {0x01000001, 43},  {0x05000001, 179},
                                                      {0x14000001, 175}, {0x1a000001, 175}, {0xfe000001, 43}};
    for (const auto &[member, sap] : owners) {
        transport.will_answer_query(0, payload().be32(member).fill(524, 0xee));
        EXPECT_EQ(send(GetParam()), asked_member(GetParam(), GetParam(),
                                                 {"if_index_get_type(" + index_text(member) + ")", "free(answer)",
                                                  sent_to(sap, GetParam())}));
    }
}

TEST_P(next_of_channel, takes_an_answer_of_4_bytes) {
    transport.will_answer_query(0, payload().be32(0x02000001));
    EXPECT_EQ(send(GetParam()).back(), sent_to(45, GetParam()));
}

TEST_P(next_of_channel, classifies_a_member_that_is_a_channel) {
    interfaces.map_count = 1;
    interfaces.map_member = 0x02000001;
    transport.will_answer_query(0, payload().be32(0x04000001));
    EXPECT_EQ(send(GetParam()).back(), sent_to(175, GetParam()));
}

TEST_P(next_of_channel, goes_to_175_when_the_query_fails) {
    for (const uint32_t result : {1U, 22U, 0xffffffffU}) {
        transport.will_answer_query(result, {});
        EXPECT_EQ(send(GetParam()), asked_member(GetParam(), GetParam(), {sent_to(175, GetParam())}));
    }
}

TEST_P(next_of_channel, leaves_the_answer_of_a_failed_query_alone) {
    transport.will_answer_query(1, payload().be32(0x02000001));
    EXPECT_EQ(send(GetParam()), asked_member(GetParam(), GetParam(), {sent_to(175, GetParam())}));
    EXPECT_EQ(heap.live_blocks(), 1);
    transport.free_answer();
}

TEST_P(next_of_channel, goes_to_its_own_owner_when_the_query_has_no_answer) {
    transport.will_answer_query(0, {});
    EXPECT_EQ(send(GetParam()), asked_member(GetParam(), GetParam(), {sent_to(43, GetParam())}));
    interfaces.map_count = 1;
    interfaces.map_member = 0x02000001;
    transport.will_answer_query(0, {});
    EXPECT_EQ(send(GetParam()).back(), sent_to(175, GetParam()));
}

TEST_P(next_of_channel, goes_to_175_and_frees_an_answer_that_is_too_short) {
    for (uint32_t size = 0; size < 4; ++size) {
        transport.will_answer_query(0, bytes(size, 2));
        EXPECT_EQ(send(GetParam()), asked_member(GetParam(), GetParam(), {"free(answer)", sent_to(175, GetParam())}));
    }
}

TEST_P(next_of_channel, goes_to_the_port_manager_when_the_member_has_no_type) {
    interfaces.without_type = {0x02000001};
    transport.will_answer_query(0, payload().be32(0x02000001));
    EXPECT_EQ(send(GetParam()).back(), sent_to(43, GetParam()));
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
}

TEST_P(next_of_channel, goes_to_175_without_a_query_for_a_sub_interface) {
    interfaces.channel_sub_interfaces = {GetParam()};
    const std::string index = index_text(GetParam());
    EXPECT_EQ(send(GetParam()),
              (calls{"if_index_get_type(" + index + ")", "if_index_is_port_channel_sub_interface(" + index + ")",
                     "if_index_get_type(" + index + ")", "if_index_is_port_channel_sub_interface(" + index + ")",
                     sent_to(175, GetParam())}));
}

TEST_P(next_of_channel, frees_the_answer_when_the_send_fails) {
    transport.will_answer_query(0, payload().be32(0x02000001));
    transport.will_send(-1, 113);
    EXPECT_EQ(pm_send_get_next_port_info(handle, GetParam(), &message), 113U);
    EXPECT_EQ(heap.live_blocks(), 0);
}

INSTANTIATE_TEST_SUITE_P(types, next_of_channel, testing::Values(0x04001000U, 0x16001000U),
                         [](const auto &each) { return "type_" + std::to_string(each.param >> 24); });

TEST_F(next_port, asks_for_a_member_of_index_0_when_the_index_is_the_special_one) {
    interfaces.special_types[0x84ffffff] = 4;
    transport.will_answer_query(0, payload().be32(0x02000001));
    EXPECT_EQ(send(0x84ffffff),
              asked_member(0x84ffffff, 0, {"if_index_get_type(0x02000001)", "free(answer)", sent_to(45, 0x84ffffff)}));
}

}  // namespace
