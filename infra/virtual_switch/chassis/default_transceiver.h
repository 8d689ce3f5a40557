// SPDX-License-Identifier: Apache-2.0
// default_transceiver.h: the transceivers of ports about which the chassis file says nothing.
#ifndef VIRTUAL_SWITCH_CHASSIS_DEFAULT_TRANSCEIVER_H
#define VIRTUAL_SWITCH_CHASSIS_DEFAULT_TRANSCEIVER_H

#include "chassis/port_kind.h"
#include "chassis/transceiver_plan.h"

namespace virtual_switch {

// For a kind that takes a transceiver.
const transceiver_plan &default_transceiver(port_kind kind);

// What to count the serial number of a default up by, so that each port has another one.
uint32_t serial_number_of_place(if_index_t if_index);

}  // namespace virtual_switch

#endif
