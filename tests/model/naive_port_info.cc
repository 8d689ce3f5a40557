// SPDX-License-Identifier: Apache-2.0
#include "naive_port_info.h"

#include <cstdio>

#include "naive_bytes.h"
#include "naive_port_record.h"

namespace model {
namespace {

using support::bytes;

// What is wrong with an answer whose records have this size, or 0.
uint32_t wrong_in(const bytes &payload, uint64_t record_size) {
    if (payload.size() < 4) return invalid_parameter;
    if (number32(payload.data()) != 0) return number32(payload.data());
    if (payload.size() < 8) return invalid_parameter;
    const uint64_t needed = 8 + record_size * number32(&payload[4]);
    return needed > payload.size() ? invalid_parameter : 0;
}

std::vector<std::string> wrong_in_message(const answer_message &message, uint32_t opcode, const char *function) {
    std::vector<std::string> reporters;
    if (!message.is_response) reporters.emplace_back(function);
    if (message.opcode != opcode) reporters.emplace_back(function);
    return reporters;
}

pm_port_info_brief_t brief_record(const uint8_t *wire) {
    pm_port_info_brief_t port{};
    port.if_index = if_index(wire);
    port.admin_mode = number32(wire + 4);
    port.oper_mode = number32(wire + 8);
    port.port_vsan = number16(wire + 12);
    port.oper_state = wire[14];
    port.fcid = as_it_came(wire + 15);
    port.ip_address = as_it_came(wire + 19);
    port.oper_speed = number32(wire + 27);
    port.mtu = number32(wire + 31);
    port.bandwidth = number32(wire + 35);
    port.state_reason = wire[39];
    port.admin_trunk_mode = wire[40];
    port.oper_trunk_mode = wire[41];
    port.service_state = number32(wire + 43);
    port.parent_if_index = if_index(wire + 47);
    return port;
}

// The outputs of a request over CMI before there is an answer.
template <typename Record>
outcome<Record> cleared(outcome<Record> result) {
    if (result.state != array::untouched) return result;
    result.state = array::null;
    result.count = 0;
    return result;
}

}  // namespace

size_t elements_offset(const bytes &payload) { return 8 + size_t{189} * number32(&payload[4]); }

full_outcome full_records(const answer &from) {
    if (!from.payload) return refused<pm_port_info_t>(invalid_parameter);
    const bytes &payload = *from.payload;
    if (const uint32_t wrong = wrong_in(payload, 189); wrong != 0) return refused<pm_port_info_t>(wrong);
    const uint32_t count = number32(&payload[4]);
    full_outcome result{.count = count, .state = count == 0 ? array::null : array::block};
    const bool has_elements = payload.size() > elements_offset(payload);
    for (uint32_t i = 0; i < count; ++i) {
        result.records.push_back(
            port_record(&payload[8 + 189 * i], has_elements ? from.elements : std::vector<element>{}, result.printed));
    }
    return result;
}

full_outcome full_message(const answer &from, const answer_message &in) {
    full_outcome result = full_records(from);
    result.reporters = wrong_in_message(in, 324, "pm_parse_get_port_info");
    return result;
}

full_outcome configuration(const cmi_result &result) {
    if (result.status != 0) return cleared(refused<pm_port_info_t>(result.status));
    return cleared(full_records(result.what));
}

full_outcome module_listing(const cmi_result &result) {
    return result.status != 0 ? refused<pm_port_info_t>(result.status) : full_records(result.what);
}

full_outcome next_message(const answer &from, const answer_message &in) {
    full_outcome result;
    result.reporters = wrong_in_message(in, 325, "pm_parse_get_next_port_info");
    if (!from.payload) {
        result.printed = "pm_parse_get_next_port_info: NULL payload \n";
        result.status = no_payload;
    } else if (from.payload->size() < 4) {
        result.status = invalid_parameter;
    } else if (const uint32_t status = number32(from.payload->data()); status != 0) {
        char text[100];
        std::snprintf(text, sizeof text, "pm_parse_get_next_port_info: bad status %X\n", status);
        result.printed = text;
        result.status = status;
    } else if (from.payload->size() < 197) {
        result.status = invalid_parameter;
    } else {
        const bytes &payload = *from.payload;
        result.count = number32(&payload[4]);
        result.state = array::block;
        result.records.push_back(
            port_record(&payload[8], payload.size() >= 198 ? from.elements : std::vector<element>{}, result.printed));
    }
    return result;
}

brief_outcome brief_records(const bytes &payload) {
    if (number32(payload.data()) != 0) return refused<pm_port_info_brief_t>(number32(payload.data()));
    const uint32_t count = number32(&payload[4]);
    brief_outcome result{.count = count, .state = count == 0 ? array::null : array::block};
    for (uint32_t i = 0; i < count; ++i) result.records.push_back(brief_record(&payload[8 + 51 * i]));
    return result;
}

brief_outcome brief_message(const answer &from, const answer_message &in) {
    brief_outcome result;
    const uint32_t wrong = from.payload ? wrong_in(*from.payload, 51) : invalid_parameter;
    result = wrong != 0 ? refused<pm_port_info_brief_t>(wrong) : brief_records(*from.payload);
    result.reporters = wrong_in_message(in, 3141, "pm_parse_get_port_info_brief");
    return result;
}

set_outcome set_results(const std::optional<bytes> &payload) {
    if (!payload) return {.status = no_payload, .state = array::null};
    const bytes &wire = *payload;
    set_outcome result{.status = number32(wire.data()), .count = number32(&wire[4]), .state = array::block};
    for (uint32_t i = 0; i < result.count; ++i) {
        result.records.push_back({number32(&wire[8 + 8 * i]), as_it_came(&wire[12 + 8 * i])});
    }
    return result;
}

set_outcome set_configuration(const cmi_result &result) {
    set_outcome nothing{.status = result.status, .count = 0, .state = array::null};
    if (result.status != 0) return nothing;
    if (!result.what.payload) {
        nothing.status = no_payload;
        return nothing;
    }
    const bytes &payload = *result.what.payload;
    if (payload.size() >= 8 && 8 + uint64_t{8} * number32(&payload[4]) <= payload.size()) return set_results(payload);
    if (payload.size() >= 4) nothing.status = number32(payload.data());
    if (nothing.status == 0) nothing.status = invalid_parameter;
    return nothing;
}

}  // namespace model
