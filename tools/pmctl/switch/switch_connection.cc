// SPDX-License-Identifier: Apache-2.0
#include "switch/switch_connection.h"

#include <cerrno>
#include <climits>

#include <fmt/core.h>

#include <system_error>

#include "failure.h"
#include "port_mgr/cpp/owners.hpp"
#include "port_mgr/port_info_request.h"

namespace pmctl {
namespace {

// The run-time directory for messages.
std::string runtime_directory() {
    char path[PATH_MAX] = "";
    mts_dev_runtime_dir(path, sizeof path);
    return *path != '\0' ? path : "the run-time directory";
}

std::string reason_not_to_open(int error) {
    if (error == EPERM)
        return "it must be your own, or named by MTS_RUNTIME_DIR, with mode 0700, or 0710 or 0750 to share it with its "
               "group";
    return std::generic_category().message(error);
}

std::string not_running() {
    return fmt::format("no switch is running in {}: start one with: pm-virtual-switch CHASSIS.toml",
                       runtime_directory());
}

// Why nobody in the run-time directory is asked; empty when the error says something else.
std::string refusal(uint32_t error) {
    if (error == EACCES)
        return fmt::format(
            "the switch in {} is for its owner, root and the group that it is shared with: "
            "ask its owner to start it with --config-group, and to add you to the group",
            runtime_directory());
    if (error == EPERM)
        return fmt::format("what serves in {} does not run as the owner of that directory, so it is not believed",
                           runtime_directory());
    return "";
}

}  // namespace

platform_dev::mts_handle open_handle() {
    platform_dev::mts_handle handle;
    const int error = errno;
    if (!handle)
        throw switch_unavailable(
            fmt::format("cannot open the message transport in {}: {}", runtime_directory(), reason_not_to_open(error)));
    return handle;
}

// A service that is missing beside a port manager that answers concerns this question only.
void switch_connection::check(const std::string &subject, port_mgr::status status) const {
    if (status.ok()) return;
    const std::string message = fmt::format("{}: {}", subject, status.words());
    if (!status.is_transport_failure()) throw query_refused(message);
    if (const std::string words = refusal(status.value()); !words.empty()) throw switch_unavailable(words);
    if (status.value() != EHOSTUNREACH) throw switch_unavailable(message);
    if (!port_manager_answers()) throw switch_unavailable(not_running());
    throw query_refused(fmt::format("{}: its service does not run on this switch", subject));
}

bool switch_connection::port_manager_answers() const {
    constexpr if_index_t before_the_first = 0;
    mts_msg_t response{};
    if (pm_get_next_port_info(handle(), before_the_first, &response) != 0) return false;
    const port_mgr::message answer(handle(), response);
    return true;
}

}  // namespace pmctl
