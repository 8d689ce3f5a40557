// SPDX-License-Identifier: Apache-2.0
#include "switch/configuration.h"

#include <pwd.h>
#include <unistd.h>

#include <array>

#include <fmt/core.h>

#include "failure.h"
#include "port_mgr/cpp/queries.hpp"
#include "port_mgr/loopback_config.h"
#include "port_mgr/status.h"
#include "port_mgr/sub_interface_config.h"

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
std::string no_permission(port_mgr::status refusal) {
    return fmt::format("the switch takes no configuration from {}: {}", user_name(), refusal.words());
}

// The library itself refuses what sub-interfaces of port channels never take, without a result.
port_mgr::status status_without_results(port_mgr::status status) {
    return status.value() == PM_ERR_FAILURE ? port_mgr::status(PM_ERR_REJECTED, status.from()) : status;
}

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
    auto answer = port_mgr::get_port_config(connection_.handle(), ranges);
    if (answer.why().value() == PM_ERR_INVALID_RANGE) return {};
    const auto found = checked(connection_, subject, std::move(answer));
    return {found.begin(), found.end()};
}

void configuration::set(const interface_page &page, const attribute_value &value, change_results &results) {
    const auto [request, entries] = port_mgr::set_port_config(connection_.handle(), page, value.attribute, value.bytes,
                                                              {.user = user_.c_str(), .from = program_name});
    if (request.is_transport_failure()) connection_.check(page_name(page), request);
    if (request.value() == PM_ERR_REJECTED && entries.empty()) throw switch_unavailable(no_permission(request));
    const bool is_silent = request.ok() || !entries.empty();
    const auto otherwise = is_silent ? std::nullopt : std::optional(status_without_results(request));
    for (const pm_if_index_range_t &each : page) results[each.first] = otherwise;
    for (const pm_set_port_result_t &entry : entries) results[entry.if_index] = port_mgr::status_of(entry);
}

port_mgr::status configuration::config_sub_interfaces(const interface_range &range, bool creates) {
    return config(range, creates, PM_IF_KINDS_WITH_SUB_INTF, pm_cli_config_sub_interface);
}

port_mgr::status configuration::config_loopbacks(const interface_range &range, bool creates) {
    return config(range, creates, PM_IF_KIND_LOOPBACK, pm_cli_config_loopback_interface);
}

template <typename Function>
port_mgr::status configuration::config(const interface_range &range, bool creates, uint32_t kinds, Function function) {
    const range_list list{.range = {range.first(), range.last()}};
    const port_mgr::status status(
        function(connection_.handle(), creates ? 1 : 0, kinds, 0, list.get(), port_mgr::usual_wait),
        port_mgr::origin::exchange);
    if (status.is_transport_failure()) connection_.check(range.text(), status);
    return status;
}

}  // namespace pmctl
