// SPDX-License-Identifier: Apache-2.0
// config_layout.h: what the configuration requests hold.
#ifndef PROTOCOL_CONFIG_LAYOUT_H
#define PROTOCOL_CONFIG_LAYOUT_H

#include <array>
#include <cstddef>

#include "port_mgr/sub_interface_config.h"

namespace pm {

// A set request, pm_set_port_config_req_t: two texts, the number of ranges in 16 bits, the ranges, and one element:
// type, length, value.
inline constexpr size_t first_text_size = 60;
inline constexpr size_t second_text_size = 40;
inline constexpr size_t set_request_header_size = first_text_size + second_text_size + sizeof(uint16_t);
inline constexpr size_t element_header_size = 2;

inline constexpr uint32_t set_request_kind = 3;

// A sub-interface request, pm_config_sub_intf_req_t: operation, a reserved word, the number of entries, and the
// entries. The bit set of an entry states that it has so many bytes. The answer holds a reserved word and the status.
inline constexpr size_t sub_interface_request_header_size = sizeof(pm_config_sub_intf_req_t);
inline constexpr size_t sub_interface_entry_size = sizeof(pm_sub_intf_entry_t);
inline constexpr uint32_t sub_interface_set_size = 512;
inline constexpr uint32_t sub_interface_request_kind = 3;
inline constexpr size_t sub_interface_answer_status = 4;
inline constexpr size_t sub_interface_answer_size = 8;

// Sub-interface numbers that no interface may have.
inline constexpr std::array<uint32_t, 4> reserved_sub_interfaces{0, 1, 4094, 4095};

// A loopback request, pm_config_loopback_req_t: the number of ranges and the ranges.
inline constexpr size_t loopback_request_header_size = 4;

// A request for a module's interfaces: the module's number and an interface type, a byte each.
inline constexpr size_t module_listing_request_size = 2;
inline constexpr uint32_t module_listing_request_kind = 1;

}  // namespace pm

#endif
