// SPDX-License-Identifier: Apache-2.0
// The kernel's table of network devices. The input is the name of a device, a newline, and the table.
#include <dlfcn.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "port_mgr/net_dev_stats.h"
#include "support/fuzz.h"

namespace {

std::string *table = nullptr;

}  // namespace

// The library's own fopen finds this one.
extern "C" __attribute__((visibility("default"))) FILE *fopen(const char *path, const char *mode) {
    if (table != nullptr && std::string_view(path) == "/proc/net/dev")
        return fmemopen(table->data(), table->size(), mode);
    static const auto next = reinterpret_cast<decltype(&fopen)>(dlsym(RTLD_NEXT, "fopen"));
    return next(path, mode);
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string_view input(reinterpret_cast<const char *>(data), size);
    const size_t end = std::min(input.find('\n'), size);
    const std::string name(input.substr(0, end));
    std::string text(input.substr(std::min(end + 1, size)));
    table = &text;
    pm_net_dev_stats_t stats{.rx_packets = 0x5a5a5a5a};
    const int32_t status = pm_get_proc_net_dev_stats(name.c_str(), &stats);
    table = nullptr;
    FUZZ_REQUIRE(status == 0 || status == -1);
    FUZZ_REQUIRE(status == 0 || stats.rx_packets == 0x5a5a5a5a);
    FUZZ_REQUIRE(status != 0 || (!name.empty() && text.find(name.c_str()) != std::string::npos));
    return 0;
}
