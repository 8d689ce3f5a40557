// SPDX-License-Identifier: Apache-2.0
// Which line card is asked for counters, and about which port.
#include "ethernet_stats_fixture.h"

namespace {

using testing::ElementsAre;
using unit::asked_error;
using unit::asked_token;
using unit::calls;
using unit::dropped;
using unit::handle;
using unit::its_main;
using unit::named_in_request;
using unit::nothing_dropped;
using unit::received;
using unit::request_word;
using unit::stats_asked;
using unit::this_interface;
using unit::this_tunnel;

constexpr uint16_t no_port = 0xffff;

class ethernet_stats_request : public unit::ethernet_stats_test {
  protected:
    // The calls up to the request, which is not sent.
    calls calls_until_send(if_index_t interface) {
        support::call_log::take();
        transport.will_send(-1, 113);
        transport.will_drop();
        EXPECT_EQ(get(interface), -1);
        calls log = support::call_log::take();
        const auto send = std::ranges::find_if(log, [](const auto &call) { return call.starts_with("mts_send"); });
        if (send != log.end()) log.erase(send + 1, log.end());
        return log;
    }

    std::string request_of(if_index_t interface) { return calls_until_send(interface).back(); }

    void expect_nothing_sent(int32_t status, if_index_t interface = this_interface) {
        EXPECT_EQ(get(interface), status);
        const auto log = support::call_log::take();
        EXPECT_THAT(log, testing::Each(testing::Not(testing::StartsWith("mts_"))));
        EXPECT_EQ(result(), untouched);
    }
};

TEST_F(ethernet_stats_request, looks_the_owner_up_and_asks_about_the_port) {
    EXPECT_THAT(calls_until_send(this_interface),
                ElementsAre("if_index_get_type(0x02040305)", "if_index_get_mainintf_from_subintf(0x02040305)",
                            "idxmap_node_by_if_index(0x02040000)", "idxmap_entry_by_if_index(0x02040000)",
                            "if_index_get_slot(0x02040305)", "if_index_get_port(0x02040305)",
                            "hton_if_index(0x02060708)", stats_asked(3)));
}

TEST_F(ethernet_stats_request, of_a_tunnel_looks_it_up_and_asks_about_the_port_of_its_base) {
    index_map.entry_looks = {{0, 6, 99}, {0, 7, 32}};
    EXPECT_THAT(calls_until_send(this_tunnel),
                ElementsAre("if_index_get_type(0x0a000305)", "idxmap_node_by_if_index(0x0a000305)",
                            "idxmap_entry_by_if_index(0x0a000305)", "idxmap_entry_by_if_index(0x0a000305)",
                            "pdb_get_mod_info(6, 2)", "hton_if_index(0x02060708)", stats_asked(8)));
}

TEST_F(ethernet_stats_request, of_every_type_but_tunnels_is_about_the_main_interface) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (type == 10) continue;
        const calls log = calls_until_send(type << 24 | 0x040305);
        EXPECT_EQ(log.at(2), fmt::format("idxmap_node_by_if_index({:#010x})", type << 24 | 0x040000)) << type;
        EXPECT_EQ(log.back(), stats_asked(3)) << type;
    }
}

TEST_F(ethernet_stats_request, of_a_main_interface_is_about_it) {
    const calls log = calls_until_send(its_main);
    EXPECT_EQ(log.at(2), "idxmap_node_by_if_index(0x02040000)");
    EXPECT_EQ(log.back(), stats_asked(0));
}

TEST_F(ethernet_stats_request, of_every_port_has_its_number) {
    for (uint32_t port = 0; port < 256; ++port) {
        EXPECT_EQ(request_of(0x02040005 | port << 8), stats_asked(static_cast<uint16_t>(port)));
    }
}

TEST_F(ethernet_stats_request, goes_to_the_node_of_the_owner) {
    for (const uint32_t node : {0U, 0x102U, 0xfe000000U, 0xffffffffU}) {
        index_map.node = node;
        EXPECT_EQ(request_of(this_interface), stats_asked(3, node));
        EXPECT_EQ(request_of(this_tunnel), stats_asked(0, node));
    }
}

TEST_F(ethernet_stats_request, puts_the_interface_index_on_the_wire_as_the_platform_does) {
    interfaces.wire_mask = 0xffffffff;
    EXPECT_EQ(request_of(this_interface), stats_asked(3, 0x502, 0xfdf9f8f7));
}

