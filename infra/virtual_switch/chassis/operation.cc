// SPDX-License-Identifier: Apache-2.0
// What a port operates at, as it follows from its configuration and from the ports it depends on.
#include <algorithm>

#include "chassis/model.h"
#include "platform/if_index.h"

namespace virtual_switch {
namespace {

constexpr uint32_t kbit_in_mbit = 1000;

void put_out_of_operation(pm_port_info_t &info) {
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

// Fills in what no setting gave.
void put_into_operation(pm_port_info_t &info, const port_kind_traits &traits) {
    if (info.oper_mode == 0)
        info.oper_mode = info.admin_mode == port_mode::automatic ? traits.auto_mode : info.admin_mode;
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

void settle_channel(chassis_model &model, port &channel, const channel_members &members) {
    channel.info.oper_speed = 0;
    channel.info.bandwidth = 0;
    const port *first_up = nullptr;
    for (const if_index_t member : members) {
        port &at = model.ports.at(member);
        at.info.parent_if_index = channel.info.if_index;
        if (!at.is_up()) continue;
        if (first_up == nullptr) first_up = &at;
        channel.info.oper_speed = sum(channel.info.oper_speed, at.info.oper_speed);
        channel.info.bandwidth = sum(channel.info.bandwidth, at.info.bandwidth);
    }
    if (first_up == nullptr || channel.info.admin_state != port_state::up) {
        return take_down(channel, reason::no_operational_members);
    }
    channel.info.oper_state = first_up->info.oper_state;
    channel.info.state_reason = reason::none;
    channel.info.oper_mode = first_up->info.oper_mode;
    put_into_operation(channel.info, traits_of(channel.kind));
}

void settle_sub_interface(port &sub_interface, const port &main) {
    if (!main.is_up()) return take_down(sub_interface, reason::parent_down);
    if (!sub_interface.is_up()) return;
    sub_interface.info.oper_speed = main.info.oper_speed;
    sub_interface.info.bandwidth = main.info.bandwidth;
}

}  // namespace

void settle(chassis_model &model) {
    for (auto &[if_index, at] : model.ports) {
        at.info = at.configured;
        if (at.is_up())
            put_into_operation(at.info, traits_of(at.kind));
        else
            put_out_of_operation(at.info);
    }
    for (const auto &[channel, members] : model.members) settle_channel(model, model.ports.at(channel), members);
    for (auto &[if_index, at] : model.ports) {
        if (at.kind == port_kind::sub_interface) {
            settle_sub_interface(at, model.ports.at(if_index_get_mainintf_from_subintf(if_index)));
        }
    }
}

}  // namespace virtual_switch
