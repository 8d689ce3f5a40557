// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/sub_interface_config.h"

#include <atomic>
#include <climits>
#include <cstdio>

#include "platform/if_index.h"
#include "pm_api_common/cmi_exchange.h"
#include "pm_api_common/interface_type.h"
#include "pm_cmi_common/interface_mask.h"
#include "pm_cmi_common/request_block.h"
#include "port_mgr/opcodes.h"
#include "protocol/byte_order.h"
#include "protocol/config_layout.h"

namespace {

constexpr pm::type_set types_with_sub_interfaces{IF_TYPE_ETHERNET, IF_TYPE_PORT_CHANNEL, IF_TYPE_BUNDLE,
                                                 IF_TYPE_ETHERNET_SFP};

constexpr uint64_t request_size(uint32_t entries) {
    return pm::sub_interface_request_header_size + uint64_t{entries} * pm::sub_interface_entry_size;
}

pm_config_sub_intf_req_t &request_in(const pm::request_block &payload) {
    return *reinterpret_cast<pm_config_sub_intf_req_t *>(payload.block.get());
}

// The first interface decides about the type; it is looked up twice, as the last one's is taken to be the same.
bool has_one_type(const pm_if_index_range_t &range) {
    uint8_t type = IF_TYPE_NONE;
    if (if_index_get_type(range.first, &type) != 0 || !types_with_sub_interfaces.contains(type)) return false;
    uint8_t again = IF_TYPE_NONE;
    return if_index_get_type(range.first, &again) == 0 && again == type;
}

// Adds the sub-interfaces of a range to a request with room for `max_entries`.
uint32_t add_range(pm_config_sub_intf_req_t &request, uint32_t max_entries, const pm_if_index_range_t &range) {
    if (!has_one_type(range)) return PM_ERR_INVALID_RANGE;
    const if_index_t main = if_index_get_mainintf_from_subintf(range.first);
    uint16_t first = 0;
    uint16_t last = 0;
    if (if_index_get_sub_intf(range.first, &first) != 0) return PM_ERR_REJECTED;
    if (if_index_get_sub_intf(range.last, &last) != 0) return PM_ERR_REJECTED;
    uint32_t index = 0;
    const uint32_t status = pm_get_index_for_intf_in_config_sub_intf_payload(&request, main, max_entries, &index);
    if (status != 0) return status;
    bitset_set_range(&request.entries[index].sub_interfaces, first, static_cast<uint32_t>(last - first + 1));
    return 0;
}

// Whether a record names a main interface that can have sub-interfaces.
bool is_main_interface(if_index_t if_index) {
    uint8_t type = IF_TYPE_NONE;
    if (if_index_get_type(if_index, &type) != 0 || !types_with_sub_interfaces.contains(type)) return false;
    uint16_t number = 0;
    return if_index_get_sub_intf(if_index, &number) == 0 && number == 0;
}

void set_bits(bitset_t &to, const uint8_t (&bitmap)[pm::sub_interface_set_size]) {
    for (uint32_t number = 0; number < pm::sub_interface_set_size * CHAR_BIT; ++number) {
        const uint32_t bit = CHAR_BIT - 1 - number % CHAR_BIT;
        if ((bitmap[number / CHAR_BIT] >> bit & 1) != 0) bitset_set_bit(&to, number);
    }
}

// Turns a finished request to network order and sends it. Bit sets travel as they are.
uint32_t send_request(mts_handle_t handle, pm_config_sub_intf_req_t &request, uint32_t last) {
    const uint64_t size = request_size(request.entry_count);
    for (uint32_t i = 0; i < request.entry_count; ++i) {
        pm_sub_intf_entry_t &entry = request.entries[i];
        entry.main = pm::swap_be32(entry.main);
        for (uint32_t &word : entry.word) word = pm::swap_be32(word);
    }
    request.entry_count = pm::swap_be32(request.entry_count);
    request.operation = pm::swap_be32(request.operation);
    return pm_cmi_config_sub_interface(handle, &request, static_cast<uint32_t>(size), last);
}

// Where the check of a set of sub-interface numbers is. It is shared by all callers and left where a search ended.
std::atomic<uint32_t> reserved_number_position;

}  // namespace

