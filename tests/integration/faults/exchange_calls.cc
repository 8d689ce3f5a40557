// SPDX-License-Identifier: Apache-2.0
#include "exchange_calls.h"

#include <arpa/inet.h>

#include <array>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string_view>
#include <vector>

#include "platform/if_index.h"
#include "platform_dev/if_index_dev.h"
#include "port_mgr/port_mgr_common.h"
#include "protocol/line_card_node.h"

namespace {

constexpr uint32_t query_wait = 10;

if_index_t index_of(const char *name) {
    if_index_t if_index = 0;
    if_index_from_name(name, &if_index);
    return if_index;
}

pm_if_index_range_t one(const char *name) { return {index_of(name), index_of(name)}; }

pm_if_index_range_t fc_ports() { return {index_of("fc1/1"), index_of("fc1/4")}; }
pm_if_index_range_t ethernet_ports() { return {index_of("Ethernet4/5"), index_of("Ethernet4/8")}; }

// Reads the records of an answer; there must be one at least, or a half answer would pass for a whole one.
template <typename Record>
uint32_t parse(const mts_msg_t &message, uint32_t (*parser)(const mts_msg_t *, uint32_t *, Record **)) {
    uint32_t count = 0;
    Record *records = nullptr;
    const uint32_t status = parser(&message, &count, &records);
    std::free(records);
    return status == 0 && count == 0 ? PM_ERR_FAILURE : status;
}

// What a blocking query came to, whose answer is then looked at and released.
template <typename Look>
uint32_t finish(mts_handle_t handle, uint32_t status, mts_msg_t &response, Look look) {
    if (status != 0) return status;
    status = look(response);
    const int32_t dropped = mts_drop(handle, &response);
    return status == 0 && dropped != 0 ? mts_errno_get(handle) : status;
}

// Receives the answer to a request that a send-only function sent.
template <typename Look>
uint32_t receive(mts_handle_t handle, uint32_t sent, mts_msg_t &request, Look look) {
    if (sent != 0) return sent;
    mts_recv_options_t options{};
    options.word[0] = 1;
    options.word[2] = query_wait;
    options.word[3] = mts_rr_token_get(&request);
    mts_msg_t response{};
    const int32_t received = pm_mts_recv_with_eintr(handle, &response, &options);
    const uint32_t error = received == 0 ? 0 : mts_errno_get(handle);
    mts_drop(handle, &request);
    return finish(handle, error, response, look);
}

uint32_t ports_in(const mts_msg_t &message) { return parse(message, pm_parse_get_port_info); }
uint32_t brief_in(const mts_msg_t &message) { return parse(message, pm_parse_get_port_info_brief); }
uint32_t next_in(const mts_msg_t &message) { return parse(message, pm_parse_get_next_port_info); }
uint32_t status_in(const mts_msg_t &message) {
    if (mts_payload_size(&message) < sizeof(uint32_t)) return PM_ERR_NO_PAYLOAD;
    return ntohl(*static_cast<const uint32_t *>(mts_payload_get(&message)));
}

uint32_t send_get_port_info(mts_handle_t handle) {
    const auto range = fc_ports();
    mts_msg_t request{};
    return receive(handle, pm_send_get_port_info(handle, 0, 0, 0, 0, 0, 1, &range, &request), request, ports_in);
}

uint32_t get_port_info(mts_handle_t handle) {
    const auto range = fc_ports();
    mts_msg_t response{};
    return finish(handle, pm_get_port_info(handle, 0, 0, 0, 0, 0, 1, &range, &response), response, ports_in);
}

uint32_t send_get_port_info_brief(mts_handle_t handle) {
    const auto range = ethernet_ports();
    mts_msg_t request{};
    return receive(handle, pm_send_get_port_info_brief(handle, 0, 0, 0, 0, 0, 1, &range, &request), request, brief_in);
}

uint32_t get_port_info_brief(mts_handle_t handle) {
    const auto range = ethernet_ports();
    mts_msg_t response{};
    return finish(handle, pm_get_port_info_brief(handle, 0, 0, 0, 0, 0, 1, &range, &response), response, brief_in);
}

uint32_t send_get_port_info_range(mts_handle_t handle) {
    const auto [first, last] = fc_ports();
    mts_msg_t request{};
    return receive(handle, pm_send_get_port_info_range(handle, first, last, &request), request, ports_in);
}

uint32_t get_port_info_range(mts_handle_t handle) {
    const auto [first, last] = fc_ports();
    mts_msg_t response{};
    return finish(handle, pm_get_port_info_range(handle, first, last, &response), response, ports_in);
}

// Too many ports for one packet: the answer comes in a memory file.
uint32_t get_many_ports_brief(mts_handle_t handle) {
    const pm_if_index_range_t range{index_of("fc1/1"), index_of("fc3/48")};
    std::vector<pm_if_index_range_t> ranges(35, range);
    mts_msg_t response{};
    const uint32_t status =
        pm_get_port_info_brief(handle, 0, 0, 0, 0, 0, static_cast<uint32_t>(ranges.size()), ranges.data(), &response);
    return finish(handle, status, response, brief_in);
}

uint32_t send_get_next_port_info(mts_handle_t handle) {
    mts_msg_t request{};
    return receive(handle, pm_send_get_next_port_info(handle, index_of("fc1/1"), &request), request, next_in);
}

uint32_t get_next_port_info(mts_handle_t handle) {
    mts_msg_t response{};
    return finish(handle, pm_get_next_port_info(handle, index_of("fc1/1"), &response), response, next_in);
}

uint32_t ips_send_receive(mts_handle_t handle) {
    const uint8_t type = IF_TYPE_FC;
    mts_msg_t response{};
    const int32_t result =
        pm_ips_send_receive(handle, PM_NODE_SUPERVISOR, PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_IF_INDEX_LISTING, &type,
                            sizeof type, &response, query_wait);
    return finish(handle, result == 0 ? 0 : PM_ERR_FAILURE, response, status_in);
}

uint32_t get_module_resources(mts_handle_t handle) {
    mts_msg_t response{};
    return finish(handle, pm_get_module_resources(handle, 0, nullptr, 0, PM_NODE_SUPERVISOR, &response), response,
                  status_in);
}

// As many ranges as make the request go out in parts, and in a memory file.
template <uint16_t range_count>
uint32_t get_module_resources_of(mts_handle_t handle) {
    const std::vector<pm_if_index_range_t> ranges(range_count, one("fc1/1"));
    mts_msg_t response{};
    return finish(handle, pm_get_module_resources(handle, range_count, ranges.data(), 0, PM_NODE_SUPERVISOR, &response),
                  response, status_in);
}

uint32_t get_if_index_listing(mts_handle_t handle) {
    mts_msg_t response{};
    return finish(handle, pm_get_if_index_listing(IF_TYPE_FC, handle, &response, query_wait), response, status_in);
}

uint32_t get_startup_if_index_listing(mts_handle_t handle) {
    const std::array<char, PM_STARTUP_BLOCK_SIZE> block{"fc1/1-4"};
    mts_msg_t response{};
    return finish(handle, pm_get_startup_if_index_listing(block.data(), IF_TYPE_FC, handle, &response, query_wait),
                  response, status_in);
}

uint32_t get_sfp_diag_info(mts_handle_t handle) {
    pm_sfp_diag_info_t info{};
    pm_sfp_diag_extra_t extra{};
    return pm_get_sfp_diag_info(handle, index_of("Ethernet4/5"), &info, &extra);
}

uint32_t get_clear_eth_stats(mts_handle_t handle) {
    const if_index_t port = index_of("Ethernet4/5");
    pm_eth_stats_t stats{};
    const int32_t status = pm_get_clear_eth_stats(handle, port, port, PM_ETH_STATS_READ, &stats);
    if (status != 0) return static_cast<uint32_t>(status);
    return stats.result == 0 ? PM_ERR_FAILURE : 0;  // an answer of another size is passed over
}

// What a query over CMI came to; a success has records.
template <typename Record>
uint32_t finish_cmi(uint32_t status, uint32_t count, Record *records) {
    const std::unique_ptr<Record, decltype(&std::free)> owner(records, std::free);
    return status == 0 && (count == 0 || records == nullptr) ? PM_ERR_FAILURE : status;
}

uint32_t get_port_config(mts_handle_t handle, uint32_t kind, pm_if_index_range_t range) {
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    const uint32_t status = pm_cmi_get_port_config(handle, kind, 1, &range, &count, &records, cmi_wait);
    return finish_cmi(status, count, records);
}

uint32_t get_owners_config(mts_handle_t handle) {
    return get_port_config(handle, PM_CONFIG_GET_FROM_OWNER, fc_ports());
}

uint32_t get_module_interface_listing(mts_handle_t handle) {
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    const uint32_t status =
        pm_cmi_get_module_interface_listing(handle, 1, index_of("fc1/1"), cmi_wait, &count, &records);
    return finish_cmi(status, count, records);
}

// After a failure of the transport the entries are not ours; after a status of the service they are.
uint32_t set_port_config(mts_handle_t handle) {
    const auto range = one("fc1/2");
    const uint8_t on = 1;
    uint32_t count = 0;
    pm_set_port_result_t *entries = nullptr;
    const uint32_t status = pm_cmi_set_port_config(handle, "test", nullptr, 1, &range, PM_ATTR_BEACON_MODE, sizeof on,
                                                   &on, &count, &entries, cmi_wait);
    const std::unique_ptr<pm_set_port_result_t, decltype(&std::free)> owner(entries, std::free);
    if (status != 0) return status;
    return entries == nullptr || count != 1 ? PM_ERR_FAILURE : entries->status;
}

template <auto query>
uint32_t get_fcot_info(mts_handle_t handle) {
    const auto range = fc_ports();
    uint32_t count = 0;
    pm_fcot_info_t *records = nullptr;
    const uint32_t status = query(handle, 1, 1, &range, &count, &records, cmi_wait);
    return finish_cmi(status, count, records);
}

// A list of one range, as a command line hands it over.
class range_list {
  public:
    explicit range_list(pm_if_index_range_t range)
        : list_(static_cast<pm_if_range_list_t *>(std::calloc(1, sizeof(pm_if_range_list_t) + sizeof range)),
                std::free) {
        if (list_ == nullptr) return;
        list_->count = 1;
        list_->ranges[0] = range;
    }
    [[nodiscard]] const pm_if_range_list_t *get() const { return list_.get(); }

