// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/transceiver_info.h"

#include <cstring>

#include "platform/if_index.h"
#include "pm_api_common/answer_check.h"
#include "pm_api_common/cmi_exchange.h"
#include "pm_api_common/range_writer.h"
#include "pm_api_common/received_message.h"
#include "pm_cmi_common/request_block.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/service_selection.h"
#include "protocol/request_layout.h"
#include "protocol/transceiver_layout.h"

namespace {

constexpr uint32_t no_message_payload = 3;

struct fcot_query {
    mts_handle_t handle;
    uint32_t kind;
    int32_t range_count;
    const pm_if_index_range_t *ranges;
    uint32_t last;
};

struct fcot_records {
    uint32_t *count;
    pm_fcot_info_t **records;

    [[nodiscard]] bool can_be_written() const { return count != nullptr && records != nullptr; }

    // The payload is of a service that answered in `size` bytes.
    [[nodiscard]] uint32_t parse(const uint8_t *payload, uint64_t size) const {
        const uint32_t status = pm::check_answer(payload, size, sizeof(pm_fcot_info_t));
        return status != 0 ? status : pm_parse_cmi_get_fcot_info_res_payload(payload, count, records);
    }
};

void convert(const uint8_t *wire, pm_fcot_info_t *record) {
    std::memcpy(record, wire, sizeof *record);
    pm::decode_record<pm::fcot_fields>(wire, record, ntoh_if_index);
    if (record->layout == PM_FCOT_LAYOUT_A)
        pm::decode_record<pm::fcot_fields_a>(wire, record, ntoh_if_index);
    else
        pm::decode_record<pm::fcot_fields_b>(wire, record, ntoh_if_index);
}

// `sender` names the function in the report of a failed allocation.
uint32_t get_fcot_info(const fcot_query &query, pm::fcot_flavour flavour, const fcot_records &to, const char *sender) {
    if (!to.can_be_written() || query.ranges == nullptr || query.range_count <= 0) return PM_ERR_FAILURE;
    *to.records = nullptr;
    *to.count = 0;

    const auto range_count = static_cast<uint32_t>(query.range_count);
    const uint64_t size = pm::fcot_request_header_size + uint64_t{range_count} * pm::wire_range_size;
    pm::request_block payload = PM_ALLOCATE_REQUEST(size);
    if (!payload) return pm::report_no_memory(sender, size);
    pm::byte_writer writer(payload.bytes());
    writer.put_be32(range_count);
    writer.put_be32(static_cast<uint32_t>(flavour));
    pm::put_ranges(writer, range_count, query.ranges);

    const uint32_t sap = pm_get_mts_sap(query.ranges[0].first);
    const pm::cmi_answer answer =
        pm::exchange({CMI_OPC_PM_GET_FCOT_INFO, query.kind, payload.bytes(), sap}, query.handle, query.last);
    payload = {};
    const uint8_t *const bytes = answer.payload.get();
    const uint32_t status = answer.status != 0 ? answer.status : to.parse(bytes, answer.size);
    const bool has_status = bytes != nullptr && answer.size >= pm::answer_status_size;
    return flavour == pm::fcot_flavour::with_diagnostics && has_status ? pm::status_of(bytes) : status;
}

}  // namespace

uint32_t pm_cmi_get_fcot_info(mts_handle_t handle, uint32_t kind, int32_t range_count,
                              const pm_if_index_range_t *ranges, uint32_t *count, pm_fcot_info_t **records,
                              uint32_t last) {
    return get_fcot_info({handle, kind, range_count, ranges, last}, pm::fcot_flavour::plain, {count, records},
                         __func__);
}

uint32_t pm_get_next_port_fcot_info_with_ddm(mts_handle_t handle, uint32_t kind, int32_t range_count,
                                             const pm_if_index_range_t *ranges, uint32_t *count,
                                             pm_fcot_info_t **records, uint32_t last) {
    return get_fcot_info({handle, kind, range_count, ranges, last}, pm::fcot_flavour::with_diagnostics,
                         {count, records}, __func__);
}

uint32_t pm_parse_cmi_get_fcot_info_res_payload(const void *payload, uint32_t *count, pm_fcot_info_t **records) {
    const auto *const bytes = static_cast<const uint8_t *>(payload);
    if (bytes == nullptr) return PM_ERR_INVALID_PARAM;
    if (pm::status_of(bytes) != 0) return pm::status_of(bytes);
    if (count == nullptr || records == nullptr) return PM_ERR_INVALID_PARAM;

    *records = nullptr;
    const uint32_t transceivers = pm::count_of(bytes);
    *count = transceivers;
    auto *const block =
        static_cast<pm_fcot_info_t *>(PM_ALLOCATE(uint64_t{transceivers} * sizeof(pm_fcot_info_t), pm::largest_array));
    if (block == nullptr) return pm::out_of_memory;
    const uint8_t *wire = bytes + pm::answer_header_size;
    for (uint32_t i = 0; i < transceivers; ++i, wire += sizeof(pm_fcot_info_t)) convert(wire, block + i);
    *records = block;
    return 0;
}

uint32_t pm_parse_fcot_info(const mts_msg_t *message, uint32_t *count, pm_fcot_info_t **records) {
    const pm::received_message received(message);
    const uint8_t *const payload = received.payload();
    if (payload == nullptr) return no_message_payload;
    const uint32_t size = received.size();
    if (size < pm::fcot_message_header_size) return PM_ERR_INVALID_PARAM;
    return fcot_records{count, records}.parse(payload + pm::fcot_message_header_size,
                                              size - pm::fcot_message_header_size);
}
