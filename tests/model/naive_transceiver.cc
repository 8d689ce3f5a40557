// SPDX-License-Identifier: Apache-2.0
#include "naive_transceiver.h"

#include <cstdio>

#include "naive_bytes.h"

namespace model {
namespace {

using support::bytes;

pm_fcot_info_t fcot_record(const uint8_t *wire) {
    pm_fcot_info_t record;
    for (size_t i = 0; i < 267; ++i) reinterpret_cast<uint8_t *>(&record)[i] = wire[i];
    record.if_index = if_index(wire);
    record.attributes = number32(wire + 4);
    if (wire[266] == 1) {
        record.value_a[0] = number32(wire + 137);
        record.value_a[1] = number32(wire + 141);
    } else {
        record.value_b[0] = number32(wire + 254);
        record.value_b[1] = number32(wire + 258);
    }
    return record;
}

// The same for a payload whose size counts.
fcot_outcome sized_records(const bytes &payload) {
    if (payload.size() < 4) return refused<pm_fcot_info_t>(invalid_parameter);
    const uint32_t status = number32(payload.data());
    if (status != 0) return refused<pm_fcot_info_t>(status);
    if (payload.size() < 8) return refused<pm_fcot_info_t>(invalid_parameter);
    if (8 + uint64_t{267} * number32(&payload[4]) > payload.size()) return refused<pm_fcot_info_t>(invalid_parameter);
    return fcot_records(payload);
}

// A block as long as the line card says, in the order of the host.
pm_sfp_diag_info_t words_of(const uint8_t *wire) {
    pm_sfp_diag_info_t info;
    for (size_t i = 0; i < 172; i += 4) {
        for (size_t j = 0; j < 4; ++j) reinterpret_cast<uint8_t *>(&info)[i + j] = wire[i + 3 - j];
    }
    return info;
}

std::string line(const char *format, uint32_t number) {
    char text[200];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

void take_elements(const std::vector<element> &elements, sfp_outcome &result) {
    const element *current = nullptr;
    for (const element &each : elements) {
        if (each.error == 0) current = &each;
        if (each.error != 0) {
            result.printed += line("pm_parse_get_sfp_info: Error 0x%x in tlv_array_get_next_tlv()\n", each.error);
        }
        if (current == nullptr || current->type == 79) continue;
        if (current->type == 80) {
            const uint8_t *const value = current->value.data();
            result.extra = {number32(value), number32(value + 4), number64(value + 8)};
        } else {
            result.printed += line("pm_parse_get_sfp_info: Unknown TLV with type %u\n", current->type);
        }
    }
}

}  // namespace

fcot_outcome fcot_records(const bytes &payload) {
    if (number32(payload.data()) != 0) return refused<pm_fcot_info_t>(number32(payload.data()));
    fcot_outcome result{.count = number32(&payload[4]), .state = array::block};
    for (uint32_t i = 0; i < result.count; ++i) result.records.push_back(fcot_record(&payload[8 + 267 * i]));
    return result;
}

fcot_outcome fcot_message(const std::optional<bytes> &payload) {
    if (!payload) return refused<pm_fcot_info_t>(3);
    if (payload->size() < 112) return refused<pm_fcot_info_t>(invalid_parameter);
    return sized_records(bytes(payload->begin() + 112, payload->end()));
}

fcot_outcome fcot_query(const cmi_result &result) {
    fcot_outcome nothing{.status = result.status, .count = 0, .state = array::null};
    if (result.status != 0) return nothing;
    fcot_outcome parsed =
        result.what.payload ? sized_records(*result.what.payload) : refused<pm_fcot_info_t>(invalid_parameter);
    if (parsed.state == array::block) return parsed;
    nothing.status = parsed.status;
    return nothing;
}

fcot_outcome fcot_query_with_diagnostics(const cmi_result &result) {
    fcot_outcome parsed = fcot_query(result);
    const auto &payload = result.what.payload;
    if (payload && payload->size() >= 4) parsed.status = number32(payload->data());
    return parsed;
}

sfp_outcome sfp_readings(const answer &from) {
    sfp_outcome result{invalid_parameter, {}, untouched<pm_sfp_diag_extra_t>()};
    if (!from.payload) {
        result.reporters = {"pm_parse_get_sfp_info"};
        return result;
    }
    const bytes &payload = *from.payload;
    if (payload.size() < 4) return result;
    if (number16(payload.data()) != 27) {
        result.printed = "Returning from 1\n";
        return result;
    }
    if (number16(&payload[2]) != 172) {
        result.printed =
            line("Returning from mts_get_sfp_diag_info_t = 172,PM_NTOHS(p_tlv->length) = %u\n", number16(&payload[2]));
        return result;
    }
    if (payload.size() < 176) return result;
    result.status = 0;
    result.info.status = number32(&payload[8]);
    if (result.info.status != 0) return result;
    result.info = words_of(&payload[4]);
    if (payload.size() == 176)
        result.printed = "pm_parse_get_sfp_info: tlv_array NULL!\n";
    else
        take_elements(from.elements, result);
    return result;
}

}  // namespace model
