// SPDX-License-Identifier: Apache-2.0
// port_members.h: the members of a port that travel, for rivals that name them one by one.
//
// Beside these there are `description`, a text, and the fifth of bb_credit, which is an attribute of its own.
#ifndef BENCH_DECODE_PORT_MEMBERS_H
#define BENCH_DECODE_PORT_MEMBERS_H

// DO(name): the numbers of the base record, then the attributes.
#define PORT_NUMBERS(DO)          \
    DO(if_index)                  \
    DO(admin_mode)                \
    DO(admin_speed)               \
    DO(admin_state)               \
    DO(oper_mode)                 \
    DO(port_vsan)                 \
    DO(rx_buf_size)               \
    DO(oper_state)                \
    DO(fcid)                      \
    DO(ip_address)                \
    DO(ip_mask)                   \
    DO(oper_speed)                \
    DO(mtu)                       \
    DO(bandwidth)                 \
    DO(state_reason)              \
    DO(admin_trunk_mode)          \
    DO(oper_trunk_mode)           \
    DO(beacon_mode)               \
    DO(service_state)             \
    DO(port_type)                 \
    DO(down_on_link_failure)      \
    DO(parent_if_index)           \
    DO(rate_mode)                 \
    DO(auto_neg)                  \
    DO(duplex)                    \
    DO(phy_layer)                 \
    DO(encap)                     \
    DO(bb_scn)                    \
    DO(bb_credit_multiplier)      \
    DO(ec_bb_credit)              \
    DO(fcot_present)              \
    DO(bb_credit_performance_buf) \
    DO(promiscuous)

// DO(name, count): the lists of the base record.
#define PORT_LISTS(DO) \
    DO(lane_state, 4)  \
    DO(bb_credit, 4)   \
    DO(snmp_trap, 2)   \
    DO(link_error_count, 5)

#endif
