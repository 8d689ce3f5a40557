// SPDX-License-Identifier: Apache-2.0
#include "chassis/default_transceiver.h"

#include "chassis/transceiver_keys.h"
#include "platform/if_index.h"

namespace virtual_switch {
namespace {

// As a chassis file would say it.
constexpr std::string_view common = R"(
form = "SFP"
connector = "LC"
vendor = "INVENTED OPTICS"
oui = "02:50:4d"
revision = "A"
date = "2024-05-17"
calibration = "internal"
temperature = { value = 34, high_alarm = 75, high_warning = 70, low_warning = 0, low_alarm = -5, drift = 2, period = 900 }
voltage = { value = 3.3, high_alarm = 3.6, high_warning = 3.5, low_warning = 3.1, low_alarm = 3.0, drift = 0.01, period = 300 }
bias = { value = 6.5, high_alarm = 12, high_warning = 11, low_warning = 2, low_alarm = 1, drift = 0.2, period = 900 }
tx_power = { value = -2.5, high_alarm = 1.7, high_warning = -1.3, low_warning = -7.3, low_alarm = -11.3, drift = 0.1, period = 900 }
rx_power = { value = -3.5, high_alarm = 3, high_warning = 0, low_warning = -11.1, low_alarm = -15.1, drift = 0.3, period = 600 }
)";

constexpr std::string_view fc_8g = R"(
technology = "short wave laser"
fc_speeds = [2000, 4000, 8000]
bit_rate = 8500
wavelength = 850
length_om1 = 20
length_om2 = 50
length_om3 = 150
part_number = "IO-FC8-SW"
serial_number = "IOF00000000"
)";

constexpr std::string_view ethernet_10g = R"(
technology = "10GBASE-SR"
bit_rate = 10300
wavelength = 850
length_om1 = 30
length_om2 = 80
length_om3 = 300
part_number = "IO-10G-SR"
serial_number = "IOE00000000"
)";

transceiver_plan plan_of(std::string_view text) {
    const document_value table{0, parse_document(std::string(common).append(text))};
    const section from("default", table, {}, transceiver_keys());
    transceiver_plan plan;
    apply_page_keys(from, plan);
    apply_quantity_keys(from, plan);
    return plan;
}

}  // namespace

const transceiver_plan &default_transceiver(port_kind kind) {
    static const transceiver_plan of_fc = plan_of(fc_8g);
    static const transceiver_plan of_ethernet = plan_of(ethernet_10g);
    return kind == port_kind::fc ? of_fc : of_ethernet;
}

uint32_t serial_number_of_place(if_index_t if_index) {
    constexpr uint32_t ports_in_slot = 1000;
    uint8_t slot = 0;
    uint8_t port = 0;
    if_index_get_slot(if_index, &slot);
    if_index_get_port(if_index, &port);
    return (slot + 1u) * ports_in_slot + port + 1;
}

}  // namespace virtual_switch
