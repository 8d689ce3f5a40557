// SPDX-License-Identifier: Apache-2.0
#include "channel_health.hpp"

#include <platform_dev/if_index_dev.h>
#include <platform_dev/mts_handle.hpp>

#include <cstdio>

namespace {

using indexes = std::vector<if_index_t>;

int failures = 0;

void expect(bool is_so, const char *what) {
    std::printf("%s: %s\n", is_so ? "ok" : "FAILED", what);
    if (!is_so) ++failures;
}

if_index_t index_of(const char *name) {
    if_index_t index = 0;
    expect(if_index_from_name(name, &index) == 0, name);
    return index;
}

void shut_down(mts_handle_t handle, if_index_t port) {
    constexpr uint8_t down = 2;
    const pm_if_index_range_t range{port, port};
    const auto change = port_mgr::set_port_config(handle, {&range, 1}, PM_ATTR_ADMIN_STATE, port_mgr::bytes_of(down));
    expect(change.request.ok(), "the switch takes a change");
}

}  // namespace

int main() {
    const platform_dev::mts_handle handle;
    const if_index_t channel = index_of("port-channel1");

    const auto members = members_down(handle.get(), channel);
    expect(members && *members == indexes{index_of("fc1/3"), index_of("fc1/4")}, "finds the members that are down");

    shut_down(handle.get(), index_of("fc1/1"));
    const auto more = members_down(handle.get(), channel);
    expect(more && *more == indexes{index_of("fc1/1"), index_of("fc1/3"), index_of("fc1/4")}, "sees a member go down");

    const auto none = members_down(handle.get(), index_of("port-channel2"));
    expect(none && none->empty(), "finds nothing in a channel that is not there");

    const auto unasked = members_down(0, channel);
    expect(!unasked && unasked.why().value() == PM_ERR_INVALID_PARAM, "tells why it cannot say");
    return failures == 0 ? 0 : 1;
}
