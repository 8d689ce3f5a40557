// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_config.h"

#include <cstdio>

#include "platform/if_index.h"
#include "pm_api_common/answer_check.h"
#include "pm_api_common/cmi_exchange.h"
#include "pm_api_common/interface_type.h"
#include "pm_api_common/port_channel_route.h"
#include "pm_api_common/range_writer.h"
#include "pm_cmi_common/request_block.h"
#include "pm_cmi_common/set_request.h"
#include "pm_cmi_common/set_route.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/port_info_request.h"
#include "port_mgr/service_selection.h"
#include "port_mgr/status.h"
#include "protocol/config_layout.h"
#include "protocol/request_layout.h"

namespace {

// Where the results of a set request go.
struct set_results {
    uint32_t *count;
    pm_set_port_result_t **entries;

    void clear() const {
        *entries = nullptr;
        *count = 0;
    }

    // Results count only in an answer that holds as many as it says. Of another one the status does, unless that says
    // that all is well.
    [[nodiscard]] uint32_t take(const pm::cmi_answer &answer) const {
        if (answer.status != 0) return answer.status;
        const uint8_t *const payload = answer.payload.get();
        if (payload == nullptr || pm::holds_records(payload, answer.size, sizeof(pm_set_port_result_t))) {
            return pm_parse_set_port_info_res_payload(payload, count, entries);
        }
        clear();
        const uint32_t status = answer.size < pm::answer_status_size ? 0 : pm::status_of(payload);
        return status != 0 ? status : PM_ERR_INVALID_PARAM;
    }
};

pm::cmi_request set_request_to(uint32_t sap, const pm::request_block &payload) {
    return {CMI_OPC_PM_SET_PORT_CONFIG, pm::set_request_kind, payload.bytes(), sap};
}

// The service that is asked for the configuration of the interfaces that follow `first`.
uint32_t configuration_owner(mts_handle_t handle, uint32_t kind, if_index_t first) {
    const bool is_bundle = pm::type_of(first) == IF_TYPE_BUNDLE;
    const uint32_t owner = pm_get_mts_sap(first);
    const uint32_t sap = is_bundle ? PM_SAP_ETHERNET_CHANNEL : owner;
    if (kind != PM_CONFIG_GET_BY_MEMBER) return sap;
    return pm::route_through_member(handle, first, sap, pm::failed_answer::is_freed);
}

}  // namespace

uint32_t pm_cmi_set_port_config(mts_handle_t handle, const char *first_text, const char *second_text,
                                uint32_t range_count, const pm_if_index_range_t *ranges, uint8_t type, uint8_t length,
                                const void *value, uint32_t *count, pm_set_port_result_t **entries, uint32_t last) {
    if (entries == nullptr || count == nullptr) return PM_ERR_FAILURE;
    if (ranges == nullptr || range_count == 0) return PM_ERR_FAILURE;
    const pm::set_subject subject{ranges[0].first, pm::type_of(ranges[0].first), type};
    const set_results results{count, entries};
    results.clear();

    const pm::set_request request{first_text, second_text, range_count, ranges, type, length, value};
    const uint64_t size = pm::size_of(request);
    const pm::request_block payload = PM_ALLOCATE_REQUEST(size);
    if (!payload) return pm::report_no_memory(__func__, size);
    const uint32_t encoded = pm::write(request, payload.bytes());
    if (encoded != 0) {
        std::printf("%s: err(%d) in pm_encode_tlv\n", __func__, static_cast<int>(encoded));
        return encoded;
    }
    // Each service is sent a block of its own.
    pm::request_block copy = PM_ALLOCATE_REQUEST(size);
    if (!copy) return pm::report_no_memory(__func__, size);
    std::memcpy(copy.block.get(), payload.block.get(), payload.size);

    uint32_t status = 0;
    const bool goes_first = pm::goes_to_ethernet_channel_first(subject);
    if (goes_first) {
        status = results.take(pm::exchange(set_request_to(PM_SAP_ETHERNET_CHANNEL, copy), handle, last));
    }
    copy = {};
    const uint32_t destination = pm::destination_of(subject);
    if (pm::is_refused_on_sub_interface(subject, destination)) {
        std::puts("Error configuring invalid parameter on ether-channel sub-interface");
        return PM_ERR_FAILURE;
    }
    if (pm::ends_after_first(subject, goes_first, destination)) return status;
    if (goes_first) std::free(*entries);
    return results.take(pm::exchange(set_request_to(destination, payload), handle, last));
}

uint32_t pm_cmi_get_port_config(mts_handle_t handle, uint32_t kind, uint32_t range_count,
                                const pm_if_index_range_t *ranges, uint32_t *count, pm_port_info_t **records,
                                uint32_t last) {
    if (count == nullptr || records == nullptr) return PM_ERR_FAILURE;
    if (ranges == nullptr || range_count == 0) return PM_ERR_FAILURE;
    const uint32_t sap = configuration_owner(handle, kind, ranges[0].first);
    *records = nullptr;
    *count = 0;

    const uint64_t size = pm::port_info_request_header_size + uint64_t{range_count} * pm::wire_range_size;
    pm::request_block payload = PM_ALLOCATE_REQUEST(size);
    if (!payload) return pm::report_no_memory(__func__, size);
    pm::byte_writer writer(payload.bytes());
    pm::write_header(writer, {PM_PORT_INFO_MODE_RANGES, 0, 0, 0, 0, range_count});
    pm::put_ranges(writer, range_count, ranges);

    const pm::cmi_answer answer = pm::exchange({CMI_OPC_PM_GET_PORT_CONFIG, kind, payload.bytes(), sap}, handle, last);
    payload = {};
    if (answer.status != 0) return answer.status;
    return pm_parse_get_port_info_res_payload(answer.payload.get(), answer.size, count, records);
}

uint32_t pm_parse_cmi_get_port_config_res_payload(const void *payload, uint32_t size, uint32_t *count,
                                                  pm_port_info_t **records) {
    return pm_parse_get_port_info_res_payload(payload, size, count, records);
}

uint32_t pm_parse_cmi_system_default_config_res_payload(const void *payload, pm_system_default_config_t *record) {
    if (payload == nullptr) return PM_ERR_NO_PAYLOAD;
    if (record == nullptr) return PM_ERR_INVALID_PARAM;
    const auto *const bytes = static_cast<const uint8_t *>(payload);
    std::memcpy(record, bytes + pm::answer_status_size, sizeof *record);
    return pm::status_of(bytes);
}
