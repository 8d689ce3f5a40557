// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <ostream>

#include "exported_calls.h"
#include "port_mgr/port_mgr_common.h"
#include "protocol/byte_order.h"
#include "protocol/port_info_layout.h"
#include "protocol/sfp_diagnostics_layout.h"

namespace {

constexpr uint32_t out_of_memory = 1;
constexpr uint32_t untouched = 0xdeadbeef;

struct payload {
    explicit payload(const mts_msg_t &message)
        : bytes(static_cast<const uint8_t *>(mts_payload_get(&message))), size(mts_payload_size(&message)) {}

    const uint8_t *bytes;
    uint32_t size;
};

// Reads an answer into one block of records. Without memory for them there is a count, and null.
template <typename Record>
bool reads(auto parse) {
    uint32_t count = untouched;
    Record before{};
    Record *records = &before;
    const uint32_t status = parse(&count, &records);
    EXPECT_NE(count, untouched);
    if (status == out_of_memory) {
        EXPECT_EQ(records, nullptr);
        return false;
    }
    if (status != 0 || records == &before) return false;
    EXPECT_NE(records, nullptr);
    std::free(records);
    return count > 0;
}

bool reads_ports(const received_answers &answers) {
    return reads<pm_port_info_t>(
        [&](auto *count, auto *records) { return pm_parse_get_port_info(&answers.ports, count, records); });
}

bool reads_ports_in_payload(const received_answers &answers) {
    const payload ports(answers.ports);
    return reads<pm_port_info_t>([&](auto *count, auto *records) {
        return pm_parse_get_port_info_res_payload(ports.bytes, ports.size, count, records);
    });
}

bool reads_configuration(const received_answers &answers) {
    const payload ports(answers.ports);
    return reads<pm_port_info_t>([&](auto *count, auto *records) {
        return pm_parse_cmi_get_port_config_res_payload(ports.bytes, ports.size, count, records);
    });
}

bool reads_brief(const received_answers &answers) {
    return reads<pm_port_info_brief_t>([&](auto *count, auto *records) {
        return pm_parse_get_port_info_brief(&answers.ports_in_brief, count, records);
    });
}

bool reads_brief_payload(const received_answers &answers) {
    const payload ports(answers.ports_in_brief);
    return reads<pm_port_info_brief_t>([&](auto *count, auto *records) {
        return pm_parse_get_port_info_brief_res_payload(ports.bytes, ports.size, count, records);
    });
}

// The record is written only when all is well.
bool reads_next_port(const received_answers &answers) {
    uint32_t count = untouched;
    pm_port_info_t before{};
    pm_port_info_t *record = &before;
    const uint32_t status = pm_parse_get_next_port_info(&answers.next_port, &count, &record);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(record == &before, status != 0);
    if (status != 0) return false;
    EXPECT_NE(record, nullptr);
    std::free(record);
    return true;
}

bool reads_one_port(const received_answers &answers) {
    const payload ports(answers.ports);
    const uint32_t count = pm::load_be32(ports.bytes + pm::answer_status_size);
    const uint8_t *const first = ports.bytes + pm::answer_header_size;
    pm_port_info_t record{};
    return pm_parse_port_info(first, first + count * pm::base_record_size, &record) == 0 && record.if_index != 0;
}

bool reads_set_results(const received_answers &) {
    std::array<uint8_t, pm::answer_header_size + sizeof(pm_set_port_result_t)> answer{};
    pm::store_be32(&answer[pm::answer_status_size], 1);
    return reads<pm_set_port_result_t>(
        [&](auto *count, auto *entries) { return pm_parse_set_port_info_res_payload(answer.data(), count, entries); });
}

bool reads_transceivers(const received_answers &answers) {
    return reads<pm_fcot_info_t>(
        [&](auto *count, auto *records) { return pm_parse_fcot_info(&answers.transceivers, count, records); });
}

bool reads_transceivers_in_payload(const received_answers &) {
    std::array<uint8_t, pm::answer_header_size + sizeof(pm_fcot_info_t)> answer{};
    pm::store_be32(&answer[pm::answer_status_size], 1);
    return reads<pm_fcot_info_t>([&](auto *count, auto *records) {
        return pm_parse_cmi_get_fcot_info_res_payload(answer.data(), count, records);
    });
}

bool reads_diagnostics(const received_answers &) {
    std::array<uint8_t, pm::sfp_answer_size> answer{};
    pm::store_be16(answer.data(), pm::sfp_element_type);
    pm::store_be16(&answer[2], sizeof(pm_sfp_diag_info_t));
    pm_sfp_diag_info_t info{};
    pm_sfp_diag_extra_t extra{};
    return pm_parse_get_sfp_info(answer.data(), answer.size(), &info, &extra) == 0;
}

bool reads_system_default(const received_answers &) {
    constexpr std::array<uint8_t, pm::answer_status_size + sizeof(pm_system_default_config_t)> answer{0, 0, 0, 0, 1};
    pm_system_default_config_t record{};
    return pm_parse_cmi_system_default_config_res_payload(answer.data(), &record) == 0 && record.type == 1;
}

bool reads_sub_interface_status(const received_answers &) {
    constexpr std::array<uint8_t, 8> answer{};
    return pm_cmi_parse_config_sub_intf_resp(answer.data()) == 0;
}

bool makes_iterator(const received_answers &answers) {
    pm_iterator_t before{};
    pm_iterator_t *iterator = &before;
    const uint32_t status = pm_iterator_create(&iterator, &answers.ports);
    EXPECT_EQ(iterator == nullptr, status == out_of_memory);
    return status == 0 && pm_iterator_destroy(&iterator) == 0 && iterator == nullptr;
}

constexpr std::array calls{
    exported_call{"pm_parse_get_port_info", true, reads_ports},
    exported_call{"pm_parse_get_port_info_res_payload", true, reads_ports_in_payload},
    exported_call{"pm_parse_cmi_get_port_config_res_payload", true, reads_configuration},
    exported_call{"pm_parse_get_port_info_brief", true, reads_brief},
    exported_call{"pm_parse_get_port_info_brief_res_payload", true, reads_brief_payload},
    exported_call{"pm_parse_get_next_port_info", true, reads_next_port},
    exported_call{"pm_parse_port_info", false, reads_one_port},
    exported_call{"pm_parse_set_port_info_res_payload", true, reads_set_results},
    exported_call{"pm_parse_fcot_info", true, reads_transceivers},
    exported_call{"pm_parse_cmi_get_fcot_info_res_payload", true, reads_transceivers_in_payload},
    exported_call{"pm_parse_get_sfp_info", false, reads_diagnostics},
    exported_call{"pm_parse_cmi_system_default_config_res_payload", false, reads_system_default},
    exported_call{"pm_cmi_parse_config_sub_intf_resp", false, reads_sub_interface_status},
    exported_call{"pm_iterator_create", true, makes_iterator},
    exported_call{"pm_iterator_destroy", true, makes_iterator},
};

}  // namespace

void PrintTo(const exported_call &call, std::ostream *out) { *out << call.name; }

std::span<const exported_call> reading_calls() { return calls; }
