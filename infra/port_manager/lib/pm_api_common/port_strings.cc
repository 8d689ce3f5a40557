// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_strings.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "pm_api_common/port_string_tables.h"

char local_temp_string_buffer[200];

namespace {

using namespace pm;

// Caller's buffer

constexpr size_t speed_limit = 80;
constexpr size_t credit_limit = 80;
constexpr size_t extended_credit_limit = 40;
constexpr size_t number_limit = 20;
constexpr size_t setting_limit = 50;

constexpr uint32_t mbit_in_gbit = 1000;

constexpr value_text<int32_t> promiscuous_modes[] = {{1, "promiscuos mode on"}, {2, "promiscuos mode off"}};
constexpr value_text<int32_t> auto_negotiations[] = {{1, "auto-negotiate on"}, {2, "auto-negotiate off"}};

constexpr uint32_t mode_e_bit = 1u << 30;
constexpr uint32_t mode_fx_bit = 1u << 31;

template <typename Value, size_t Rows>
const char *text_or_unknown(const value_text<Value> (&table)[Rows], Value value) {
    if (const char *text = text_of(table, value, nullptr)) return text;
    constexpr size_t text_limit = 75;
    std::memset(local_temp_string_buffer, 0, sizeof local_temp_string_buffer);
    std::snprintf(local_temp_string_buffer, text_limit, "Unknown(%d)", int32_t{value});
    return local_temp_string_buffer;
}

__attribute__((format(printf, 3, 4))) char *print(char *buf, size_t limit, const char *format, ...) {
    va_list values;
    va_start(values, format);
    std::vsnprintf(buf, limit, format, values);
    va_end(values);
    return buf;
}

char *print_or_default(char *buf, size_t limit, int32_t number, int32_t default_number) {
    return number == default_number ? print(buf, limit, "default") : print(buf, limit, "%d", number);
}

}  // namespace

const char *port_mode_string(int32_t mode) { return text_or_unknown(port_modes, mode); }

const char *port_service_state_string(int32_t state) { return text_or_unknown(service_states, state); }

const char *port_type_string(int32_t type) { return text_or_unknown(port_types, type); }

const char *port_beacon_mode_string(uint8_t mode) { return text_or_unknown(on_off<uint8_t>, mode); }

const char *port_bb_scn_cfg_string(uint8_t config) { return text_or_unknown(on_off<uint8_t>, config); }

const char *port_rate_mode_string(uint8_t mode) { return text_or_unknown(rate_modes, mode); }

const char *port_ignore_param_string(uint8_t param) { return text_or_unknown(ignore_params, param); }

const char *port_trunking_mode_string(uint8_t mode) { return text_or_unknown(trunking_modes, mode); }

const char *port_promiscuous_string(int32_t promiscuous) { return text_or_unknown(on_off<int32_t>, promiscuous); }

const char *port_auto_neg_string(int32_t auto_neg) { return text_or_unknown(on_off<int32_t>, auto_neg); }

const char *port_snmp_trap_string(uint8_t trap) { return text_or_unknown(on_off<uint8_t>, trap); }

const char *port_down_on_link_failure_string(int32_t setting) {
    return text_or_unknown(down_on_link_failure_settings, setting);
}

const char *port_state_string(uint8_t state) { return text_of(port_states, state, "unknown"); }

const char *port_duplex_mode_string(uint8_t mode) { return text_of(duplex_modes, mode, "unknown"); }

const char *port_phy_layer_string(uint8_t layer) { return text_of(phy_layers, layer, "Unknown"); }

const char *port_encap_string(uint8_t encap) { return text_of(encaps, encap, "unknown"); }

const char *port_flowctrl_mode_string(uint16_t mode) { return text_of(flowctrl_modes, mode, "off"); }

const char *port_track_mode_string(int32_t mode) { return text_of(track_modes, mode, ""); }

const char *pm_delayed_trap_state_string(int32_t state) { return text_of(delayed_trap_states, state, "unknown"); }

const char *port_owner_string(const char *owner) { return owner != nullptr ? owner : ""; }

char *port_speed_string(uint32_t speed, char *buf) {
    if (const char *text = text_of(speeds, speed, nullptr)) return print(buf, speed_limit, "%s", text);
    return print(buf, speed_limit, "%d Gbps", static_cast<int32_t>(speed / mbit_in_gbit));
}

char *port_speed_string_gbps(int32_t speed, char *buf) {
    if (const char *text = text_of(speeds_gbps, speed, nullptr)) return print(buf, speed_limit, "%s", text);
    return print(buf, speed_limit, "%d", speed / static_cast<int32_t>(mbit_in_gbit));
}

// Bit 30 wins over bit 31, which then stays in the number.
char *port_bb_credit_string(int32_t credit, char *buf) {
    const auto bits = static_cast<uint32_t>(credit);
    if ((bits & mode_e_bit) != 0)
        return print(buf, credit_limit, "%d (mode E)", static_cast<int32_t>(bits & ~mode_e_bit));
    if ((bits & mode_fx_bit) != 0)
        return print(buf, credit_limit, "%d (mode Fx)", static_cast<int32_t>(bits & ~mode_fx_bit));
    return print_or_default(buf, credit_limit, credit, 0);
}

char *port_bb_credit_multiplier_string(int32_t multiplier, char *buf) {
    return print_or_default(buf, number_limit, multiplier, -1);
}

char *port_bb_credit_performance_buf_string(int32_t buffers, char *buf) {
    return print_or_default(buf, number_limit, buffers, 0);
}

char *port_ec_bb_credit_string(int32_t credit, char *buf) {
    return print_or_default(buf, extended_credit_limit, credit, 0);
}

char *port_rxbufsize_string(uint16_t size, char *buf) { return print(buf, number_limit, "%d", size); }

char *port_promiscuous_mode_string(int32_t mode, char *buf) {
    return print(buf, setting_limit, "%s", text_of(promiscuous_modes, mode, "promiscuos mode unknown"));
}

char *port_auto_negotiate_string(int32_t auto_neg, char *buf) {
    return print(buf, setting_limit, "%s", text_of(auto_negotiations, auto_neg, "auto-negotiate unknown"));
}
