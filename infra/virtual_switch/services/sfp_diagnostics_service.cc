// SPDX-License-Identifier: Apache-2.0
#include "services/sfp_diagnostics_service.h"

#include "platform/if_index.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/cursor.h"
#include "protocol/sfp_diagnostics_layout.h"
#include "services/element_builder.h"
#include "services/line_card.h"
#include "services/request_payload.h"

namespace virtual_switch {
namespace {

// What a request is about. Without a status, all of it is there.
struct target {
    uint32_t status = 0;
    const port *at = nullptr;
    const transceiver *plugged_in = nullptr;
};

target find_target(const line_card_context &card, const mts_request_t &request) {
    if (request.opcode != MTS_OPC_GET_SFP_DIAG_INFO) return {PM_ERR_FAILURE};
    if (request.payload_size != pm::sfp_request_size) return {PM_ERR_INVALID_PARAM};
    const chassis_model &model = card.state->model();
    const if_index_t if_index = pm::load_be32(request.payload);
    const port *const at = model.find(if_index);
    if (at == nullptr || !at->place.is_in(card.slot)) return {PM_ERR_INVALID_RANGE};
    const transceiver *const plugged_in = model.plugged_into(if_index);
    if (plugged_in == nullptr || !plugged_in->has_diagnostics) return {PM_ERR_REJECTED};
    return {0, at, plugged_in};
}

// Alarms and warnings of the readings, and how long the card has been reading.
bool add_extra(tlv_builder_t *elements, const sff8472::readings &readings, switch_time age) {
    const sff8472::raised_flags raised = flags_of(readings);
    std::array<uint8_t, sizeof(pm_sfp_diag_extra_t)> value{};
    pm::byte_writer to(value);
    to.put_be32(raised.alarms);
    to.put_be32(raised.warnings);
    const auto milliseconds = static_cast<uint64_t>(age.count());
    to.put_be32(static_cast<uint32_t>(milliseconds >> 32));
    to.put_be32(static_cast<uint32_t>(milliseconds));
    return tlv_builder_add(elements, pm::sfp_extra_element, value.data(), value.size()) == 0;
}

element_builder build_elements(const line_card_context &card, if_index_t if_index, const sff8472::readings &readings) {
    element_builder elements(tlv_builder_create(1));
    const uint32_t wire_index = hton_if_index(if_index);
    const bool is_whole =
        elements != nullptr &&
        tlv_builder_add(elements.get(), pm::sfp_ignored_element, &wire_index, sizeof wire_index) == 0 &&
        add_extra(elements.get(), readings, card.state->now() - card.started);
    return is_whole ? std::move(elements) : nullptr;
}

// Returns the place behind the words, or null when memory ran out.
uint8_t *write_element(mts_reply_t *reply, uint32_t flags, uint32_t status, const sff8472::readings &readings,
                       size_t elements_size) {
    const auto size = static_cast<uint32_t>(pm::sfp_answer_size + elements_size);
    auto *const answer = static_cast<uint8_t *>(mts_reply_payload(reply, size));
    if (answer == nullptr) return nullptr;
    pm::byte_writer to({answer, pm::sfp_answer_size});
    to.put_be16(pm::sfp_element_type);
    to.put_be16(sizeof(pm_sfp_diag_info_t));
    to.put_be32(flags);
    to.put_be32(status);
    for (const auto &[value, high_alarm, high_warning, low_warning, low_alarm] : readings) {
        for (const int32_t word : {value, high_alarm, high_warning, low_warning, low_alarm}) {
            to.put_be32(static_cast<uint32_t>(word));
        }
    }
    return answer + pm::sfp_answer_size;
}

void refuse(mts_reply_t *reply, uint32_t status) { write_element(reply, 0, status, {}, 0); }

}  // namespace

void sfp_diagnostics_service(void *line_card, const mts_request_t *request, mts_reply_t *reply) {
    const auto &card = *static_cast<const line_card_context *>(line_card);
    const target found = find_target(card, *request);
    if (found.status != 0) return refuse(reply, found.status);
    const if_index_t if_index = found.at->info.if_index;
    const bool is_external = found.plugged_in->is_externally_calibrated();
    const auto page = diagnostics_at(*found.plugged_in, if_index, found.at->link(), card.state->now());
    const sff8472::readings readings = sff8472::read_diagnostics(page, is_external);
    const element_builder elements = build_elements(card, if_index, readings);
    if (elements == nullptr) return refuse(reply, PM_ERR_FAILURE);
    const uint32_t size = tlv_builder_size(elements.get());
    uint8_t *const to = write_element(reply, is_external ? PM_SFP_EXTERNALLY_CALIBRATED : 0, 0, readings, size);
    if (to != nullptr) std::memcpy(to, tlv_builder_data(elements.get()), size);
}

}  // namespace virtual_switch
