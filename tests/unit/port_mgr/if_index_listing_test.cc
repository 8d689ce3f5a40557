// SPDX-License-Identifier: Apache-2.0
// The listings of interfaces, existing ones and those of a startup description: they differ in their requests alone.
#include <cstring>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"
#include "request_calls.h"

namespace {

using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::asked_error;
using unit::asked_token;
using unit::dropped;
using unit::handle;
using unit::sent;

constexpr uint32_t wait = 77;
const std::string received_in_77_s = "mts_recv(0x55667788, 0x1 0x0 0x4d 0x7001 0x0 0x0 0x0 0x0 0x0)";

// All byte values, so without an end of text in the right place.
bytes startup_block() {
    bytes block;
    for (int i = 0; i < 256; ++i) block.push_back(static_cast<uint8_t>(i ^ 0x55));
    return block;
}

const support::guarded_bytes startup{startup_block()};

struct listing_case {
    const char *name;
    uint32_t opcode;
    uint32_t (*get)(uint8_t type, mts_handle_t handle, mts_msg_t *message, uint32_t wait);
    bytes behind_type;
};

void PrintTo(const listing_case &listing, std::ostream *to) { *to << listing.name; }

class if_index_listing : public support::library_test, public testing::WithParamInterface<listing_case> {
  protected:
    uint32_t get(uint8_t type, uint32_t longest = wait) { return GetParam().get(type, handle, &message, longest); }

    static std::string asked(uint8_t type, uint32_t sap) {
        return sent(sap, GetParam().opcode, payload().u8(type).append(GetParam().behind_type));
    }

    void will_answer(const std::optional<bytes> &answer) {
        transport.will_send();
        transport.will_drop();
        transport.will_receive_answer(answer);
    }

    mts_msg_t message{};
};

TEST_P(if_index_listing, drops_its_request_and_leaves_the_answer_in_the_message) {
    will_answer(bytes{1, 2, 3, 4, 5});
    EXPECT_EQ(get(1), 0U);
    EXPECT_THAT(support::call_log::take(), ElementsAre(asked(1, 43), asked_token, dropped, received_in_77_s));
    ASSERT_NE(transport.find(&message), nullptr);
    EXPECT_EQ(support::hex(transport.payload_of(message), 5), "0102030405");
    transport.drop(message);
}

TEST_P(if_index_listing, of_each_type_goes_to_its_service_and_reports_unknown_types) {
    const std::map<uint32_t, uint32_t> owners{{1, 43},  {2, 45},   {5, 179},  {11, 43},
                                              {13, 43}, {20, 175}, {26, 175}, {254, 43}};
    for (uint32_t type = 0; type < 256; ++type) {
        const auto owner = owners.find(type);
        const bool is_known = owner != owners.end();
        transport.will_send(-1, 113);
        EXPECT_EQ(get(static_cast<uint8_t>(type)), 113U);
        EXPECT_THAT(support::call_log::take(),
                    ElementsAre(asked(static_cast<uint8_t>(type), is_known ? owner->second : 43), asked_error));
        EXPECT_EQ(assertions.take(),
                  is_known ? unit::calls{} : unit::calls{std::string("if_index_listing.cc: ") + GetParam().name})
            << type;
    }
}

TEST_P(if_index_listing, of_an_unknown_type_is_answered_all_the_same) {
    will_answer({});
    EXPECT_EQ(get(3), 0U);
    EXPECT_THAT(assertions.take(), ElementsAre(std::string("if_index_listing.cc: ") + GetParam().name));
    EXPECT_THAT(support::call_log::take(), ElementsAre(asked(3, 43), asked_token, dropped, received_in_77_s));
    transport.drop(message);
}

TEST_P(if_index_listing, waits_as_long_as_it_is_told) {
    for (const auto &[longest, shown] : {std::pair{0U, "0x0"}, std::pair{10U, "0xa"}, {0xffffffffU, "0xffffffff"}}) {
        will_answer({});
        EXPECT_EQ(get(1, longest), 0U);
        EXPECT_THAT(support::call_log::take().back(),
                    testing::StartsWith("mts_recv(0x55667788, 0x1 0x0 " + std::string(shown) + " 0x7"));
        transport.drop(message);
    }
}

TEST_P(if_index_listing, takes_any_handle_to_the_transport) {
    transport.will_send(-1, 9);
    EXPECT_EQ(GetParam().get(1, 0, &message, wait), 9U);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre(testing::StartsWith("mts_send(0x0, 0xfe000000, 43, "), "mts_errno_get(0x0)"));
}

TEST_P(if_index_listing, returns_the_error_of_a_failed_send) {
    transport.will_send(-1, 113);
    EXPECT_EQ(get(2), 113U);
    EXPECT_THAT(support::call_log::take(), ElementsAre(asked(2, 45), asked_error));
}

TEST_P(if_index_listing, returns_the_error_of_a_failed_drop_at_once) {
    transport.will_send();
    transport.will_drop(-1, 9);
    EXPECT_EQ(get(2), 9U);
    EXPECT_THAT(support::call_log::take(), ElementsAre(asked(2, 45), asked_token, dropped, asked_error));
}

TEST_P(if_index_listing, returns_the_error_of_a_failed_receive) {
    transport.will_send();
    transport.will_drop();
    transport.will_receive(-1, 110);
    EXPECT_EQ(get(2), 110U);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre(asked(2, 45), asked_token, dropped, received_in_77_s, asked_error));
}

TEST_P(if_index_listing, takes_any_result_but_minus_1_for_a_success) {
    transport.will_send(1);
    transport.will_drop(2);
    transport.will_receive(3);
    EXPECT_EQ(get(2), 0U);
    transport.drop(message);
}

INSTANTIATE_TEST_SUITE_P(kinds, if_index_listing,
                         testing::Values(listing_case{"pm_get_if_index_listing", 331, pm_get_if_index_listing, {}},
                                         listing_case{"pm_get_startup_if_index_listing", 3151,
                                                      [](uint8_t type, mts_handle_t queue, mts_msg_t *message,
                                                         uint32_t longest) {
                                                          return pm_get_startup_if_index_listing(
                                                              startup.data(), type, queue, message, longest);
                                                      },
                                                      payload().append(startup_block()).fill(244, 0)}),
                         [](const auto &each) { return std::string(each.param.name); });

class startup_if_index_listing : public support::library_test {};

TEST_F(startup_if_index_listing, is_501_bytes_whatever_the_block_holds) {
    transport.will_send(-1, 1);
    mts_msg_t message{};
    EXPECT_EQ(pm_get_startup_if_index_listing(support::guarded_bytes(bytes(256, 0)).data(), 5, handle, &message, 0),
              1U);
    EXPECT_THAT(support::call_log::take(), ElementsAre(sent(179, 3151, payload().u8(5).fill(500, 0)), asked_error));
}

TEST_F(startup_if_index_listing, without_block_sends_nothing) {
    mts_msg_t message;
    std::memset(&message, 0x5a, sizeof message);
    const mts_msg_t as_it_was = message;
    for (const uint8_t type : {uint8_t{1}, uint8_t{3}}) {
        EXPECT_EQ(pm_get_startup_if_index_listing(nullptr, type, handle, &message, wait), 0U);
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
    EXPECT_EQ(std::memcmp(&message, &as_it_was, sizeof message), 0);
}

}  // namespace
