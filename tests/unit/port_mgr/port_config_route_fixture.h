// SPDX-License-Identifier: Apache-2.0
// port_config_route_fixture.h: sets of attributes of one interface on a chassis, and where they are sent.
#ifndef UNIT_PORT_MGR_PORT_CONFIG_ROUTE_FIXTURE_H
#define UNIT_PORT_MGR_PORT_CONFIG_ROUTE_FIXTURE_H

#include "port_config_fixture.h"
#include "port_config_route_expectations.h"

namespace unit {

inline constexpr const char *refusal = "Error configuring invalid parameter on ether-channel sub-interface\n";
// Chassis that fail to tell their type, with nothing or with a type all the same.
inline constexpr uint32_t unreadable = 1000;
inline constexpr uint32_t unreadable_10 = 1010;

class set_route_test : public set_test {
  protected:
    // Sets up the platform for a target.
    void describe(const set_target &target, uint32_t chassis) {
        interfaces.chassis_result = chassis >= unreadable ? -1 : 0;
        interfaces.chassis_type = chassis % unreadable;
        if (chassis == unreadable) interfaces.chassis_type.reset();
        interfaces.map_count = loader.member_count = 1;
        interfaces.map_member = loader.member = target.is_ethernet ? 0x02000000 : 0x01000000;
        interfaces.channel_sub_interfaces.clear();
        if (target.is_sub_interface) interfaces.channel_sub_interfaces = {index};
    }

    [[nodiscard]] set_arguments arguments(uint32_t attribute) const {
        return {.ranges = {{index, index + 5}, {0x02000000, 0x05000000}}, .type = static_cast<uint8_t>(attribute)};
    }

    [[nodiscard]] std::string sent_to(uint32_t sap, uint32_t attribute) const {
        return queried(2826, 3, set_request_of(arguments(attribute)), sap);
    }

    static calls exchanges() {
        calls log = support::call_log::take();
        std::erase_if(log, [](const std::string &call) { return !call.starts_with("cmi_req_resp"); });
        return log;
    }

    if_index_t index = 0x04001000;
};

}  // namespace unit

#endif