TEST_F(ethernet_stats_request, receives_and_drops) {
    transport.will_send();
    transport.will_receive_answer(unit::eth_answer());
    transport.will_drop();
    transport.will_drop();
    EXPECT_EQ(get(), 0);
    const calls log = support::call_log::take();
    EXPECT_THAT(calls(log.begin() + 7, log.begin() + 11), ElementsAre(stats_asked(3), asked_token, received, dropped));
    EXPECT_THAT(calls(log.begin() + 11, log.begin() + 13),
                testing::UnorderedElementsAre("mts_payload_size(message 0x7002)", "mts_payload_get(message 0x7002)"));
    EXPECT_THAT(calls(log.begin() + 13, log.end()), ElementsAre(unit::answer_dropped));
}

TEST_F(ethernet_stats_request, without_record_does_not_look_at_the_answer) {
    for (const std::optional<support::bytes> &answer :
         {std::optional<support::bytes>{}, {support::bytes(12, 1)}, {support::bytes(320, 0)}}) {
        support::call_log::take();
        transport.will_send();
        transport.will_receive_answer(answer);
        transport.will_drop();
        transport.will_drop();
        EXPECT_EQ(pm_get_clear_eth_stats(handle, this_interface, named_in_request, request_word, nullptr), 0);
        const calls log = support::call_log::take();
        ASSERT_EQ(log.size(), 12U);
        EXPECT_EQ(log[7], stats_asked(3));
        EXPECT_THAT(log[11], testing::StartsWith("mts_drop(0x55667788, message 0x"));
    }
}

TEST_F(ethernet_stats_request, takes_any_handle_and_word_to_the_transport) {
    for (const uint32_t word : {0U, 1U, 2U, 0xfffefdfcU}) {
        transport.will_send(-1, 9);
        transport.will_drop();
        EXPECT_EQ(pm_get_clear_eth_stats(0, this_interface, this_interface, word, &stats), -1);
        EXPECT_THAT(support::call_log::take(),
                    testing::Contains(fmt::format(
                        "mts_send(0x0, 0x502, 943, 1908, <000000000003{:036x}02040305{:08x}>, 32, 0, 0)", 0, word)));
    }
}

// ---- look-ups that fail

TEST_F(ethernet_stats_request, of_an_index_without_type_is_not_sent) {
    interfaces.without_type = {this_interface};
    interfaces.stores_untold_types = true;
    for (const int32_t status : {-1, 1, 0x40290003}) {
        interfaces.without_type_result = status;
        expect_nothing_sent(status);
    }
}

TEST_F(ethernet_stats_request, of_an_index_without_node_is_not_sent) {
    for (const int32_t status : {-1, 1, 0x40290003}) {
        index_map.node_result = status;
        index_map.entry.result = 77;
        expect_nothing_sent(status);
        expect_nothing_sent(status, this_tunnel);
    }
}

TEST_F(ethernet_stats_request, of_an_index_without_entry_is_not_sent) {
    for (const int32_t status : {-1, 1, 0x40290003}) {
        index_map.entry.result = status;
        expect_nothing_sent(status);
        expect_nothing_sent(status, this_tunnel);
    }
}

TEST_F(ethernet_stats_request, of_an_index_without_slot_or_port_asks_about_no_port) {
    numbers.stores_on_failure = true;
    for (const int32_t failure : {-1, 1}) {
        numbers.failure = failure;
        numbers.without_slot = {this_interface};
        numbers.without_port = {};
        EXPECT_EQ(request_of(this_interface), stats_asked(no_port));
        numbers.without_slot = {};
        numbers.without_port = {this_interface};
        EXPECT_EQ(request_of(this_interface), stats_asked(no_port));
    }
}

TEST_F(ethernet_stats_request, of_a_tunnel_without_second_entry_asks_about_no_port) {
    for (const int32_t failure : {-1, 1}) {
        index_map.entry_looks = {{0, 6, 32}, {failure, 6, 32}};
        const calls log = calls_until_send(this_tunnel);
        EXPECT_EQ(log.back(), stats_asked(no_port));
        EXPECT_THAT(log, testing::Not(testing::Contains(testing::StartsWith("pdb_get_mod_info"))));
    }
}

