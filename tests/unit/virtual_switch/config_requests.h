// SPDX-License-Identifier: Apache-2.0
// config_requests.h: configuration requests to the port services, byte for byte.
#ifndef TESTS_UNIT_VIRTUAL_SWITCH_CONFIG_REQUESTS_H
#define TESTS_UNIT_VIRTUAL_SWITCH_CONFIG_REQUESTS_H

#include <string>
#include <vector>

#include "chassis/switch_state.h"
#include "fake_reply.h"

using bytes = std::vector<uint8_t>;
using named_range = std::pair<const char *, const char *>;

// One interface or sub-interface of every kind, and a second of some.
extern const char *const every_kind;

// Sends a request over CMI.
mts_reply ask_service(virtual_switch::switch_state &state, uint32_t sap, uint32_t opcode, const bytes &payload,
                      uint32_t kind = 3);

// The element of an attribute: a value in as many bytes.
bytes element(uint8_t attribute, uint32_t value, size_t width);
bytes text_element(uint8_t attribute, const std::string &text);

// The element of an attribute that is implemented and no text, in its width.
bytes number_element(uint8_t attribute, uint32_t value);

bytes set_request(const std::vector<named_range> &ranges, const bytes &element);

// Sets an attribute of one interface at the service that takes it. Returns the status.
uint32_t set(virtual_switch::switch_state &state, const char *name, const bytes &element);

// One main interface and its sub-interface numbers.
struct numbers_of {
    const char *main;
    std::vector<uint32_t> numbers;
};
bytes sub_interface_request(uint32_t operation, const std::vector<numbers_of> &entries);

// Returns the status of the answer.
uint32_t configure_sub_interfaces(virtual_switch::switch_state &state, uint32_t operation,
                                  const std::vector<numbers_of> &entries);

bytes loopback_request(const std::vector<named_range> &ranges);

// Returns the status.
uint32_t configure_loopbacks(virtual_switch::switch_state &state, uint32_t kind,
                             const std::vector<named_range> &ranges);

// What an interface reports. It must exist.
const pm_port_info_t &info_of(const virtual_switch::switch_state &state, const char *name);

bool exists(const virtual_switch::switch_state &state, const char *name);

#endif
