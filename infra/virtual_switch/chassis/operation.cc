// SPDX-License-Identifier: Apache-2.0
// What a port operates at, as it follows from its configuration and from the ports it depends on.
#include <algorithm>

#include "chassis/model.h"
#include "platform/if_index.h"

namespace virtual_switch {
namespace {

constexpr uint32_t kbit_in_mbit = 1000;

void put_out_of_operation(pm_port_info_t &info) {
    if (info.admin_trunk_mode != 0) info.oper_trunk_mode = trunk_mode::off;
    info.oper_mode = port_mode::automatic;
    info.oper_speed = speed::unknown;
    info.bandwidth = 0;
    info.fcid = 0;
    std::fill(std::begin(info.lane_state), std::end(info.lane_state), port_state::down);
}

// The speed that a configured one comes to.
uint32_t speed_of(uint32_t admin_speed, uint32_t top_speed) {
    switch (admin_speed) {
        case speed::automatic:
            return top_speed;
        case speed::automatic_to_2000:
            return 2000;
        case speed::automatic_to_4000:
            return 4000;
        case speed::automatic_10_100:
            return 100;
        default:
            return admin_speed;
    }
}

// Ethernet trunks by itself, Fibre Channel together with its peer, which the state tells. A port that must not trunk is
// up without trunking.
void follow_trunk_mode(pm_port_info_t &info, port_kind kind) {
    const bool by_itself = info.admin_trunk_mode == trunk_mode::on && switched_ethernet.contains(kind);
    const bool trunks = info.oper_state == port_state::trunking || by_itself;
    const bool is_on = trunks && info.admin_trunk_mode != trunk_mode::off;
    info.oper_trunk_mode = is_on ? trunk_mode::on : trunk_mode::off;
    if (!is_on) info.oper_state = port_state::up;
}

// The mode that a configured one comes to.
uint32_t mode_of(const pm_port_info_t &info, uint32_t auto_mode) {
    const uint32_t mode = info.admin_mode == port_mode::automatic ? auto_mode : info.admin_mode;
    return mode == port_mode::e && info.oper_state == port_state::trunking ? port_mode::te : mode;
}

// Fills in what no setting gave.
void put_into_operation(pm_port_info_t &info, port_kind kind) {
    const port_kind_traits &traits = traits_of(kind);
    if (info.oper_trunk_mode == 0 && info.admin_trunk_mode != 0) follow_trunk_mode(info, kind);
    if (info.oper_mode == 0) info.oper_mode = mode_of(info, traits.auto_mode);
    if (info.oper_speed == 0) info.oper_speed = speed_of(info.admin_speed, traits.top_speed);
    if (info.bandwidth == 0) info.bandwidth = info.oper_speed * kbit_in_mbit;
    if (info.lane_state[0] == 0) std::fill(std::begin(info.lane_state), std::end(info.lane_state), port_state::up);
}

void take_down(port &down, uint8_t why) {
    down.info.oper_state = port_state::down;
    down.info.state_reason = down.info.admin_state == port_state::up ? why : reason::administratively_down;
    put_out_of_operation(down.info);
}

// Sums stay at the largest number that a record can hold.
uint32_t sum(uint32_t a, uint32_t b) { return a > UINT32_MAX - b ? UINT32_MAX : a + b; }

void settle_port(port &at) {
    if (at.info.admin_state != port_state::up) return take_down(at, reason::administratively_down);
    if (!at.is_up()) return put_out_of_operation(at.info);
    put_into_operation(at.info, at.kind);
}

void settle_channel(chassis_model &model, port &channel, const channel_members &members) {
    channel.info.oper_speed = 0;
    uint32_t bandwidth = 0;
    const port *first_up = nullptr;
    for (const if_index_t member : members) {
        port &at = model.ports.at(member);
        at.info.parent_if_index = channel.info.if_index;
        if (!at.is_up()) continue;
        if (first_up == nullptr) first_up = &at;
        channel.info.oper_speed = sum(channel.info.oper_speed, at.info.oper_speed);
        bandwidth = sum(bandwidth, at.info.bandwidth);
    }
    if (first_up == nullptr || channel.info.admin_state != port_state::up) {
        return take_down(channel, reason::no_operational_members);
    }
    channel.info.oper_state = first_up->info.oper_state;
    channel.info.state_reason = reason::none;
    channel.info.oper_mode = first_up->info.oper_mode;
    if (channel.info.bandwidth == 0) channel.info.bandwidth = bandwidth;
    put_into_operation(channel.info, channel.kind);
}

void settle_sub_interface(port &sub_interface, const port &main) {
    if (!main.is_up()) return take_down(sub_interface, reason::parent_down);
    settle_port(sub_interface);
    if (!sub_interface.is_up()) return;
    sub_interface.info.oper_speed = main.info.oper_speed;
    if (sub_interface.configured.bandwidth == 0) sub_interface.info.bandwidth = main.info.bandwidth;
}

}  // namespace

// Members before their channels, and main interfaces before their sub-interfaces.
void settle(chassis_model &model) {
    for (auto &[if_index, at] : model.ports) {
        at.info = at.configured;
        if (!is_port_channel(if_index) && at.kind != port_kind::sub_interface) settle_port(at);
    }
    for (const auto &[channel, members] : model.members) settle_channel(model, model.ports.at(channel), members);
    for (auto &[if_index, at] : model.ports) {
        if (at.kind == port_kind::sub_interface) {
            settle_sub_interface(at, model.ports.at(if_index_get_mainintf_from_subintf(if_index)));
        }
    }
}

}  // namespace virtual_switch
