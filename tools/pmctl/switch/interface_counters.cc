// SPDX-License-Identifier: Apache-2.0
#include "switch/interface_counters.h"

#include <algorithm>
#include <cerrno>

#include <fmt/core.h>

#include "failure.h"
#include "platform/if_index.h"
#include "port_mgr/status.h"
#include "switch/interface_names.h"
#include "switch/switch_connection.h"

namespace pmctl {
namespace {

constexpr uint8_t counted_types[] = {IF_TYPE_ETHERNET, IF_TYPE_FCIP, IF_TYPE_ETHERNET_KIND, IF_TYPE_ETHERNET_SFP};
constexpr int32_t no_answer = -1;

// Of an exchange that failed without a status: the transport's error number, or 0 when there was an answer.
std::string reason_without_answer(uint32_t error) {
    if (error == 0) return "its line card cannot reach the port";
    if (error == EHOSTUNREACH) return "its line card does not answer";
    if (error == ETIMEDOUT) return "its line card did not answer in time";
    return port_mgr::status(error, port_mgr::origin::exchange).words();
}

std::string reason_of(int32_t status, uint32_t error) {
    if (status == no_answer) return reason_without_answer(error);
    if (status == ENOENT) return "no line card counts for it";
    const port_mgr::status refusal(static_cast<uint32_t>(status), port_mgr::origin::exchange);
    const std::string words = refusal.words();
    return refusal.value() == PM_ERR_REJECTED ? fmt::format("its line card refuses: {}", words) : words;
}

}  // namespace

bool has_counters(if_index_t index) {
    return std::find(std::begin(counted_types), std::end(counted_types), interface_type(index)) !=
           std::end(counted_types);
}

// Over a handle of its own, whose error number is that of this question. An answer that cannot be understood leaves no
// trace but the result that is not there.
pm_eth_stats_t counter_client::exchange(if_index_t index, uint32_t request_word) {
    const std::string name = interface_name(index);
    if (const auto other = silent_.asked_in_vain(index))
        throw query_refused(
            fmt::format("{}: its line card did not answer in time about {}", name, interface_name(*other)));
    const platform_dev::mts_handle handle = open_handle();
    pm_eth_stats_t stats{};
    const int32_t status = pm_get_clear_eth_stats(handle.get(), index, index, request_word, &stats);
    if (status == 0 && stats.result != 0) return stats;
    if (status == 0) throw query_refused(fmt::format("{}: the answer cannot be understood", name));
    const uint32_t error = mts_errno_get(handle.get());
    const std::string message = fmt::format("{}: {}", name, reason_of(status, error));
    if (status == no_answer && error == EINTR) throw switch_unavailable(message);
    if (status == no_answer && error == ETIMEDOUT) silent_.note(index);
    throw query_refused(message);
}

}  // namespace pmctl
