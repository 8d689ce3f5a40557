// SPDX-License-Identifier: Apache-2.0
#include "config_requests.h"

#include "names.h"
#include "platform/bitset.h"
#include "port_mgr/opcodes.h"
#include "protocol/config_value_kinds.h"
#include "services/port_service.h"

const char *const every_kind = R"(
[chassis]
name = "test"
type = 6
slots = 6
[[module]]
slot = 1
kind = "fc"
ports = 3
[[module]]
slot = 2
kind = "ethernet"
ports = 4
[[module]]
slot = 3
kind = "ips"
ports = 1
[[module]]
slot = 4
kind = "slot-port"
ports = 1
[[module]]
slot = 5
kind = "ethernet-sfp"
ports = 1
[[interface]]
name = "mgmt0, loopback1, if254-1"
[[fcip]]
name = "fcip1"
slot = 3
port = 1
[[port_channel]]
name = "port-channel1"
members = "fc1/3"
[[port_channel]]
name = "port-channel2"
members = "Ethernet2/3-4"
[[port_channel]]
name = "if22-4"
[[sub_interface]]
name = "Ethernet2/1.5-6, port-channel2.7"
)";

namespace {

void append_be32(bytes &to, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) to.push_back(static_cast<uint8_t>(value >> shift));
}

void append_ranges(bytes &to, const std::vector<named_range> &ranges) {
    for (const auto &[first, last] : ranges) {
        append_be32(to, index_of(first));
        append_be32(to, index_of(last));
    }
}

}  // namespace

mts_reply ask_service(virtual_switch::switch_state &state, uint32_t sap, uint32_t opcode, const bytes &payload,
                      uint32_t kind) {
    const mts_request_t request{0xfe000000,     sap, opcode, 1, kind, static_cast<uint32_t>(payload.size()),
                                payload.data(), {}};
    mts_reply reply;
    virtual_switch::port_service_context context{&state, {}};
    virtual_switch::port_service(&context, &request, &reply);
    return reply;
}

bytes element(uint8_t attribute, uint32_t value, size_t width) {
    bytes made{attribute, static_cast<uint8_t>(width)};
    for (size_t i = width; i > 0; --i) made.push_back(i > 4 ? uint8_t{0} : static_cast<uint8_t>(value >> 8 * (i - 1)));
    return made;
}

bytes text_element(uint8_t attribute, const std::string &text) {
    bytes made{attribute, 81};
    made.insert(made.end(), text.begin(), text.end());
    made.resize(2 + 81);
    return made;
}

bytes number_element(uint8_t attribute, uint32_t value) {
    return element(attribute, value, pm::width_of(pm::written_kind(attribute)));
}

bytes set_request(const std::vector<named_range> &ranges, const bytes &element) {
    bytes made(60, 'u');
    made.resize(100, 'p');
    made.push_back(static_cast<uint8_t>(ranges.size() >> 8));
    made.push_back(static_cast<uint8_t>(ranges.size()));
    append_ranges(made, ranges);
    made.insert(made.end(), element.begin(), element.end());
    return made;
}

uint32_t set(virtual_switch::switch_state &state, const char *name, const bytes &element) {
    const uint32_t sap = state.model().owner_sap(index_of(name));
    return ask_service(state, sap, CMI_OPC_PM_SET_PORT_CONFIG, set_request({{name, name}}, element)).word(0);
}

bytes sub_interface_request(uint32_t operation, const std::vector<numbers_of> &entries) {
    bytes made;
    for (const uint32_t word : {operation, uint32_t{0}, static_cast<uint32_t>(entries.size())}) append_be32(made, word);
    for (const numbers_of &entry : entries) {
        append_be32(made, 0);
        append_be32(made, index_of(entry.main));
        made.resize(made.size() + 12);
        bitset_t numbers{512, {}};
        for (const uint32_t number : entry.numbers) bitset_set_bit(&numbers, number);
        const auto *const raw = reinterpret_cast<const uint8_t *>(&numbers);
        made.insert(made.end(), raw, raw + sizeof numbers);
    }
    return made;
}

uint32_t configure_sub_interfaces(virtual_switch::switch_state &state, uint32_t operation,
                                  const std::vector<numbers_of> &entries) {
    return ask_service(state, 175, CMI_OPC_PM_CONFIG_SUB_INTF, sub_interface_request(operation, entries)).word(4);
}

bytes loopback_request(const std::vector<named_range> &ranges) {
    bytes made;
    append_be32(made, static_cast<uint32_t>(ranges.size()));
    append_ranges(made, ranges);
    return made;
}

uint32_t configure_loopbacks(virtual_switch::switch_state &state, uint32_t kind,
                             const std::vector<named_range> &ranges) {
    return ask_service(state, 175, CMI_OPC_PM_CONFIG_LOOPBACK, loopback_request(ranges), kind).failure;
}

const pm_port_info_t &info_of(const virtual_switch::switch_state &state, const char *name) {
    return state.model().ports.at(index_of(name)).info;
}

bool exists(const virtual_switch::switch_state &state, const char *name) {
    return state.model().find(index_of(name)) != nullptr;
}
