// SPDX-License-Identifier: Apache-2.0
#include "bench/decode/our_answer.h"

#include <algorithm>
#include <memory>

#include "platform/if_index.h"
#include "platform_dev/tlv_builder.h"
#include "port_mgr/port_info_response.h"
#include "protocol/port_attribute_codec.h"

namespace bench {

namespace {

constexpr uint16_t attribute_types[] = {4, 22, 23, 24, 30, 31, 32, 37, 42, 43, 74, 98};

using builder_owner = std::unique_ptr<tlv_builder_t, decltype(&tlv_builder_destroy)>;

builder_owner make_builder() { return {tlv_builder_create(0), tlv_builder_destroy}; }

void add_element(tlv_builder_t *builder, const pm_port_info_t &port, uint16_t type) {
    const auto attribute = std::ranges::find(pm::port_attributes, type, &pm::port_attribute::type);
    pm::attribute_value value{};
    const auto travels = encode_attribute_value(*attribute, port, hton_if_index(port.if_index), value);
    tlv_builder_add(builder, type, travels.data(), static_cast<uint16_t>(travels.size()));
}

void append(bytes &to, const void *data, size_t size) {
    const auto *const from = static_cast<const uint8_t *>(data);
    to.insert(to.end(), from, from + size);
}

bytes encode(const port_list &ports) {
    bytes payload(pm::answer_header_size);
    pm::store_be32(&payload[pm::answer_status_size], static_cast<uint32_t>(ports.size()));
    const builder_owner builder = make_builder();
    for (const pm_port_info_t &port : ports) {
        const bytes record = encode_base_record(port);
        append(payload, record.data(), record.size());
        for (const uint16_t type : attribute_types) add_element(builder.get(), port, type);
    }
    append(payload, tlv_builder_data(builder.get()), tlv_builder_size(builder.get()));
    payload.resize(payload.size() + TLV_ZEROED_TAIL_SIZE);
    return payload;
}

}  // namespace

bytes encode_base_record(const pm_port_info_t &port) {
    bytes record(pm::base_record_size);
    pm::encode_record<pm::base_record_fields>(&port, record.data(), hton_if_index);
    return record;
}

bytes encode_elements(const pm_port_info_t &port, size_t elements) {
    const builder_owner builder = make_builder();
    for (size_t i = 0; i < elements; ++i)
        add_element(builder.get(), port, attribute_types[i % std::size(attribute_types)]);
    bytes array;
    append(array, tlv_builder_data(builder.get()), tlv_builder_size(builder.get()));
    array.resize(array.size() + TLV_ZEROED_TAIL_SIZE);
    return array;
}

our_answer::our_answer(const port_list &ports)
    : payload_(encode(ports)), size_(payload_.size() - TLV_ZEROED_TAIL_SIZE) {}

void our_answer::decode() {
    std::free(records_);
    pm_parse_get_port_info_res_payload(payload_.data(), static_cast<uint32_t>(size_), &count_, &records_);
}

}  // namespace bench
