// SPDX-License-Identifier: Apache-2.0
// The counters of line cards through the library, which finds cards and ports in the chassis database.
#include "line_card_thread.h"
#include "platform/idxmap.h"
#include "platform/pdb.h"
#include "protocol/byte_order.h"
#include "support/captured_stdout.h"
#include "virtual_switch_test.h"

namespace {

using namespace std::chrono_literals;

const std::string header = "[chassis]\nname = 'test'\ntype = 6\nslots = 8\n";

std::string counting(const std::string &name, uint32_t crc_errors_a_second, const std::string &more = "") {
    return "[[counters]]\nname = '" + name + "'\ncrc_errors = " + std::to_string(crc_errors_a_second * 3600) + "\n" +
           more;
}

class counters : public virtual_switch_test {
  protected:
    // What the library returns for a query of an interface.
    int32_t ask(const char *name, uint32_t word = PM_ETH_STATS_READ) {
        std::memset(&stats_, 0xee, sizeof stats_);
        return pm_get_clear_eth_stats(client_.handle(), index_of(name), index_of(name), word, &stats_);
    }

    pm_eth_stats_t stats_{};
};

struct card_of_tunnels {
    uint16_t card_type;
    uint8_t first_base;
};
constexpr card_of_tunnels cards[] = {{41, 18}, {42, 18}, {43, 18}, {22, 14}, {28, 14}, {77, 0}};
constexpr uint8_t tunnel_ports[] = {1, 2, 16};

// The tunnel in a slot on a port, both counted from 1.
std::string tunnel(size_t slot, uint8_t port) { return "fcip" + std::to_string(100 * slot + port); }

std::string chassis_of_tunnels() {
    std::string text = header;
    for (size_t slot = 1; slot <= std::size(cards); ++slot) {
        const std::string in_slot = "slot = " + std::to_string(slot) + "\n";
        text += "[[module]]\n" + in_slot +
                "kind = 'ips'\nports = 16\ncard_type = " + std::to_string(cards[slot - 1].card_type) + "\n";
        for (const uint8_t port : tunnel_ports) {
            text += "[[fcip]]\nname = '" + tunnel(slot, port) + "'\n" + in_slot + "port = " + std::to_string(port) +
                    "\n" + counting(tunnel(slot, port), static_cast<uint32_t>(100 * slot + port));
        }
    }
    return text;
}

TEST_F(counters, of_tunnels_are_found_on_every_type_of_card) {
    line_card_thread switch_cards(chassis_of_tunnels());
    switch_cards.pass(1s);
    for (size_t slot = 1; slot <= std::size(cards); ++slot) {
        for (const uint8_t port : tunnel_ports) {
            const std::string name = tunnel(slot, port);
            ASSERT_EQ(ask(name.c_str()), 0) << name;
            EXPECT_EQ(stats_.crc_errors, 100 * slot + port) << name;
        }
    }
}

// What the chassis database says of them, by which the library finds them.
TEST_F(counters, of_tunnels_lie_behind_the_places_that_the_card_keeps) {
    const line_card_thread switch_cards(chassis_of_tunnels());
    for (size_t slot = 1; slot <= std::size(cards); ++slot) {
        pdb_mod_info_t module{};
        ASSERT_EQ(pdb_get_mod_info(static_cast<uint8_t>(slot - 1), &module, 2), 0);
        EXPECT_EQ(pm::load<uint16_t>(&module.byte[2]), cards[slot - 1].card_type);
        for (const uint8_t port : tunnel_ports) {
            idxmap_entry_t entry{};
            ASSERT_EQ(idxmap_entry_by_if_index(index_of(tunnel(slot, port)), &entry), 0);
            EXPECT_EQ(entry.byte[8], slot - 1);
            EXPECT_EQ(entry.byte[9], cards[slot - 1].first_base + 4 * (port - 1));
        }
    }
}

class counters_of_ports : public counters {
  protected:
    line_card_thread cards_{header +
                            "[[module]]\nslot = 2\nkind = 'ethernet'\nports = 48\n"
                            "[[module]]\nslot = 3\nkind = 'ips'\nports = 4\n"
                            "[[module]]\nslot = 5\nkind = 'ethernet-sfp'\nports = 4\n"
                            "[[module]]\nslot = 8\nkind = 'fc'\nports = 4\n"
                            "[[sub_interface]]\nname = 'Ethernet2/48.5'\n" +
                            counting("Ethernet2/48", 3, "rx_unicast_octets = 1000000000\nrx_multicast_frames = 5\n") +
                            counting("if13-3/2", 4) + counting("if26-5/3", 5) +
                            counting("Ethernet2/7", 6, "unreachable = 'yes'\n")};
};

TEST_F(counters_of_ports, arrive_in_host_order) {
    cards_.pass(10s);
    ASSERT_EQ(ask("Ethernet2/48"), 0);
    EXPECT_EQ(stats_.traffic[PM_ETH_TRAFFIC_RX].octets, 10000000000u);
    EXPECT_EQ(stats_.traffic[PM_ETH_TRAFFIC_RX].frames, 50u);
    EXPECT_EQ(stats_.traffic[PM_ETH_TRAFFIC_RX_UNICAST].octets, 10000000000u);
    EXPECT_EQ(stats_.traffic[PM_ETH_TRAFFIC_RX_MULTICAST].frames, 50u);
    EXPECT_EQ(stats_.traffic[PM_ETH_TRAFFIC_TX].octets, 0u);
    EXPECT_EQ(stats_.crc_errors, 30u);
    EXPECT_EQ(stats_.link_resets, 0u);
    EXPECT_EQ(stats_.seconds_since_clear, 10u);
}

TEST_F(counters_of_ports, are_found_for_every_kind) {
    cards_.pass(1s);
    ASSERT_EQ(ask("Ethernet2/48.5"), 0);
    EXPECT_EQ(stats_.crc_errors, 3u);
    ASSERT_EQ(ask("if13-3/2"), 0);
    EXPECT_EQ(stats_.crc_errors, 4u);
    ASSERT_EQ(ask("if26-5/3"), 0);
    EXPECT_EQ(stats_.crc_errors, 5u);
    ASSERT_EQ(ask("Ethernet2/1"), 0);
    EXPECT_EQ(stats_.crc_errors, 0u);
}

TEST_F(counters_of_ports, are_cleared) {
    cards_.pass(2s);
    ASSERT_EQ(ask("Ethernet2/48", PM_ETH_STATS_CLEAR), 0);
    EXPECT_EQ(stats_.crc_errors, 6u);
    ASSERT_EQ(ask("Ethernet2/48"), 0);
    EXPECT_EQ(stats_.crc_errors, 0u);
    EXPECT_EQ(stats_.seconds_since_clear, 0u);
    ASSERT_EQ(ask("if13-3/2"), 0);
    EXPECT_EQ(stats_.crc_errors, 8u);
}

TEST_F(counters_of_ports, are_cleared_for_those_who_do_not_read_them) {
    cards_.pass(2s);
    const if_index_t port = index_of("if13-3/2");
    EXPECT_EQ(pm_get_clear_eth_stats(client_.handle(), port, port, PM_ETH_STATS_CLEAR, nullptr), 0);
    cards_.pass(1s);
    ASSERT_EQ(ask("if13-3/2"), 0);
    EXPECT_EQ(stats_.crc_errors, 4u);
}

TEST_F(counters_of_ports, do_not_come_from_a_port_out_of_reach) {
    support::captured_stdout output;
    EXPECT_EQ(ask("Ethernet2/7"), -1);
    EXPECT_EQ(output.take(), "Linecard unable to communicate with port for Ethernet2/7\n");
}

TEST_F(counters_of_ports, are_refused) {
    support::captured_stdout output;
    const auto refused = static_cast<int32_t>(PM_ERR_REJECTED);
    EXPECT_EQ(ask("fc8/1"), refused);
    EXPECT_EQ(output.take(), "Linecard returned error for fc8/1\n");
    EXPECT_EQ(ask("Ethernet2/48", 2), refused);
    EXPECT_EQ(output.take(), "Linecard returned error for Ethernet2/48\n");
    // The port that was looked up is not the one of the interface that the request names.
    EXPECT_EQ(pm_get_clear_eth_stats(client_.handle(), index_of("Ethernet2/48"), index_of("Ethernet2/47"),
                                     PM_ETH_STATS_READ, &stats_),
              refused);
}

TEST_F(counters_of_ports, are_nowhere_without_a_port) {
    EXPECT_NE(ask("Ethernet4/1"), 0);
    EXPECT_NE(ask("Ethernet2/49"), 0);
    EXPECT_EQ(stats_.result, 0xeeeeeeeeu);
}

using resources_of_line_cards = counters_of_ports;

TEST_F(resources_of_line_cards, are_their_own) {
    constexpr uint32_t node_of_slot_3 = 0x302;
    for (const uint16_t module : {uint16_t{0}, uint16_t{3}}) {
        mts_msg_t answer{};
        ASSERT_EQ(pm_get_module_resources(client_.handle(), 0, nullptr, module, node_of_slot_3, &answer), 0u);
        ASSERT_EQ(mts_payload_size(&answer), 8 + 2 * sizeof(pm_module_resource_t));
        const auto *const payload = static_cast<const uint8_t *>(mts_payload_get(&answer));
        EXPECT_EQ(pm::load_be32(payload), 0u);
        EXPECT_EQ(pm::load_be32(payload + 4), 2u);
        EXPECT_EQ(pm::load_be16(payload + 8), 3);
        EXPECT_EQ(pm::load_be32(payload + 12), 4u);
        mts_drop(client_.handle(), &answer);
    }
    mts_msg_t answer{};
    ASSERT_EQ(pm_get_module_resources(client_.handle(), 0, nullptr, 2, node_of_slot_3, &answer), 0u);
    EXPECT_EQ(pm::load_be32(mts_payload_get(&answer)), PM_ERR_INVALID_RANGE);
    mts_drop(client_.handle(), &answer);
}

}  // namespace