  private:
    std::unique_ptr<pm_if_range_list_t, decltype(&std::free)> list_;
};

uint32_t config_sub_interface(mts_handle_t handle) {
    return pm_cli_config_sub_interface(handle, 1, PM_IF_KINDS_WITH_SUB_INTF, 0, range_list(one("Ethernet4/6.10")).get(),
                                       cmi_wait);
}

uint32_t snmp_config_sub_interface(mts_handle_t handle) {
    pm_snmp_sub_intf_t record{};
    record.main = index_of("Ethernet4/7");
    record.bitmap[1] = 0x20;
    return pm_snmp_config_sub_interface(handle, &record, cmi_wait);
}

uint32_t send_sub_interface_request(mts_handle_t handle) {
    std::array<uint32_t, 3 + sizeof(pm_sub_intf_entry_t) / sizeof(uint32_t)> words{};
    words[0] = htonl(PM_SUB_INTF_CREATE);
    words[2] = htonl(1);
    auto *const entry = reinterpret_cast<pm_sub_intf_entry_t *>(&words[3]);
    entry->main = htonl(index_of("Ethernet4/8"));
    entry->sub_interfaces.size = sizeof entry->sub_interfaces.bits;
    entry->sub_interfaces.bits[1] = 0x20;
    return pm_cmi_config_sub_interface(handle, words.data(), sizeof words, cmi_wait);
}

uint32_t config_loopback_interface(mts_handle_t handle) {
    return pm_cli_config_loopback_interface(handle, 1, PM_IF_KIND_LOOPBACK, 0, range_list(one("loopback77")).get(),
                                            cmi_wait);
}

constexpr exchange_call message(const char *name, uint32_t sap, uint32_t opcode, uint32_t (*run)(mts_handle_t)) {
    return {name, sap, opcode, query_wait, false, false, false, run};
}

constexpr exchange_call line_card(const char *name, uint32_t sap, uint32_t opcode, uint32_t (*run)(mts_handle_t)) {
    return {name, sap, opcode, query_wait, true, false, false, run};
}

constexpr exchange_call cmi_query(const char *name, uint32_t sap, uint32_t opcode, uint32_t (*run)(mts_handle_t)) {
    return {name, sap, opcode, cmi_wait, false, true, false, run};
}

constexpr exchange_call cmi_change(const char *name, uint32_t sap, uint32_t opcode, uint32_t (*run)(mts_handle_t)) {
    return {name, sap, opcode, cmi_wait, false, true, true, run};
}

constexpr std::array calls{
    message("pm_send_get_port_info", PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_PORT_INFO, send_get_port_info),
    message("pm_get_port_info", PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_PORT_INFO, get_port_info),
    message("pm_send_get_port_info_brief", PM_SAP_ETHERNET, MTS_OPC_PM_GET_PORT_INFO_BRIEF, send_get_port_info_brief),
    message("pm_get_port_info_brief", PM_SAP_ETHERNET, MTS_OPC_PM_GET_PORT_INFO_BRIEF, get_port_info_brief),
    message("pm_get_port_info_brief.memory_file", PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_PORT_INFO_BRIEF,
            get_many_ports_brief),
    message("pm_send_get_port_info_range", PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_PORT_INFO, send_get_port_info_range),
    message("pm_get_port_info_range", PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_PORT_INFO, get_port_info_range),
    message("pm_send_get_next_port_info", PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_NEXT_PORT_INFO, send_get_next_port_info),
    message("pm_get_next_port_info", PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_NEXT_PORT_INFO, get_next_port_info),
    message("pm_ips_send_receive", PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_IF_INDEX_LISTING, ips_send_receive),
    message("pm_get_module_resources", PM_SAP_MODULE_RESOURCE, MTS_OPC_PM_GET_MODULE_RESOURCES, get_module_resources),
    message("pm_get_module_resources.long_request", PM_SAP_MODULE_RESOURCE, MTS_OPC_PM_GET_MODULE_RESOURCES,
            get_module_resources_of<200>),
    message("pm_get_module_resources.memory_file", PM_SAP_MODULE_RESOURCE, MTS_OPC_PM_GET_MODULE_RESOURCES,
            get_module_resources_of<30000>),
    message("pm_get_if_index_listing", PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_IF_INDEX_LISTING, get_if_index_listing),
    message("pm_get_startup_if_index_listing", PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING,
            get_startup_if_index_listing),
    line_card("pm_get_sfp_diag_info", PM_SAP_SFP_DIAGNOSTICS, MTS_OPC_GET_SFP_DIAG_INFO, get_sfp_diag_info),
    line_card("pm_get_clear_eth_stats", PM_SAP_ETHERNET_STATS, MTS_OPC_PM_GET_CLEAR_ETH_STATS, get_clear_eth_stats),
    cmi_query("pm_cmi_get_port_config", PM_SAP_PORT_MANAGER, CMI_OPC_PM_GET_PORT_CONFIG, get_owners_config),
    cmi_query("pm_cmi_get_module_interface_listing", PM_SAP_PORT_MANAGER, CMI_OPC_PM_GET_MODULE_INTF_LISTING,
              get_module_interface_listing),
    cmi_query("pm_cmi_get_fcot_info", PM_SAP_PORT_MANAGER, CMI_OPC_PM_GET_FCOT_INFO,
              get_fcot_info<pm_cmi_get_fcot_info>),
    cmi_query("pm_get_next_port_fcot_info_with_ddm", PM_SAP_PORT_MANAGER, CMI_OPC_PM_GET_FCOT_INFO,
              get_fcot_info<pm_get_next_port_fcot_info_with_ddm>),
    cmi_change("pm_cmi_set_port_config", PM_SAP_PORT_MANAGER, CMI_OPC_PM_SET_PORT_CONFIG, set_port_config),
    cmi_change("pm_cli_config_sub_interface", PM_SAP_ETHERNET_CHANNEL, CMI_OPC_PM_CONFIG_SUB_INTF,
               config_sub_interface),
    cmi_change("pm_snmp_config_sub_interface", PM_SAP_ETHERNET_CHANNEL, CMI_OPC_PM_CONFIG_SUB_INTF,
               snmp_config_sub_interface),
    cmi_change("pm_cmi_config_sub_interface", PM_SAP_ETHERNET_CHANNEL, CMI_OPC_PM_CONFIG_SUB_INTF,
               send_sub_interface_request),
    cmi_change("pm_cli_config_loopback_interface", PM_SAP_ETHERNET_CHANNEL, CMI_OPC_PM_CONFIG_LOOPBACK,
               config_loopback_interface),
};

}  // namespace

void PrintTo(const exchange_call &call, std::ostream *out) { *out << call.name; }

std::span<const exchange_call> exchange_calls() { return calls; }

uint32_t failure_of(const exchange_call &call, uint32_t error) {
    const std::string_view name = call.name;
    if (name == "pm_ips_send_receive") return PM_ERR_FAILURE;
    if (name == "pm_get_clear_eth_stats") return static_cast<uint32_t>(-1);
    return error;
}

uint32_t asked_line_card() {
    uint8_t slot = 0;
    if_index_get_slot(index_of("Ethernet4/5"), &slot);
    return pm::line_card_node(slot);
}
