// SPDX-License-Identifier: Apache-2.0
#include "services/answer.h"

#include <algorithm>
#include <iterator>

#include "platform/if_index.h"
#include "platform_dev/mts_dev.h"
#include "port_mgr/status.h"
#include "protocol/config_layout.h"
#include "protocol/cursor.h"
#include "protocol/port_attribute_codec.h"
#include "services/element_builder.h"

namespace virtual_switch {
namespace {

using attribute_list = std::vector<pm::port_attribute>;

// The attributes that ports of a kind send, in the order of their types.
const attribute_list &attributes_of(port_kind kind) {
    static const auto lists = [] {
        std::array<attribute_list, port_kind_count> made;
        for (size_t i = 0; i < made.size(); ++i) {
            const attribute_set &sent = traits_of(static_cast<port_kind>(i)).attributes;
            std::ranges::copy_if(pm::port_attributes, std::back_inserter(made[i]),
                                 [&sent](const pm::port_attribute &attribute) { return sent.test(attribute.type); });
        }
        return made;
    }();
    return lists.at(static_cast<size_t>(kind));
}

bool add_elements(tlv_builder_t *elements, const port &of, bool with_owner) {
    const uint32_t wire_if_index = hton_if_index(of.info.if_index);
    pm::attribute_value value;
    for (const pm::port_attribute &attribute : attributes_of(of.kind)) {
        if (attribute.type == pm::owner_attribute && !with_owner) continue;
        const auto bytes = pm::encode_attribute_value(attribute, of.info, wire_if_index, value);
        if (tlv_builder_add(elements, attribute.type, bytes.data(), static_cast<uint16_t>(bytes.size())) != 0) {
            return false;
        }
    }
    return true;
}

// The elements of all ports, or null when memory ran out.
element_builder build_elements(const port_list &ports) {
    element_builder elements(tlv_builder_create(0));
    if (elements == nullptr) return nullptr;
    for (const port *of : ports) {
        if (!add_elements(elements.get(), *of, ports.size() == 1)) return nullptr;
    }
    return elements;
}

pm_port_info_brief_t brief_of(const pm_port_info_t &info) {
    pm_port_info_brief_t brief{};
    brief.if_index = info.if_index;
    brief.admin_mode = info.admin_mode;
    brief.oper_mode = info.oper_mode;
    brief.port_vsan = info.port_vsan;
    brief.oper_state = info.oper_state;
    brief.fcid = info.fcid;
    brief.ip_address = info.ip_address;
    brief.oper_speed = info.oper_speed;
    brief.mtu = info.mtu;
    brief.bandwidth = info.bandwidth;
    brief.state_reason = info.state_reason;
    brief.admin_trunk_mode = info.admin_trunk_mode;
    brief.oper_trunk_mode = info.oper_trunk_mode;
    brief.service_state = info.service_state;
    brief.parent_if_index = info.parent_if_index;
    return brief;
}

void answer_records(mts_reply_t *reply, const port_list &ports, auto encode_base_record) {
    const element_builder elements = build_elements(ports);
    if (elements == nullptr) return answer_status(reply, PM_ERR_FAILURE);
    const size_t elements_size = tlv_builder_size(elements.get());
    uint8_t *to = start_answer(reply, ports.size(), ports.size() * pm::base_record_size + elements_size);
    if (to == nullptr) return;
    for (const port *of : ports) {
        encode_base_record(*of, to);
        to += pm::base_record_size;
    }
    std::memcpy(to, tlv_builder_data(elements.get()), elements_size);
}

}  // namespace

void answer_status(mts_reply_t *reply, uint32_t status) {
    void *const payload = mts_reply_payload(reply, pm::answer_status_size);
    if (payload != nullptr) pm::store_be32(payload, status);
}

uint8_t *start_answer(mts_reply_t *reply, size_t records, size_t size) {
    const size_t whole = pm::answer_header_size + size;
    auto *const payload = static_cast<uint8_t *>(
        whole > MTS_MAX_PAYLOAD ? nullptr : mts_reply_payload(reply, static_cast<uint32_t>(whole)));
    if (payload == nullptr) {
        answer_status(reply, PM_ERR_FAILURE);
        return nullptr;
    }
    pm::store_be32(payload + pm::answer_status_size, static_cast<uint32_t>(records));
    return payload + pm::answer_header_size;
}

void answer_ports(mts_reply_t *reply, const port_list &ports) {
    answer_records(reply, ports, [](const port &of, uint8_t *to) {
        pm::encode_record<pm::base_record_fields>(&of.info, to, hton_if_index);
    });
}

void answer_configured_ports(mts_reply_t *reply, const port_list &ports) {
    answer_records(reply, ports, [](const port &of, uint8_t *to) {
        pm_port_info_t info = of.info;
        info.bandwidth = of.configured.bandwidth;
        pm::encode_record<pm::base_record_fields>(&info, to, hton_if_index);
    });
}

void answer_ports_brief(mts_reply_t *reply, const port_list &ports) {
    uint8_t *to = start_answer(reply, ports.size(), ports.size() * pm::brief_record_size);
    if (to == nullptr) return;
    for (const port *of : ports) {
        const pm_port_info_brief_t brief = brief_of(of->info);
        pm::encode_record<pm::brief_record_fields>(&brief, to, hton_if_index);
        to += pm::brief_record_size;
    }
}

size_t most_records() { return MTS_MAX_PAYLOAD / pm::base_record_size; }

void answer_set(mts_reply_t *reply, const std::vector<set_result> &results) {
    uint8_t *const entries = start_answer(reply, results.size(), results.size() * sizeof(pm_set_port_result_t));
    if (entries == nullptr) return;
    const auto refused = std::ranges::find_if(results, [](const set_result &result) { return result.status != 0; });
    if (refused != results.end()) pm::store_be32(entries - pm::answer_header_size, refused->status);
    uint8_t *to = entries;
    for (const set_result &result : results) {
        pm::store(to, hton_if_index(result.if_index));
        pm::store_be32(to + sizeof result.if_index, result.status);
        to += sizeof(pm_set_port_result_t);
    }
}

void refuse_set(mts_reply_t *reply, uint32_t status) {
    void *const payload = mts_reply_payload(reply, pm::answer_header_size);
    if (payload != nullptr) pm::store_be32(payload, status);
}

void answer_sub_interfaces(mts_reply_t *reply, uint32_t status) {
    auto *const payload = static_cast<uint8_t *>(mts_reply_payload(reply, pm::sub_interface_answer_size));
    if (payload != nullptr) pm::store_be32(payload + pm::sub_interface_answer_status, status);
}

}  // namespace virtual_switch