uint32_t pm_cli_config_sub_interface(mts_handle_t handle, uint32_t flag, uint32_t mask_low, uint32_t mask_high,
                                     const pm_if_range_list_t *ranges, uint32_t last) {
    if ((mask_low & PM_IF_KINDS_WITH_SUB_INTF) == 0) return pm::refuse_mask(mask_low, mask_high);
    if (ranges == nullptr) return PM_ERR_FAILURE;
    const pm::request_block payload = PM_ALLOCATE_REQUEST(request_size(ranges->count));
    if (!payload) return pm::out_of_memory;
    pm_config_sub_intf_req_t &request = request_in(payload);
    request.operation = flag != 0 ? PM_SUB_INTF_CREATE : PM_SUB_INTF_DELETE;
    for (uint32_t i = 0; i < ranges->count; ++i) {
        const uint32_t status = add_range(request, ranges->count, ranges->ranges[i]);
        if (status != 0) return status;
    }
    return send_request(handle, request, last);
}

uint32_t pm_snmp_config_sub_interface(mts_handle_t handle, const pm_snmp_sub_intf_t *record, uint32_t last) {
    if (record == nullptr) return PM_ERR_FAILURE;
    if (!is_main_interface(record->main)) return PM_ERR_REJECTED;
    const pm::request_block payload = PM_ALLOCATE_REQUEST(request_size(1));
    if (!payload) return pm::out_of_memory;
    pm_config_sub_intf_req_t &request = request_in(payload);
    request.operation = PM_SUB_INTF_REPLACE;
    uint32_t index = 0;
    const uint32_t status = pm_get_index_for_intf_in_config_sub_intf_payload(&request, record->main, 1, &index);
    if (status != 0) return status;
    std::memcpy(request.entries[index].word, record->word, sizeof record->word);
    set_bits(request.entries[index].sub_interfaces, record->bitmap);
    return send_request(handle, request, last);
}

uint32_t pm_cmi_config_sub_interface(mts_handle_t handle, const void *payload, uint32_t length, uint32_t last) {
    const std::span bytes(static_cast<const uint8_t *>(payload), length);
    const pm::cmi_answer answer = pm::exchange(
        {CMI_OPC_PM_CONFIG_SUB_INTF, pm::sub_interface_request_kind, bytes, PM_SAP_ETHERNET_CHANNEL}, handle, last);
    if (answer.status != 0) return answer.status;
    const bool is_short = answer.payload != nullptr && answer.size < pm::sub_interface_answer_size;
    return is_short ? PM_ERR_INVALID_PARAM : pm_cmi_parse_config_sub_intf_resp(answer.payload.get());
}

uint32_t pm_cmi_parse_config_sub_intf_resp(const void *response) {
    if (response == nullptr) return PM_ERR_NO_PAYLOAD;
    return pm::load_be32(static_cast<const uint8_t *>(response) + pm::sub_interface_answer_status);
}

uint32_t pm_get_index_for_intf_in_config_sub_intf_payload(pm_config_sub_intf_req_t *payload, if_index_t main,
                                                          uint32_t max_entries, uint32_t *index) {
    if (payload == nullptr || index == nullptr) return PM_ERR_FAILURE;
    const uint32_t count = payload->entry_count;
    if (count > 0 && payload->entries[0].main == main) {
        *index = 0;
        return 0;
    }
    if (count >= max_entries) return PM_ERR_FAILURE;
    *index = count;
    payload->entry_count = count + 1;
    pm_sub_intf_entry_t &entry = payload->entries[count];
    entry.main = main;
    entry.sub_interfaces.size = pm::sub_interface_set_size;
    bitset_clear(&entry.sub_interfaces);
    return 0;
}

// The position is read once a step, so that a call at the same time misleads this one but does not take it past the
// end.
int32_t pm_check_is_valid_sub_intf_bitset(const bitset_t *sub_interfaces) {
    constexpr auto relaxed = std::memory_order_relaxed;
    reserved_number_position.store(0, relaxed);
    for (uint32_t at = 0; at < pm::reserved_sub_interfaces.size(); at = reserved_number_position.load(relaxed)) {
        if (bitset_is_bit_set(sub_interfaces, pm::reserved_sub_interfaces[at]) != 0) return 0;
        reserved_number_position.store(at + 1, relaxed);
    }
    return 1;
}
