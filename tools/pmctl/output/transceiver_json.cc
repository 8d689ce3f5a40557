// SPDX-License-Identifier: Apache-2.0
#include "output/transceiver_json.h"

#include <fmt/core.h>

#include "output/json_text.h"
#include "output/transceiver_words.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

// Zero is what a transceiver reports that does not tell.
json_value or_null(uint32_t zero_or_number, double number) {
    return zero_or_number == 0 ? json_value(nullptr) : json_value(number);
}

std::vector<std::string> reach_texts(const std::vector<sff8472::reach> &reaches) {
    std::vector<std::string> texts;
    for (const sff8472::reach &each : reaches)
        texts.push_back(fmt::format("{} m of {}", metres_text(each), each.medium));
    return texts;
}

json_fields identity_fields(const transceiver &from) {
    const sff8472::identification &of = from.identity;
    return {{"identifier", of.identifier},
            {"technology", of.technology},
            {"connector", of.connector},
            {"vendor", of.vendor},
            {"vendor_oui", oui_of(of)},
            {"part_number", of.part_number},
            {"revision", of.revision},
            {"serial_number", of.serial_number},
            {"date", of.date},
            {"lot", of.lot},
            {"wavelength", or_null(of.wavelength, of.wavelength / 100.0)},
            {"bit_rate", or_null(of.bit_rate, of.bit_rate)},
            {"reaches", reach_texts(from.reaches)},
            {"checksums_are_right", of.checksums_are_right}};
}

void add_number(json_fields &fields, const measured_quantity &of, const std::string &key, int32_t number) {
    fields.emplace_back(key, in_unit(of, number));
    if (!of.is_power) return;
    const std::optional<double> level = dbm(number);
    fields.emplace_back(key + "_dbm", level ? json_value(*level) : json_value(nullptr));
}

json_fields diagnostics_fields(const transceiver_diagnostics &from) {
    json_fields fields{{"read_by", std::string(reader_of(from))},
                       {"age", from.age ? json_value(*from.age) : json_value(nullptr)},
                       {"is_externally_calibrated", from.is_externally_calibrated},
                       {"alarms", raised_names(from.raised.alarms)},
                       {"warnings", raised_names(from.raised.warnings)}};
    for (const measured_quantity &each : measured_quantities) {
        const sff8472::reading &of = from.values[static_cast<size_t>(each.of)];
        const std::string key = each.key;
        add_number(fields, each, key, of.value);
        fields.emplace_back(key + "_state", std::string(level_words(sff8472::level_of(from.raised, each.of))));
        for (const threshold &limit : thresholds) add_number(fields, each, key + "_" + limit.key, of.*limit.number);
    }
    return fields;
}

void add(json_fields &fields, json_fields more, bool are_known) {
    for (auto &[key, value] : more) fields.emplace_back(key, are_known ? std::move(value) : json_value(nullptr));
}

json_fields object_of(const transceiver_port &port) {
    const transceiver of = port.plugged_in.value_or(transceiver{});
    json_fields fields{{"if_index", port.if_index},
                       {"name", interface_name(port.if_index)},
                       {"takes_transceiver", port.takes_one},
                       {"is_present", port.plugged_in.has_value()}};
    add(fields, identity_fields(of), port.plugged_in.has_value());
    add(fields, diagnostics_fields(of.diagnostics.value_or(transceiver_diagnostics{})), of.diagnostics.has_value());
    return fields;
}

}  // namespace

std::string transceiver_json(const std::vector<transceiver_port> &ports) {
    std::vector<json_fields> objects;
    for (const transceiver_port &port : ports) objects.push_back(object_of(port));
    return json_text("interfaces", objects);
}

}  // namespace pmctl
