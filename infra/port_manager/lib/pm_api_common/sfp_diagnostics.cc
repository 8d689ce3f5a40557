// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/sfp_diagnostics.h"

#include <array>
#include <cstdio>
#include <cstring>

#include "platform/if_index.h"
#include "platform/tlv_array.h"
#include "pm_api_common/assertion.h"
#include "pm_api_common/exchange.h"
#include "pm_api_common/received_message.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/byte_order.h"
#include "protocol/line_card_node.h"
#include "protocol/sfp_diagnostics_layout.h"

namespace {

constexpr const char *parser = "pm_parse_get_sfp_info";

constexpr size_t status_word = offsetof(pm_sfp_diag_info_t, status) / sizeof(uint32_t);

// Whether the payload begins with a whole element of readings.
bool holds_readings(const uint8_t *payload, uint32_t size) {
    if (size < pm::sfp_element_header_size) return false;
    if (pm::load_be16(payload) != pm::sfp_element_type) {
        std::puts("Returning from 1");
        return false;
    }
    const uint16_t length = pm::load_be16(payload + 2);
    if (length != sizeof(pm_sfp_diag_info_t)) {
        std::printf("Returning from mts_get_sfp_diag_info_t = %d,PM_NTOHS(p_tlv->length) = %d\n",
                    static_cast<int>(sizeof(pm_sfp_diag_info_t)), length);
        return false;
    }
    return size >= pm::sfp_answer_size;
}

// Readings count only when the line card's status says so.
void store_readings(const uint8_t *wire, pm_sfp_diag_info_t *info) {
    info->status = pm::load_be32(wire + status_word * sizeof(uint32_t));
    if (info->status != 0) return;
    std::array<uint32_t, pm::sfp_words> words;
    for (size_t i = 0; i < words.size(); ++i) words[i] = pm::load_be32(wire + i * sizeof(uint32_t));
    std::memcpy(info, words.data(), sizeof *info);
}

void store_extra(const uint8_t *value, pm_sfp_diag_extra_t *extra) {
    if (value == nullptr || extra == nullptr) return;
    *extra = {pm::load_be32(value), pm::load_be32(value + 4), pm::load_be64(value + 8)};
}

// An element that cannot be read does not end the walk: the one before it, if any, is looked at again.
void store_elements(const uint8_t *array, pm_sfp_diag_extra_t *extra) {
    uint16_t type = pm::sfp_ignored_element;
    uint16_t length = 0;
    const void *value = nullptr;
    uint32_t position = 0;
    for (uint32_t rest = tlv_aligned_array_get_num_tlvs(array, 1); rest > 0; --rest) {
        const uint32_t error = tlv_aligned_array_get_next_tlv(array, &type, &length, &value, 1, &position);
        if (error != 0) std::printf("%s: Error 0x%x in tlv_array_get_next_tlv()\n", parser, error);
        if (type == pm::sfp_extra_element)
            store_extra(static_cast<const uint8_t *>(value), extra);
        else if (type != pm::sfp_ignored_element)
            std::printf("%s: Unknown TLV with type %d\n", parser, type);
    }
}

// Releases a message of the exchange. Returns `status`, or the transport's error number, told with `complaint`.
uint32_t drop(mts_handle_t handle, mts_msg_t &message, uint32_t status, const char *complaint) {
    if (mts_drop(handle, &message) != pm::transport_failure) return status;
    const uint32_t error = mts_errno_get(handle);
    std::puts(complaint);
    return error;
}

}  // namespace

uint32_t pm_get_sfp_diag_info(mts_handle_t handle, if_index_t if_index, pm_sfp_diag_info_t *info,
                              pm_sfp_diag_extra_t *extra) {
    uint8_t slot = 0;
    if_index_get_slot(if_index, &slot);
    const uint32_t payload = pm::swap_be32(if_index);
    mts_msg_t request{};
    if (mts_send(handle, pm::line_card_node(slot), PM_SAP_SFP_DIAGNOSTICS, MTS_OPC_GET_SFP_DIAG_INFO, &payload,
                 sizeof payload, &request, 0, 0) == pm::transport_failure) {
        const uint32_t error = mts_errno_get(handle);
        std::puts("error sending request");
        return error;
    }
    const mts_recv_options_t options = pm::answer_to(request, pm::query_wait);
    mts_msg_t response{};
    if (mts_recv(handle, &response, &options) == pm::transport_failure) {
        const uint32_t error = mts_errno_get(handle);
        mts_drop(handle, &request);
        std::puts("error recving response");
        return error;
    }
    const pm::received_message received(&response);
    const uint8_t *const answer = received.payload();
    uint32_t status = pm_parse_get_sfp_info(answer, received.size(), info, extra);
    status = drop(handle, request, status, "error dropping request");
    status = drop(handle, response, status, "error dropping response");
    return status != 0 || info == nullptr ? status : info->status;
}

uint32_t pm_parse_get_sfp_info(const void *payload, uint32_t size, pm_sfp_diag_info_t *info,
                               pm_sfp_diag_extra_t *extra) {
    PM_ASSERT(payload != nullptr);
    PM_ASSERT(info != nullptr);
    if (info == nullptr) return PM_ERR_INVALID_PARAM;
    std::memset(info, 0, sizeof *info);
    const auto *const bytes = static_cast<const uint8_t *>(payload);
    if (bytes == nullptr || !holds_readings(bytes, size)) return PM_ERR_INVALID_PARAM;
    store_readings(bytes + pm::sfp_element_header_size, info);
    if (info->status != 0) return 0;
    if (size <= pm::sfp_answer_size) {
        std::printf("%s: tlv_array NULL!\n", __func__);
        return 0;
    }
    store_elements(bytes + pm::sfp_answer_size, extra);
    return 0;
}
