// SPDX-License-Identifier: Apache-2.0
#include "pm_api_common/port_channel_route.h"

#include <array>

#include "platform/cmi.h"
#include "platform/if_index.h"
#include "pm_api_common/heap.h"
#include "pm_api_common/interface_type.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/service_selection.h"
#include "protocol/byte_order.h"
#include "protocol/channel_member_layout.h"

namespace pm {
namespace {

bool is_port_channel(if_index_t if_index) {
    uint8_t type = IF_TYPE_NONE;
    if_index_get_type(if_index, &type);
    return is_port_channel_type(type);
}

uint32_t ask_for_member_owner(mts_handle_t handle, if_index_t channel, uint32_t sap) {
    std::array<uint8_t, channel_member_query_size> query{};
    store(query.data(), hton_if_index(channel == any_channel ? 0 : channel));
    void *response = nullptr;
    uint32_t length = query.size();
    if (cmi_req_resp(CMI_OPC_GET_CHANNEL_MEMBER, channel_member_query_kind, query.data(), &response, &length, 0, 0,
                     PM_SAP_CHANNEL_MEMBER, handle, channel_member_query_wait) != 0) {
        return PM_SAP_ETHERNET_CHANNEL;
    }
    const heap_block<void> owner(response);
    if (response == nullptr) return sap;
    if (length < sizeof(uint32_t)) return PM_SAP_ETHERNET_CHANNEL;
    return pm_get_mts_sap(load_be32(response));
}

}  // namespace

uint32_t route_through_member(mts_handle_t handle, if_index_t if_index, uint32_t sap) {
    if (!is_port_channel(if_index)) return sap;
    if (if_index_is_port_channel_sub_interface(if_index) != 0) return PM_SAP_ETHERNET_CHANNEL;
    return ask_for_member_owner(handle, if_index, sap);
}

}  // namespace pm
