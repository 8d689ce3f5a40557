// SPDX-License-Identifier: Apache-2.0
#include "chassis/model.h"

#include <algorithm>

#include "platform/if_index.h"
#include "port_mgr/cpp/names.hpp"
#include "port_mgr/opcodes.h"
#include "protocol/config_layout.h"
#include "protocol/interface_owner.h"
#include "protocol/line_card_node.h"

namespace virtual_switch {

bool port::is_up() const { return info.oper_state == port_state::up || info.oper_state == port_state::trunking; }

optical_link port::link() const {
    const bool lost_its_peer =
        configured.state_reason == reason::not_connected || configured.state_reason == reason::loss_of_signal;
    return {.is_transmitting = info.admin_state == port_state::up,
            .has_light = configured.oper_state != port_state::down || !lost_its_peer};
}

uint32_t line_card::node() const { return pm::line_card_node(slot); }

const port *chassis_model::find(if_index_t if_index) const {
    const auto found = ports.find(if_index);
    return found == ports.end() ? nullptr : &found->second;
}

const transceiver *chassis_model::plugged_into(if_index_t if_index) const {
    const port *const at = find(if_index);
    const auto found = transceivers.find(if_index);
    return at == nullptr || at->info.fcot_present == 0 || found == transceivers.end() ? nullptr : &found->second;
}

const port *chassis_model::next(if_index_t if_index) const {
    const auto found = ports.upper_bound(if_index);
    return found == ports.end() ? nullptr : &found->second;
}

if_index_t chassis_model::first_member(if_index_t channel) const {
    const auto found = members.find(channel);
    return found == members.end() || found->second.empty() ? 0 : found->second.front();
}

uint32_t chassis_model::owner_sap(if_index_t if_index) const {
    if (!is_port_channel(if_index)) return pm::owner_of_type(type_of(if_index));
    const bool of_ethernet =
        if_index_is_port_channel_sub_interface(if_index) != 0 || type_of(first_member(if_index)) == IF_TYPE_ETHERNET;
    return of_ethernet ? PM_SAP_ETHERNET_CHANNEL : PM_SAP_PORT_MANAGER;
}

uint8_t type_of(if_index_t if_index) {
    uint8_t type = IF_TYPE_NONE;
    if_index_get_type(if_index, &type);
    return type;
}

bool is_port_channel(if_index_t if_index) { return pm::is_port_channel_type(type_of(if_index)); }

bool is_sub_interface(if_index_t if_index) { return if_index_get_mainintf_from_subintf(if_index) != if_index; }

bool has_reserved_number(if_index_t if_index) {
    uint16_t number = 0;
    if_index_get_sub_intf(if_index, &number);
    return std::ranges::find(pm::reserved_sub_interfaces, number) != pm::reserved_sub_interfaces.end();
}

std::string name_of(if_index_t if_index) { return port_mgr::interface_name(if_index); }

std::string quoted_name(if_index_t if_index) { return std::string("'").append(name_of(if_index)).append("'"); }

}  // namespace virtual_switch
