// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/ethernet_stats.h"

#include <array>
#include <cstdio>
#include <cstring>

#include "platform/idxmap.h"
#include "platform/if_index.h"
#include "platform/pdb.h"
#include "pm_api_common/assertion.h"
#include "pm_api_common/exchange.h"
#include "port_mgr/messaging.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/ethernet_stats_layout.h"

namespace {

constexpr size_t entry_slot = 8;
constexpr size_t entry_port_base = 9;
constexpr size_t module_card_type = 2;
constexpr uint32_t module_query = 2;

// The number by which the line card knows a tunnel.
uint16_t port_of_tunnel(if_index_t tunnel, uint8_t slot) {
    idxmap_entry_t entry{};
    if (idxmap_entry_by_if_index(tunnel, &entry) != 0) return pm::no_line_card_port;
    pdb_mod_info_t module{};
    if (pdb_get_mod_info(slot, &module, module_query) != 0) return pm::no_line_card_port;
    return pm::tunnel_port(pm::load<uint16_t>(&module.byte[module_card_type]), entry.byte[entry_port_base]);
}

uint16_t port_of_interface(if_index_t interface) {
    uint8_t slot = 0;
    uint8_t port = 0;
    if (if_index_get_slot(interface, &slot) != 0 || if_index_get_port(interface, &port) != 0) {
        return pm::no_line_card_port;
    }
    return port;
}

struct line_card_port {
    uint32_t node = 0;
    uint16_t port = 0;
};

// Finds the line card that counts for an interface. Returns 0 or the status of the look-up that failed.
int32_t find_port(if_index_t interface, line_card_port &found) {
    uint8_t type = IF_TYPE_NONE;
    int32_t status = if_index_get_type(interface, &type);
    if (status != 0) return status;
    const bool is_tunnel = type == IF_TYPE_FCIP;
    const if_index_t owner = is_tunnel ? interface : if_index_get_mainintf_from_subintf(interface);
    status = idxmap_node_by_if_index(owner, &found.node);
    if (status != 0) return status;
    idxmap_entry_t entry{};
    status = idxmap_entry_by_if_index(owner, &entry);
    if (status != 0) return status;
    found.port = is_tunnel ? port_of_tunnel(interface, entry.byte[entry_slot]) : port_of_interface(interface);
    return 0;
}

using request_payload = std::array<uint8_t, pm::stats_request_size>;

request_payload request_for(uint16_t port, if_index_t interface, uint32_t request_word) {
    request_payload payload{};
    pm::store_be16(&payload[pm::stats_request_port], port);
    pm::store(&payload[pm::stats_request_if_index], hton_if_index(interface));
    pm::store_be32(&payload[pm::stats_request_word], request_word);
    return payload;
}

bool could_not_reach_port(const uint8_t *payload, uint32_t size) {
    constexpr size_t status = offsetof(pm_eth_stats_t, communication_status);
    return payload != nullptr && size >= status + sizeof(uint16_t) && pm::load<uint16_t>(payload + status) != 0;
}

void complain(const char *what, if_index_t interface) {
    char name[256];
    sprintf_if_index(name, interface);
    std::printf("%s for %s\n", what, name);
}

// Ends the exchange. Returns `status`, or the transport's error number.
int32_t drop(mts_handle_t handle, mts_msg_t &answer, int32_t status) {
    if (mts_drop(handle, &answer) != pm::transport_failure) return status;
    return static_cast<int32_t>(mts_errno_get(handle));
}

}  // namespace

int32_t pm_get_clear_eth_stats(mts_handle_t handle, if_index_t interface, if_index_t request, uint32_t request_word,
                               pm_eth_stats_t *stats) {
    line_card_port at;
    int32_t status = find_port(interface, at);
    if (status != 0) return status;
    const request_payload asked = request_for(at.port, request, request_word);
    mts_msg_t answer{};
    status = pm_ips_send_receive(handle, at.node, PM_SAP_ETHERNET_STATS, MTS_OPC_PM_GET_CLEAR_ETH_STATS, asked.data(),
                                 asked.size(), &answer, pm::query_wait);
    if (status != 0 || stats == nullptr) return drop(handle, answer, status);

    const uint32_t size = mts_payload_size(&answer);
    const auto *const payload = static_cast<const uint8_t *>(mts_payload_get(&answer));
    if (could_not_reach_port(payload, size)) {
        complain("Linecard unable to communicate with port", request);
        mts_drop(handle, &answer);
        return -1;
    }
    const bool is_whole = payload != nullptr && size == sizeof *stats;
    PM_ASSERT(is_whole);
    if (!is_whole) return drop(handle, answer, 0);
    std::memcpy(stats, payload, sizeof *stats);
    if (stats->result == 0) {
        complain("Linecard returned error", request);
        mts_drop(handle, &answer);
        return static_cast<int32_t>(PM_ERR_REJECTED);
    }
    pm::decode_record<pm::eth_stats_fields>(payload, stats, ntoh_if_index);
    return drop(handle, answer, 0);
}
