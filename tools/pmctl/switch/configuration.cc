// SPDX-License-Identifier: Apache-2.0
#include "switch/configuration.h"

#include <arpa/inet.h>
#include <pwd.h>
#include <unistd.h>

#include <array>

#include <fmt/core.h>

#include "failure.h"
#include "port_mgr/loopback_config.h"
#include "port_mgr/port_config.h"
#include "port_mgr/status.h"
#include "port_mgr/sub_interface_config.h"
#include "switch/record_array.h"
#include "switch/status_words.h"

namespace pmctl {
namespace {

constexpr const char *program_name = "pmctl";

// A list of one range as the library takes it.
struct range_list {
    std::array<uint32_t, 3> head{0, 1, 0};
    pm_if_index_range_t range;

    [[nodiscard]] const pm_if_range_list_t *get() const { return reinterpret_cast<const pm_if_range_list_t *>(this); }
};
static_assert(sizeof(range_list) == sizeof(pm_if_range_list_t) + sizeof(pm_if_index_range_t));

// A service that refuses a request as a whole has nothing against the interfaces.
std::string no_permission() {
    return fmt::format("the switch takes no configuration from {}: {}", user_name(),
                       status_words(status_source::answer, PM_ERR_REJECTED));
}

// The library itself refuses what sub-interfaces of port channels never take, without a result.
uint32_t status_without_results(uint32_t status) { return status == PM_ERR_FAILURE ? PM_ERR_REJECTED : status; }

}  // namespace

std::string user_name() {
    const passwd *user = getpwuid(geteuid());
    return user != nullptr ? user->pw_name : fmt::format("uid {}", geteuid());
}

std::vector<pm_port_info_t> configuration::ports(const interface_page &page) { return ask(page_name(page), page); }

std::vector<pm_port_info_t> configuration::ports(const interface_range &range) {
    std::vector<pm_port_info_t> ports;
    for (const pm_if_index_range_t &page : range_pages(range))
        for (const pm_port_info_t &port : ask(range.text(), {&page, 1})) ports.push_back(port);
    if (ports.empty()) throw query_refused(fmt::format("no such interface: {}", range.text()));
    return ports;
}

std::vector<pm_port_info_t> configuration::ask(const std::string &subject,
                                               std::span<const pm_if_index_range_t> ranges) {
    record_array<pm_port_info_t> found;
    pm_port_info_t *records = nullptr;
    const uint32_t status =
        pm_cmi_get_port_config(connection_.handle(), PM_CONFIG_GET_FROM_OWNER, static_cast<uint32_t>(ranges.size()),
                               ranges.data(), &found.count, &records, usual_wait);
    if (status == PM_ERR_INVALID_RANGE) return {};
    connection_.check_exchange(subject, status);
    found.records.reset(records);
    return {found.all().begin(), found.all().end()};
}

void configuration::set(const interface_page &page, const attribute_value &value, change_results &results) {
    record_array<pm_set_port_result_t> found;
    pm_set_port_result_t *entries = nullptr;
    const uint32_t status =
        pm_cmi_set_port_config(connection_.handle(), user_.c_str(), program_name, static_cast<uint32_t>(page.size()),
                               page.data(), value.attribute, static_cast<uint8_t>(value.bytes.size()),
                               value.bytes.data(), &found.count, &entries, usual_wait);
    // After a failure of the transport the entries are not ours.
    if (is_transport_error(status)) connection_.check_exchange(page_name(page), status);
    found.records.reset(entries);
    if (status == PM_ERR_REJECTED && found.count == 0) throw switch_unavailable(no_permission());
    const bool is_silent = status == 0 || found.count != 0;
    const auto otherwise = is_silent ? std::nullopt : std::optional(status_without_results(status));
    for (const pm_if_index_range_t &each : page) results[each.first] = otherwise;
    for (const pm_set_port_result_t &entry : found.all()) results[entry.if_index] = ntohl(entry.status);
}

uint32_t configuration::config_sub_interfaces(const interface_range &range, bool creates) {
    return config(range, creates, PM_IF_KINDS_WITH_SUB_INTF, pm_cli_config_sub_interface);
}

uint32_t configuration::config_loopbacks(const interface_range &range, bool creates) {
    return config(range, creates, PM_IF_KIND_LOOPBACK, pm_cli_config_loopback_interface);
}

template <typename Function>
uint32_t configuration::config(const interface_range &range, bool creates, uint32_t kinds, Function function) {
    const range_list list{.range = {range.first(), range.last()}};
    const uint32_t status = function(connection_.handle(), creates ? 1 : 0, kinds, 0, list.get(), usual_wait);
    if (is_transport_error(status)) connection_.check_exchange(range.text(), status);
    return status;
}

}  // namespace pmctl
