// SPDX-License-Identifier: Apache-2.0
#include "bench/text/strings.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <type_traits>
#include <vector>

#include "port_mgr/port_mgr_common.h"

namespace bench {

namespace {

template <typename Value>
using values = std::vector<std::type_identity_t<Value>>;

// One call after the other over the values; none can be left out, since each text is looked at.
template <typename Value, typename Text>
void add(contest &contest, const char *name, Text (*text_of)(Value), const values<Value> &known) {
    const auto call = [text_of, known] {
        for (const Value value : known) touch(text_of(value));
    };
    contest.add(name, call, static_cast<double>(known.size()));
}

template <typename Value>
void add(contest &contest, const char *name, char *(*text_of)(Value, char *), const values<Value> &known) {
    const auto call = [text_of, known] {
        char text[80];
        for (const Value value : known) touch(text_of(value, text));
    };
    contest.add(name, call, static_cast<double>(known.size()));
}

#define ADD(function, ...) add(contest, #function, function, {__VA_ARGS__})

void add_constant_or_shared(contest &contest) {
    ADD(port_mode_string, 0x1, 0x2, 0x4, 0x8, 0x10, 0x20, 0x40, 0x80, 0x100, 0x200, 0x400, 0x4000, 0x8000, 0x80000,
        0x100000, 0x400000, 0x800000, 0x4000000, 0x8000000, 0xffff, 0xfffb, 0xfe3f, 0x60);
    ADD(port_service_state_string, 0, 1);
    ADD(port_type_string, 1, 2, 3);
    ADD(port_beacon_mode_string, 1, 2);
    ADD(port_bb_scn_cfg_string, 1, 2);
    ADD(port_rate_mode_string, 1, 2);
    ADD(port_ignore_param_string, 1, 2);
    ADD(port_trunking_mode_string, 1, 2, 3);
    ADD(port_promiscuous_string, 1, 2);
    ADD(port_auto_neg_string, 1, 2);
    ADD(port_snmp_trap_string, 1, 2);
    ADD(port_down_on_link_failure_string, 3, 4);
    add(contest, "port_mode_string, an unknown value", port_mode_string, {3});
}

void add_constant(contest &contest) {
    ADD(port_state_string, 1, 2, 4, 8, 16, 255, 0);
    ADD(port_duplex_mode_string, 1, 2, 3, 0);
    ADD(port_phy_layer_string, 1, 2, 3, 4, 5, 6, 0);
    ADD(port_encap_string, 1, 2, 3, 0);
    ADD(port_flowctrl_mode_string, 1, 2, 4, 8, 0);
    ADD(port_track_mode_string, 0, 1, 2);
    ADD(pm_delayed_trap_state_string, 1, 2, 0);
    ADD(port_owner_string, "port manager", nullptr);
    ADD(pm_cli_dump_port_speed, 0, 1, 2, 10, 100, 110, 1000, 2000, 4000, 8000, 10000, 16000);
    ADD(pm_cli_dump_port_duplex_mode, 1, 2, 3);
    ADD(pm_cli_dump_port_rate_mode, 1, 2);
    ADD(pm_cli_dump_trunk_mode, 1, 2, 3);
}

void add_in_callers_buffer(contest &contest) {
    ADD(port_speed_string, 0, 1, 2, 10, 100, 110, 1000, 2000, 4000, 8000, 16000, UINT32_MAX);
    ADD(port_speed_string_gbps, 0, 1, 2, 10, 100, 1000, 2000, 4000, 8000, 16000, -1);
    ADD(port_bb_credit_string, 0, 500, 500 | 1 << 30, INT32_MIN | 500);
    ADD(port_bb_credit_multiplier_string, -1, 4);
    ADD(port_bb_credit_performance_buf_string, 0, 145);
    ADD(port_ec_bb_credit_string, 0, 1000);
    ADD(port_rxbufsize_string, 2112);
    ADD(port_promiscuous_mode_string, 1, 2, 0);
    ADD(port_auto_negotiate_string, 1, 2, 0);
}

#undef ADD

template <typename Value>
values<Value> every(int count) {
    values<Value> all;
    for (int i = 0; i < count; ++i) all.push_back(static_cast<Value>(i));
    return all;
}

const char *reason_keyword(uint8_t reason) { return port_state_reason_string(reason, 1); }
const char *reason_message(uint8_t reason) { return port_state_reason_string(reason, 0); }

void add_codes(contest &contest) {
    add(contest, "port_state_reason_string, every keyword", reason_keyword, every<uint8_t>(256));
    add(contest, "port_state_reason_string, every message", reason_message, every<uint8_t>(256));
}

bool is_text_function(const std::string &name) { return name.ends_with("_string") || name.starts_with("pm_cli_dump_"); }

// A text function that is exported and not measured ends the program.
void require_all(const std::vector<result> &rows) {
    std::ifstream exports(PROMISED_EXPORTS);
    require(exports.good(), PROMISED_EXPORTS);
    for (std::string name; std::getline(exports, name);) {
        const auto is_it = [&](const result &row) { return row.name.starts_with(name); };
        require(!is_text_function(name) || std::ranges::any_of(rows, is_it), name.c_str());
    }
}

}  // namespace

void measure_strings(report &report) {
    const auto list = [&](const char *style, auto add_functions) {
        contest contest;
        add_functions(contest);
        auto rows = contest.run();
        report.list(style, "ns", rows);
        return rows;
    };
    std::vector<result> all;
    const auto keep = [&](const std::vector<result> &rows) { all.insert(all.end(), rows.begin(), rows.end()); };
    keep(list("texts, constant or shared", add_constant_or_shared));
    keep(list("texts, constant", add_constant));
    keep(list("texts, in the caller's buffer", add_in_callers_buffer));
    keep(list("texts by code", add_codes));
    require_all(all);
}

}  // namespace bench
