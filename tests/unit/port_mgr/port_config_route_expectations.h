// SPDX-License-Identifier: Apache-2.0
// port_config_route_expectations.h: which services a set of an attribute reaches, by interface, chassis and attribute.
#ifndef UNIT_PORT_MGR_PORT_CONFIG_ROUTE_EXPECTATIONS_H
#define UNIT_PORT_MGR_PORT_CONFIG_ROUTE_EXPECTATIONS_H

#include <cstdint>
#include <string_view>
#include <vector>

namespace unit {

// What a set is about. A chassis type that cannot be read is 0; so is an interface type.
struct set_target {
    uint32_t interface_type;
    uint32_t chassis_type;
    bool is_sub_interface;  // of a port channel
    bool is_ethernet;       // a port channel of Ethernet ports
};

// Who is asked, in order. A set that is refused may have been sent to the Ethernet channel service before.
struct set_route {
    std::vector<uint32_t> services = {};
    bool is_refused = false;
};

// An attribute of a port channel goes to the service that owns the channel (o), to the port manager (p), to the
// Ethernet channel service (e), to either by whether it is of a sub-interface (s), or nowhere unless the Ethernet
// channel service owns all channels (n); x stands for the owner, but never for a sub-interface. A capital letter is an
// attribute that the Ethernet channel service takes where it owns all channels; - is one that cannot be written.
inline constexpr std::string_view channel_attributes =
    "-SXOPOOooo"  // 0 to 9
    "-ooooo-Eoo"  // 10 to 19
    "oooE-o-ooE"  // 20 to 29
    "oOo-ooEo--"  // 30 to 39
    "-oo-Po-ooo"  // 40 to 49
    "ONNOoOOOOO"  // 50 to 59
    "-EE----EO-"  // 60 to 69
    "-OO-----o-"  // 70 to 79
    "oo-oOO";     // 80 to 85
static_assert(channel_attributes.size() == 86);

inline char channel_attribute(uint32_t attribute) {
    return attribute < channel_attributes.size() ? channel_attributes[attribute] : '-';
}

inline bool is_taken_first(uint32_t attribute) {
    return channel_attribute(attribute) >= 'A' && channel_attribute(attribute) <= 'Z';
}

inline bool is_sent_nowhere_else(uint32_t attribute) { return channel_attribute(attribute) == 'N'; }

inline bool owns_all_channels(uint32_t chassis_type) { return chassis_type == 10 || chassis_type == 11; }

// The one service of a port channel's attribute.
inline uint32_t channel_service(const set_target &target, uint32_t attribute) {
    const uint32_t owner = target.is_ethernet || target.is_sub_interface ? 175 : 43;
    switch (channel_attribute(attribute)) {
        case 'E':
            return 175;
        case 'P':
            return 43;
        case 'S':
            return target.is_sub_interface ? 175 : 43;
        default:
            return owner;
    }
}

inline set_route channel_route(const set_target &target, uint32_t attribute) {
    const uint32_t service = channel_service(target, attribute);
    const bool owned = owns_all_channels(target.chassis_type);
    set_route route;
    if (owned && is_taken_first(attribute)) route.services = {175};
    route.is_refused = target.is_sub_interface && (service != 175 || channel_attribute(attribute) == 'X');
    if (!owned && !route.is_refused && !is_sent_nowhere_else(attribute)) route.services = {service};
    return route;
}

// Interfaces of type 26.
inline set_route type_26_route(uint32_t chassis_type, uint32_t attribute) {
    if (owns_all_channels(chassis_type) && !is_taken_first(attribute)) return {};
    if ((chassis_type == 4 || chassis_type == 5) && is_sent_nowhere_else(attribute)) return {};
    return {{175}};
}

// Where an attribute goes that can be written.
inline set_route expected_route(const set_target &target, uint32_t attribute) {
    switch (target.interface_type) {
        case 4:
        case 22:
            return channel_route(target, attribute);
        case 26:
            return type_26_route(target.chassis_type, attribute);
        case 5:
            return {{179}};
        default:
            break;
    }
    if (is_sent_nowhere_else(attribute)) return {};
    return {{target.interface_type == 2 ? 45U : target.interface_type == 20 ? 175U : 43U}};
}

}  // namespace unit

#endif