TEST_F(ethernet_stats_request, of_a_tunnel_without_module_asks_about_no_port) {
    for (const int32_t failure : {-1, 1}) {
        platform.module_result = failure;
        index_map.entry = {0, 6, 32};
        EXPECT_EQ(request_of(this_tunnel), stats_asked(no_port));
    }
}

// ---- the port of a tunnel

// A quarter of the distance from the first base, which is below 0 for smaller bases, cut to 16 bits.
uint16_t quarter_from(int first_base, int base) {
    const int distance = base - first_base;
    return static_cast<uint16_t>(distance < 0 ? (distance - 3) / 4 : distance / 4);
}

TEST_F(ethernet_stats_request, of_a_tunnel_counts_ports_as_the_card_does) {
    const std::map<uint16_t, int> first_bases{{0, 0},   {1, 0},   {21, 0},  {22, 14},   {23, 0},   {27, 0},
                                              {28, 14}, {29, 0},  {40, 0},  {41, 18},   {42, 18},  {43, 18},
                                              {44, 0},  {278, 0}, {297, 0}, {10496, 0}, {65535, 0}};
    for (const auto &[card, first_base] : first_bases) {
        platform.card_type = card;
        for (int base = 0; base < 256; ++base) {
            index_map.entry = {0, 6, static_cast<uint8_t>(base)};
            ASSERT_EQ(request_of(this_tunnel), stats_asked(quarter_from(first_base, base)))
                << "card " << card << ", base " << base;
        }
    }
}

TEST_F(ethernet_stats_request, of_a_tunnel_counts_down_from_the_first_base) {
    const std::tuple<uint16_t, uint8_t, uint16_t> ports[] = {
        {41, 26, 2},      {41, 22, 1},     {41, 21, 0},  {41, 18, 0}, {41, 17, 0xffff}, {41, 14, 0xffff},
        {41, 13, 0xfffe}, {43, 0, 0xfffb}, {22, 18, 1},  {22, 14, 0}, {22, 13, 0xffff}, {28, 0, 0xfffc},
        {28, 255, 60},    {42, 255, 59},   {1, 255, 63}, {1, 3, 0}};
    for (const auto &[card, base, port] : ports) {
        platform.card_type = card;
        index_map.entry = {0, 6, base};
        EXPECT_EQ(request_of(this_tunnel), stats_asked(port)) << "card " << card << ", base " << int{base};
    }
}

TEST_F(ethernet_stats_request, of_a_tunnel_looks_at_the_module_of_any_slot) {
    for (uint32_t slot = 0; slot < 256; ++slot) {
        index_map.entry_looks = {{0, static_cast<uint8_t>(slot), 1}, {0, 77, 2}};
        EXPECT_THAT(calls_until_send(this_tunnel), testing::Contains(fmt::format("pdb_get_mod_info({}, 2)", slot)));
    }
}

// ---- exchanges that fail

TEST_F(ethernet_stats_request, that_is_not_sent_drops_an_empty_answer) {
    transport.will_send(-1, 113);
    transport.will_drop();
    EXPECT_EQ(get(), -1);
    const calls log = support::call_log::take();
    EXPECT_THAT(calls(log.begin() + 7, log.end()), ElementsAre(stats_asked(3), nothing_dropped));
    EXPECT_EQ(result(), untouched);
}

TEST_F(ethernet_stats_request, that_is_not_answered_drops_an_empty_answer) {
    transport.will_send();
    transport.will_receive(-1, 110);
    transport.will_drop();
    transport.will_drop();
    EXPECT_EQ(get(), -1);
    const calls log = support::call_log::take();
    EXPECT_THAT(calls(log.begin() + 7, log.end()),
                ElementsAre(stats_asked(3), asked_token, received, dropped, nothing_dropped));
    EXPECT_EQ(result(), untouched);
}

TEST_F(ethernet_stats_request, that_fails_returns_the_error_of_a_failed_drop) {
    transport.will_send(-1, 113);
    transport.will_drop(-1, 9);
    EXPECT_EQ(get(), 9);
    EXPECT_EQ(support::call_log::take().back(), asked_error);
    transport.will_send();
    transport.will_receive(-1, 110);
    transport.will_drop();
    transport.will_drop(-1, 11);
    EXPECT_EQ(get(), 11);
    EXPECT_EQ(result(), untouched);
}

}  // namespace
