// SPDX-License-Identifier: Apache-2.0
// ethernet_stats_fixture.h: asks line cards for counters.
#ifndef UNIT_PORT_MGR_ETHERNET_STATS_FIXTURE_H
#define UNIT_PORT_MGR_ETHERNET_STATS_FIXTURE_H

#include <fmt/format.h>

#include <cstring>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"
#include "request_calls.h"

namespace unit {

inline constexpr size_t eth_stats_size = 320;

// A sub-interface, and the fake platform's main interface of it, which has another port number.
inline constexpr if_index_t this_interface = 0x02040305;
inline constexpr if_index_t its_main = 0x02040000;
inline constexpr if_index_t this_tunnel = 0x0a000305;
inline constexpr if_index_t named_in_request = 0x02060708;
inline constexpr uint32_t request_word = 0x11121314;

// A request to the fake index map's node.
inline std::string stats_asked(uint16_t port, uint32_t node = 0x502, if_index_t named = named_in_request) {
    return fmt::format("mts_send(0x55667788, {:#x}, 943, 1908, <00000000{:04x}{:036x}{:08x}11121314>, 32, 0, 0)", node,
                       port, 0, named);
}

inline const std::string answer_dropped = "mts_drop(0x55667788, message 0x7002)";
inline const std::string nothing_dropped = "mts_drop(0x55667788, zeroed message)";

// An answer with few bytes the same, from a line card that could reach the port.
inline support::bytes eth_answer() {
    support::bytes answer;
    for (size_t i = 0; i < eth_stats_size; ++i) answer.push_back(static_cast<uint8_t>((i * 11 + 5) % 251));
    answer[10] = answer[11] = 0;
    return answer;
}

class ethernet_stats_test : public support::library_test {
  protected:
    ethernet_stats_test() { std::memset(&stats, 0x5a, sizeof stats); }

    int32_t get(if_index_t interface = this_interface) {
        return pm_get_clear_eth_stats(handle, interface, named_in_request, request_word, &stats);
    }

    void will_answer(const std::optional<support::bytes> &answer, int32_t drop = 0) {
        transport.will_send();
        transport.will_receive_answer(answer);
        transport.will_drop();
        transport.will_drop(drop, 9);
    }

    int32_t get_answered(const std::optional<support::bytes> &answer, int32_t drop = 0) {
        will_answer(answer, drop);
        return get();
    }

    [[nodiscard]] support::bytes result() const {
        support::bytes image(sizeof stats);
        std::memcpy(image.data(), &stats, sizeof stats);
        return image;
    }

    pm_eth_stats_t stats;
    const support::bytes untouched = support::bytes(eth_stats_size, 0x5a);
};

}  // namespace unit

#endif
