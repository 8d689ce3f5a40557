// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_info_response.h"

#include <cstdio>
#include <cstring>

#include "platform/if_index.h"
#include "pm_api_common/answer_check.h"
#include "pm_api_common/assertion.h"
#include "pm_api_common/heap.h"
#include "pm_api_common/received_message.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"

namespace {

using pm::check_answer;
using pm::count_of;
using pm::status_of;

// The size that a caller without one claims for its payload.
constexpr uint64_t any_size = UINT64_MAX;

// The attribute elements behind `end` bytes of records, or null when nothing is there.
const uint8_t *attributes_behind(const uint8_t *payload, size_t end, uint32_t size) {
    return size > end ? payload + end : nullptr;
}

// Turns a good answer into an array; `parse` takes each record from the wire to memory.
template <typename Record>
uint32_t parse_records(const uint8_t *payload, size_t wire_size, uint32_t *count, Record **records, auto parse) {
    if (count == nullptr || records == nullptr) return PM_ERR_INVALID_PARAM;

    const uint32_t ports = count_of(payload);
    *records = nullptr;
    *count = ports;
    if (ports == 0) return 0;
    auto *const block = static_cast<Record *>(PM_ALLOCATE(uint64_t{ports} * sizeof(Record), pm::largest_array));
    if (block == nullptr) return pm::out_of_memory;
    const uint8_t *wire = payload + pm::answer_header_size;
    for (uint32_t i = 0; i < ports; ++i, wire += wire_size) parse(wire, block + i);
    *records = block;
    return 0;
}

void pm_parse_port_info_brief(const uint8_t *wire, pm_port_info_brief_t *record) {
    PM_ASSERT(wire != nullptr);
    PM_ASSERT(record != nullptr);
    std::memset(record, 0, sizeof *record);
    pm::decode_record<pm::brief_record_fields>(wire, record, ntoh_if_index);
}

}  // namespace

uint32_t pm_parse_get_port_info(const mts_msg_t *message, uint32_t *count, pm_port_info_t **records) {
    const pm::received_message received(message);
    PM_ASSERT(received.exists());
    PM_ASSERT(received.is_response());
    PM_ASSERT(received.has_opcode(MTS_OPC_PM_GET_PORT_INFO));
    const uint8_t *const payload = received.payload();
    const uint32_t size = received.size();
    return pm_parse_get_port_info_res_payload(payload, size, count, records);
}

uint32_t pm_parse_get_port_info_res_payload(const void *payload, uint32_t size, uint32_t *count,
                                            pm_port_info_t **records) {
    const auto *const bytes = static_cast<const uint8_t *>(payload);
    const uint32_t status = check_answer(bytes, size, pm::base_record_size);
    if (status != 0) return status;
    const size_t end = pm::answer_header_size + count_of(bytes) * pm::base_record_size;
    const uint8_t *const attributes = attributes_behind(bytes, end, size);
    return parse_records(bytes, pm::base_record_size, count, records,
                         [attributes](const uint8_t *base_record, pm_port_info_t *record) {
                             pm_parse_port_info(base_record, attributes, record);
                         });
}

uint32_t pm_parse_get_port_info_brief(const mts_msg_t *message, uint32_t *count, pm_port_info_brief_t **records) {
    const pm::received_message received(message);
    PM_ASSERT(received.exists());
    PM_ASSERT(received.is_response());
    PM_ASSERT(received.has_opcode(MTS_OPC_PM_GET_PORT_INFO_BRIEF));
    const uint8_t *const payload = received.payload();
    if (payload == nullptr) return PM_ERR_INVALID_PARAM;
    const uint32_t size = received.size();
    const uint32_t status = check_answer(payload, size, pm::brief_record_size);
    return status != 0 ? status : pm_parse_get_port_info_brief_res_payload(payload, size, count, records);
}

uint32_t pm_parse_get_port_info_brief_res_payload(const void *payload, uint32_t, uint32_t *count,
                                                  pm_port_info_brief_t **records) {
    const auto *const bytes = static_cast<const uint8_t *>(payload);
    const uint32_t status = check_answer(bytes, any_size, pm::brief_record_size);
    if (status != 0) return status;
    return parse_records(bytes, pm::brief_record_size, count, records, pm_parse_port_info_brief);
}

uint32_t pm_parse_get_next_port_info(const mts_msg_t *message, uint32_t *count, pm_port_info_t **record) {
    const pm::received_message received(message);
    PM_ASSERT(received.exists());
    PM_ASSERT(received.is_response());
    PM_ASSERT(received.has_opcode(MTS_OPC_PM_GET_NEXT_PORT_INFO));
    const uint8_t *const payload = received.payload();
    if (payload == nullptr) {
        std::printf("%s: NULL payload \n", __func__);
        return PM_ERR_NO_PAYLOAD;
    }
    const uint32_t size = received.size();
    if (size < pm::answer_status_size) return PM_ERR_INVALID_PARAM;
    const uint32_t status = status_of(payload);
    if (status != 0) {
        std::printf("%s: bad status %X\n", __func__, status);
        return status;
    }
    constexpr size_t end = pm::answer_header_size + pm::base_record_size;
    if (size < end || count == nullptr || record == nullptr) return PM_ERR_INVALID_PARAM;

    *count = count_of(payload);
    pm::heap_block<pm_port_info_t> block(
        static_cast<pm_port_info_t *>(PM_ALLOCATE(sizeof(pm_port_info_t), pm::largest_array)));
    if (block == nullptr) {
        std::printf("%s: no memory\n", __func__);
        return pm::out_of_memory;
    }
    pm_parse_port_info(payload + pm::answer_header_size, attributes_behind(payload, end, size), block.get());
    *record = block.release();
    return 0;
}

uint32_t pm_parse_set_port_info_res_payload(const void *payload, uint32_t *count, pm_set_port_result_t **entries) {
    if (entries == nullptr) return PM_ERR_INVALID_PARAM;
    *entries = nullptr;
    if (payload == nullptr) return PM_ERR_NO_PAYLOAD;
    if (count == nullptr) return PM_ERR_INVALID_PARAM;
    const auto *const bytes = static_cast<const uint8_t *>(payload);
    const uint32_t results = count_of(bytes);
    *count = results;
    auto *const block = static_cast<pm_set_port_result_t *>(
        PM_ALLOCATE(uint64_t{results} * sizeof(pm_set_port_result_t), pm::largest_array));
    if (block == nullptr) return pm::out_of_memory;

    const uint8_t *wire = bytes + pm::answer_header_size;
    for (uint32_t i = 0; i < results; ++i, wire += sizeof(pm_set_port_result_t)) {
        block[i] = {pm::load_be32(wire), pm::load<uint32_t>(wire + 4)};
    }
    *entries = block;
    return status_of(bytes);
}
