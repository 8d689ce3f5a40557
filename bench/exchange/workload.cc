// SPDX-License-Identifier: Apache-2.0
#include "bench/exchange/workload.h"

#include <iterator>

#include "platform_dev/if_index_dev.h"
#include "platform_dev/tlv_builder.h"
#include "protocol/request_layout.h"

namespace bench {

namespace {

constexpr uint16_t attributes_of_a_port[] = {4, 22, 23, 24, 30, 31, 32, 37, 42, 43, 74, 98};

uint32_t wire_index(uint32_t port) {
    if_index_t if_index = 0;
    const auto slot = static_cast<uint8_t>(port / 48);
    require(if_index_slot_port_init(&if_index, IF_TYPE_FC, slot, static_cast<uint8_t>(port % 48)) == 0, "if_index");
    return hton_if_index(if_index);
}

void add_records(const workload &asked, size_t size, bytes &payload) {
    for (uint32_t port = 0; port < asked.ports; ++port) {
        bytes record(size, 1);
        pm::store(record.data(), wire_index(port));
        payload.insert(payload.end(), record.begin(), record.end());
    }
}

void add_elements(const workload &asked, bytes &payload) {
    tlv_builder_t *const builder = tlv_builder_create(0);
    for (uint32_t port = 0; port < asked.ports; ++port) {
        uint8_t value[pm::attribute_value_size] = {0, 0, 0, 0, 1, 2, 3, 4};
        pm::store(value, wire_index(port));
        for (uint32_t i = 0; i < asked.elements; ++i)
            tlv_builder_add(builder, attributes_of_a_port[i % std::size(attributes_of_a_port)], value, sizeof value);
    }
    const auto *const data = static_cast<const uint8_t *>(tlv_builder_data(builder));
    payload.insert(payload.end(), data, data + tlv_builder_size(builder));
    tlv_builder_destroy(builder);
}

}  // namespace

bytes answer_to(const workload &asked) {
    bytes payload(pm::answer_header_size);
    pm::store_be32(&payload[pm::answer_status_size], asked.ports);
    const bool is_brief = asked.opcode == MTS_OPC_PM_GET_PORT_INFO_BRIEF;
    add_records(asked, is_brief ? pm::brief_record_size : pm::base_record_size, payload);
    if (asked.elements > 0) add_elements(asked, payload);
    return payload;
}

payload_sizes sizes_of(const workload &asked) {
    return {pm::port_info_request_header_size + pm::wire_range_size, answer_to(asked).size()};
}

}  // namespace bench
