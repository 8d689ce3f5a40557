// SPDX-License-Identifier: Apache-2.0
// Lists the transceivers of ranges of interfaces, with what their line cards read from them:
//     list_transceivers FIRST LAST ...
#include <platform_dev/if_index_dev.h>
#include <platform_dev/mts_handle.hpp>
#include <port_mgr/port_manager.hpp>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace {

// Texts of the serial-id page stand at places that SFF-8472 gives, filled up with spaces.
std::string text(const pm_fcot_info_t &transceiver, size_t place, size_t width) {
    const std::string field(reinterpret_cast<const char *>(transceiver.serial_id) + place, width);
    return field.substr(0, field.find_last_not_of(' ') + 1);
}

double decibel_milliwatts(uint32_t tenths_of_microwatts) { return 10 * std::log10(tenths_of_microwatts / 10000.0); }

void print_readings(mts_handle_t handle, if_index_t if_index) {
    pm_sfp_diag_info_t readings{};
    const port_mgr::status status(pm_get_sfp_diag_info(handle, if_index, &readings, nullptr),
                                  port_mgr::origin::exchange);
    if (!status.ok()) {
        std::printf("  no readings: %s\n", status.words().c_str());
        return;
    }
    std::printf("  %.1f °C", static_cast<int32_t>(readings.temperature.value) / 256.0);
    std::printf("  %.2f V", readings.voltage.value / 10000.0);
    std::printf("  sends %.1f dBm", decibel_milliwatts(readings.tx_power.value));
    std::printf("  receives %.1f dBm\n", decibel_milliwatts(readings.rx_power.value));
}

void print(mts_handle_t handle, const pm_fcot_info_t &transceiver) {
    const std::string name = port_mgr::interface_name(transceiver.if_index);
    if ((transceiver.flags & PM_FCOT_PRESENT) == 0) {
        std::printf("%s: none\n", name.c_str());
        return;
    }
    std::printf("%s: %s %s, serial number %s\n", name.c_str(), text(transceiver, 20, 16).c_str(),
                text(transceiver, 40, 16).c_str(), text(transceiver, 68, 16).c_str());
    print_readings(handle, transceiver.if_index);
}

}  // namespace

int main(int argc, char **argv) {
    std::vector<pm_if_index_range_t> ranges;
    for (int i = 1; i + 1 < argc; i += 2) {
        if_index_t first = 0;
        if_index_t last = 0;
        if (if_index_from_name(argv[i], &first) == 0 && if_index_from_name(argv[i + 1], &last) == 0)
            ranges.push_back({first, last});
    }
    if (ranges.empty() || ranges.size() * 2 != static_cast<size_t>(argc - 1)) {
        std::fputs("usage: list_transceivers FIRST LAST ...\n", stderr);
        return 2;
    }
    const platform_dev::mts_handle handle;
    if (!handle) {
        std::perror("list_transceivers: mts_dev_open");
        return 1;
    }
    const auto transceivers = port_mgr::get_fcot_info(handle.get(), ranges);
    if (!transceivers) {
        std::fprintf(stderr, "list_transceivers: %s\n", transceivers.why().words().c_str());
        return 1;
    }
    for (const pm_fcot_info_t &transceiver : *transceivers) print(handle.get(), transceiver);
    return 0;
}
