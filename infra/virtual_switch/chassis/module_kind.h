// SPDX-License-Identifier: Apache-2.0
// module_kind.h: the kinds of modules that fit into a chassis.
#ifndef VIRTUAL_SWITCH_CHASSIS_MODULE_KIND_H
#define VIRTUAL_SWITCH_CHASSIS_MODULE_KIND_H

#include <array>

#include "chassis/port_kind.h"
#include "chassis/value_reader.h"
#include "platform/if_index.h"

namespace virtual_switch {

struct module_kind {
    std::string_view word;
    uint8_t type;  // of the interfaces that the ports are
    port_kind ports;
    uint32_t most_ports;
    uint16_t card_type;  // unless the file says otherwise
};

// The ports of an "ips" module carry FCIP tunnels; as many as fit a tunnel's port base.
inline constexpr std::array module_kinds{
    module_kind{"fc", IF_TYPE_FC, port_kind::fc, 128, 18},
    module_kind{"ethernet", IF_TYPE_ETHERNET, port_kind::ethernet, 128, 50},
    module_kind{"ips", IF_TYPE_ETHERNET_KIND, port_kind::ips, 32, 41},
    module_kind{"slot-port", IF_TYPE_SLOT_PORT, port_kind::slot_port, 128, 60},
    module_kind{"ethernet-sfp", IF_TYPE_ETHERNET_SFP, port_kind::ethernet_sfp, 128, 61},
};

inline constexpr auto module_kind_words = words_of(module_kinds, &module_kind::word);

}  // namespace virtual_switch

#endif
