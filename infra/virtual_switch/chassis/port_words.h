// SPDX-License-Identifier: Apache-2.0
// port_words.h: the words that a chassis file may use for the values of ports.
#ifndef VIRTUAL_SWITCH_CHASSIS_PORT_WORDS_H
#define VIRTUAL_SWITCH_CHASSIS_PORT_WORDS_H

#include <array>

#include "chassis/port_kind.h"
#include "chassis/value_reader.h"

namespace virtual_switch {

inline constexpr std::array mode_words{
    named_value{"auto", 0x1},      named_value{"SD", 0x2},
    named_value{"E", 0x4},         named_value{"TE", 0x8},
    named_value{"TL", 0x10},       named_value{"F", 0x20},
    named_value{"FL", 0x40},       named_value{"FX", 0x60},
    named_value{"IPS", 0x200},     named_value{"ISCSI", 0x400},
    named_value{"NP", 0x4000},     named_value{"ST", 0x8000},
    named_value{"FA", 0x80000},    named_value{"trunk", 0x100000},
    named_value{"TF", 0x4000000},  named_value{"private-vlan host", 0x400000},
    named_value{"TNP", 0x8000000}, named_value{"private-vlan promiscuous", 0x800000},
};

inline constexpr std::array speed_words{
    named_value{"auto", speed::automatic},
    named_value{"auto max 2000", speed::automatic_to_2000},
    named_value{"auto max 4000", speed::automatic_to_4000},
    named_value{"auto 10 100", speed::automatic_10_100},
};

// Those reasons whose short keyword says which one is meant; the others go by number.
inline constexpr std::array reason_words{
    named_value{"none", 2},
    named_value{"hwFailure", 3},
    named_value{"diagFailure", 4},
    named_value{"errDisabled", 5},
    named_value{"swFailure", 6},
    named_value{"notConnected", 7},
    named_value{"offline", 8},
    named_value{"nonPcpt", 9},
    named_value{"init", 10},
    named_value{"inactive", 11},
    named_value{"down", 12},
    named_value{"channelDown", 13},
    named_value{"suspended", 14},
    named_value{"channelUpdate", 15},
    named_value{"rcfInProgress", 16},
    named_value{"isolated", 17},
    named_value{"parentDown", 26},
    named_value{"srcUnbound", 27},
    named_value{"ifRemoved", 28},
    named_value{"sfpAbsent", 29},
    named_value{"modUpgrade", 40},
    named_value{"noOperMembers", 43},
    named_value{"peerDown", 47},
    named_value{"tcpDown", 49},
    named_value{"parentEthDown", 52},
    named_value{"ficonDown", 61},
    named_value{"sfpErr", 99},
    named_value{"gracefulShutdown", 107},
    named_value{"trackedPortDown", 115},
    named_value{"outOfServc", 122},
    named_value{"authFail", 123},
    named_value{"extDisabled", 141},
    named_value{"authPend", 142},
    named_value{"lcoffline", 191},
    named_value{"modRemoved", 255},
};

inline constexpr std::array admin_state_words{named_value{"up", port_state::up}, named_value{"down", port_state::down}};
inline constexpr std::array on_off_words{named_value{"on", 1}, named_value{"off", 2}};
inline constexpr std::array trunk_words{named_value{"off", trunk_mode::off}, named_value{"on", trunk_mode::on},
                                        named_value{"auto", trunk_mode::automatic}};
inline constexpr std::array duplex_words{named_value{"half", 1}, named_value{"full", 2}, named_value{"auto", 3}};
inline constexpr std::array rate_words{named_value{"dedicated", 1}, named_value{"shared", 2}};
inline constexpr std::array flow_control_words{named_value{"off", 0}, named_value{"on", 1}, named_value{"desired", 4}};
inline constexpr std::array phy_layer_words{named_value{"FC", 1},         named_value{"ethernet", 2},
                                            named_value{"FC virtual", 3}, named_value{"in-band", 4},
                                            named_value{"EOBC", 5},       named_value{"management", 6}};
inline constexpr std::array encap_words{named_value{"normal", 1}, named_value{"eisl", 2}, named_value{"internal", 3}};
inline constexpr std::array service_state_words{named_value{"in service", 0}, named_value{"out of service", 1}};
inline constexpr std::array port_type_words{named_value{"external", 1}, named_value{"internal", 2},
                                            named_value{"hidden", 3}};
inline constexpr std::array link_failure_words{named_value{"enabled", 3}, named_value{"disabled", 4}};
inline constexpr std::array track_words{named_value{"operationally-bound", 0}, named_value{"force-shut", 1}};
inline constexpr std::array delayed_trap_words{named_value{"disabled", 1}, named_value{"FX", 2}};
inline constexpr std::array yes_no_words{named_value{"yes", 1}, named_value{"no", 0}};

}  // namespace virtual_switch

#endif
