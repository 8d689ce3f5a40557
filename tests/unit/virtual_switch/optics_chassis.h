// SPDX-License-Identifier: Apache-2.0
// optics_chassis.h: a switch with transceivers, whose clock a test turns.
#ifndef TESTS_UNIT_VIRTUAL_SWITCH_OPTICS_CHASSIS_H
#define TESTS_UNIT_VIRTUAL_SWITCH_OPTICS_CHASSIS_H

#include "chassis/chassis_file.h"
#include "chassis/switch_state.h"

// fc1/1 has the usual transceiver, fc1/2 a calibrated one, fc1/3 a cable, fc1/4 none; slots 4 and 5 are empty.
inline constexpr const char *optics_chassis = R"(
[chassis]
name = "optics"
type = 6
slots = 5
[[module]]
slot = 1
kind = "fc"
ports = 5
[[module]]
slot = 2
kind = "ethernet"
ports = 2
[[module]]
slot = 3
kind = "ips"
ports = 1
[[interface]]
name = "mgmt0, loopback1"
[[fcip]]
name = "fcip1"
slot = 3
port = 1
[[port_channel]]
name = "port-channel1"
members = "fc1/5"
[[sub_interface]]
name = "Ethernet2/1.7"
[[transceiver]]
name = "fc1/2"
calibration = "external"
temperature = { value = 69, drift = 8, period = 400 }
voltage.drift = 0
bias.drift = 0
tx_power.drift = 0
rx_power.drift = 0
[[transceiver]]
name = "fc1/3"
technology = "passive copper cable"
[[ports]]
name = "fc1/4"
state = "no-sfp"
[[ports]]
name = "fc1/5"
state = "down"
)";

class optics_switch {
  public:
    optics_switch()
        : state(virtual_switch::parse_chassis(optics_chassis), {},
                {[](const virtual_switch::chassis_model &) {}, [](const virtual_switch::configuration &) {}},
                [this] { return now; }) {}

    virtual_switch::switch_time now{};
    virtual_switch::switch_state state;
};

#endif
