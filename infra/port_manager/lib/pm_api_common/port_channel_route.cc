// SPDX-License-Identifier: Apache-2.0
#include "pm_api_common/port_channel_route.h"

#include <array>

#include "platform/if_index.h"
#include "pm_api_common/cmi_exchange.h"
#include "pm_api_common/interface_type.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/service_selection.h"
#include "protocol/byte_order.h"
#include "protocol/channel_member_layout.h"

namespace pm {
namespace {

uint32_t ask_for_member_owner(mts_handle_t handle, if_index_t channel, uint32_t sap, failed_answer then) {
    std::array<uint8_t, channel_member_query_size> query{};
    store(query.data(), hton_if_index(channel == any_channel ? 0 : channel));
    cmi_answer member = exchange({CMI_OPC_GET_CHANNEL_MEMBER, channel_member_query_kind, query, PM_SAP_CHANNEL_MEMBER},
                                 handle, channel_member_query_wait);
    if (member.status != 0) {
        if (then == failed_answer::is_left) static_cast<void>(member.payload.release());
        return PM_SAP_ETHERNET_CHANNEL;
    }
    if (member.payload == nullptr) return sap;
    if (member.size < sizeof(if_index_t)) return PM_SAP_ETHERNET_CHANNEL;
    return pm_get_mts_sap(load_be32(member.payload.get()));
}

}  // namespace

uint32_t route_through_member(mts_handle_t handle, if_index_t if_index, uint32_t sap, failed_answer then) {
    if (!is_port_channel_type(type_of(if_index))) return sap;
    if (if_index_is_port_channel_sub_interface(if_index) != 0) return PM_SAP_ETHERNET_CHANNEL;
    return ask_for_member_owner(handle, if_index, sap, then);
}

}  // namespace pm
