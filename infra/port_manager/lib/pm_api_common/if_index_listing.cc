// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/if_index_listing.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "pm_api_common/assertion.h"
#include "pm_api_common/exchange.h"
#include "port_mgr/opcodes.h"
#include "protocol/interface_owner.h"
#include "protocol/listing_layout.h"

namespace {

// The types that services list. Asking for another one is a mistake of the caller's.
constexpr std::array<uint8_t, 8> listed_types{IF_TYPE_FC,           IF_TYPE_ETHERNET,      IF_TYPE_MGMT,
                                              IF_TYPE_SLOT_PORT,    IF_TYPE_ETHERNET_KIND, IF_TYPE_LOOPBACK,
                                              IF_TYPE_ETHERNET_SFP, IF_TYPE_OTHER};

bool is_listed(uint8_t type) { return std::ranges::find(listed_types, type) != listed_types.end(); }

// The message is the request first, then the answer to it.
uint32_t list(uint32_t opcode, uint8_t type, std::span<const uint8_t> payload, mts_handle_t handle, mts_msg_t *message,
              uint32_t wait) {
    if (mts_send(handle, PM_NODE_SUPERVISOR, pm::owner_of_type(type), opcode, payload.data(),
                 static_cast<uint32_t>(payload.size()), message, 0, 0) == pm::transport_failure) {
        return mts_errno_get(handle);
    }
    const mts_recv_options_t options = pm::answer_to(*message, wait);
    if (mts_drop(handle, message) == pm::transport_failure) return mts_errno_get(handle);
    return mts_recv(handle, message, &options) == pm::transport_failure ? mts_errno_get(handle) : 0;
}

}  // namespace

uint32_t pm_get_if_index_listing(uint8_t type, mts_handle_t handle, mts_msg_t *message, uint32_t wait) {
    PM_ASSERT(is_listed(type));
    const std::array<uint8_t, pm::listing_request_size> payload{type};
    return list(MTS_OPC_PM_GET_IF_INDEX_LISTING, type, payload, handle, message, wait);
}

uint32_t pm_get_startup_if_index_listing(const void *startup_block, uint8_t type, mts_handle_t handle,
                                         mts_msg_t *message, uint32_t wait) {
    if (startup_block == nullptr) return 0;
    PM_ASSERT(is_listed(type));
    std::array<uint8_t, pm::startup_listing_request_size> payload{type};
    std::memcpy(&payload[pm::listing_request_size], startup_block, PM_STARTUP_BLOCK_SIZE);
    return list(MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING, type, payload, handle, message, wait);
}
