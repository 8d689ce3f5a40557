// SPDX-License-Identifier: Apache-2.0
#include "switch/transceivers.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <map>

#include <fmt/core.h>

#include "failure.h"
#include "port_mgr/cpp/queries.hpp"
#include "port_mgr/sfp_diagnostics.h"
#include "port_mgr/transceiver_kind.h"
#include "switch/interface_names.h"
#include "switch/interface_pages.h"

namespace pmctl {
namespace {

constexpr uint64_t no_age = std::numeric_limits<uint64_t>::max();

std::optional<transceiver_diagnostics> diagnostics_in(const pm_fcot_info_t &record) {
    if ((record.flags & PM_FCOT_DIAGNOSTICS) == 0) return std::nullopt;
    const bool is_external = sff8472::is_externally_calibrated(record.serial_id[sff8472::serial_id::diagnostic_type]);
    const sff8472::readings values = sff8472::read_diagnostics(record.diagnostics, is_external);
    return transceiver_diagnostics{values, sff8472::flags_of(values), is_external, false};
}

std::optional<transceiver> transceiver_in(const pm_fcot_info_t &record) {
    if ((record.flags & PM_FCOT_PRESENT) == 0) return std::nullopt;
    return transceiver{sff8472::identify(record.serial_id), sff8472::reaches_of(record.serial_id),
                       diagnostics_in(record)};
}

using transceivers_by_port = std::map<if_index_t, std::optional<transceiver>>;

void note_missing(const interface_page &asked, const transceivers_by_port &known, std::vector<std::string> &failures) {
    for (const pm_if_index_range_t &each : asked)
        if (!known.contains(each.first))
            failures.push_back(fmt::format("{}: it is not in the answer", interface_name(each.first)));
}

// Of those interfaces that take one.
transceivers_by_port known_transceivers(const switch_connection &connection, std::vector<if_index_t> interfaces,
                                        std::vector<std::string> &failures) {
    std::erase_if(interfaces, [](if_index_t index) { return !takes_transceiver(index); });
    transceivers_by_port known;
    for (const interface_page &page : owner_pages(interfaces)) {
        try {
            const auto found =
                checked(connection, page_name(page), port_mgr::get_fcot_info_with_ddm(connection.handle(), page));
            for (const pm_fcot_info_t &record : found) known[if_index_t{record.if_index}] = transceiver_in(record);
            note_missing(page, known, failures);
        } catch (const query_refused &refusal) {
            failures.emplace_back(refusal.what());
        }
    }
    return known;
}

// The numbers of a line card are as wide as its words; only temperatures may be negative.
int32_t number_of(uint32_t word, bool is_signed) {
    if (is_signed) return static_cast<int32_t>(word);
    return static_cast<int32_t>(std::min<uint32_t>(word, std::numeric_limits<int32_t>::max()));
}

sff8472::reading reading_of(const pm_sfp_quantity_t &from, bool is_signed = false) {
    return {.value = number_of(from.value, is_signed),
            .high_alarm = number_of(from.high_alarm, is_signed),
            .high_warning = number_of(from.high_warning, is_signed),
            .low_warning = number_of(from.low_warning, is_signed),
            .low_alarm = number_of(from.low_alarm, is_signed)};
}

sff8472::readings readings_of(const pm_sfp_diag_info_t &info) {
    return {reading_of(info.temperature, true), reading_of(info.voltage), reading_of(info.bias),
            reading_of(info.tx_power), reading_of(info.rx_power)};
}

sff8472::raised_flags flags_of(const pm_sfp_diag_extra_t &extra) {
    return {static_cast<uint16_t>(extra.alarms), static_cast<uint16_t>(extra.warnings)};
}

}  // namespace

bool takes_transceiver(if_index_t index) { return pm_is_transceiver_supported(index) != 0 && !is_sub_interface(index); }

std::vector<transceiver_port> transceiver_client::ports(const std::vector<if_index_t> &interfaces,
                                                        std::vector<std::string> &failures) {
    const transceivers_by_port known = known_transceivers(connection_, interfaces, failures);
    std::vector<transceiver_port> ports;
    for (const if_index_t index : interfaces) {
        const auto found = known.find(index);
        const bool is_known = found != known.end();
        const bool takes_one = takes_transceiver(index);
        if (takes_one && !is_known) continue;
        transceiver_port &port = ports.emplace_back();
        port.if_index = index;
        port.takes_one = takes_one;
        if (is_known) port.plugged_in = found->second;
    }
    return ports;
}

std::optional<transceiver_diagnostics> transceiver_client::line_card_diagnostics(if_index_t index) {
    if (silent_.asked_in_vain(index)) return std::nullopt;
    pm_sfp_diag_info_t info{};
    pm_sfp_diag_extra_t extra{.alarms = 0, .warnings = 0, .age = no_age};
    const uint32_t status = pm_get_sfp_diag_info(connection_.handle(), index, &info, &extra);
    if (status == EINTR)
        throw switch_unavailable(
            fmt::format("{}: {}", interface_name(index), port_mgr::status(status, port_mgr::origin::exchange).words()));
    if (status == ETIMEDOUT) silent_.note(index);
    if (status != 0) return std::nullopt;
    const sff8472::readings values = readings_of(info);
    const bool is_external = (info.flags & PM_SFP_EXTERNALLY_CALIBRATED) != 0;
    if (extra.age == no_age) return transceiver_diagnostics{values, sff8472::flags_of(values), is_external, true};
    return transceiver_diagnostics{values, flags_of(extra), is_external, true, uint64_t{extra.age}};
}

}  // namespace pmctl
