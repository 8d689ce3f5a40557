// SPDX-License-Identifier: Apache-2.0
#include "output/transceiver_view.h"

#include <fmt/format.h>

#include "output/printable_text.h"
#include "output/record_member.h"
#include "output/transceiver_words.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

using sff8472::level;
using sff8472::reading;

struct level_look {
    const char *mark;  // in front of the reading, so that it is seen where the text is cut
    pmctl::tone tone;
};

level_look look_of(level of) {
    switch (of) {
        case level::high_alarm:
        case level::low_alarm:
            return {"!! ", tone::bad};
        case level::high_warning:
        case level::low_warning:
            return {"! ", tone::warning};
        default:
            return {"", tone::plain};
    }
}

const reading &reading_of(const transceiver_diagnostics &in, const measured_quantity &of) {
    return in.values[static_cast<size_t>(of.of)];
}

std::string shown(const std::string &text) { return text.empty() ? std::string(absent_text) : printable_text(text); }

// In nm; only some transceivers tell fractions.
std::string wavelength_text(uint32_t hundredths) {
    if (hundredths == 0) return std::string(absent_text);
    if (hundredths % 100 == 0) return fmt::to_string(hundredths / 100);
    return fmt::format("{}.{:02}", hundredths / 100, hundredths % 100);
}

std::string type_text(const sff8472::identification &of) {
    return of.technology.empty() ? of.identifier : fmt::format("{} {}", of.identifier, of.technology);
}

const char *absence_text(const transceiver_port &of) { return of.takes_one ? "not present" : "takes none"; }

cell marked_cell(const transceiver_diagnostics &in, const measured_quantity &of) {
    const level_look look = look_of(sff8472::level_of(in.raised, of.of));
    return {look.mark + quantity_text(of, reading_of(in, of).value), look.tone};
}

void add_readings(row &cells, const std::optional<transceiver_diagnostics> &from) {
    for (const measured_quantity &each : measured_quantities)
        cells.push_back(from ? marked_cell(*from, each) : cell{std::string(absent_text)});
}

row table_row(const transceiver_port &port) {
    const std::string name = interface_name(port.if_index);
    if (!port.plugged_in) return {{name}, {absence_text(port)}};
    const sff8472::identification &identity = port.plugged_in->identity;
    row cells{{name},
              {printable_text(type_text(identity))},
              {shown(identity.vendor)},
              {shown(identity.part_number)},
              {shown(identity.serial_number)},
              {wavelength_text(identity.wavelength)}};
    add_readings(cells, port.plugged_in->diagnostics);
    return cells;
}

void add_identity(sheet &list, const transceiver &of) {
    const sff8472::identification &identity = of.identity;
    const std::string bit_rate = identity.bit_rate == 0 ? std::string() : fmt::to_string(identity.bit_rate);
    const std::vector<row> rows{
        {{"Identification"}},
        {{"Form"}, {identity.identifier}},
        {{"Technology"}, {shown(identity.technology)}},
        {{"Connector"}, {identity.connector}},
        {{"Vendor"}, {shown(identity.vendor)}},
        {{"Vendor OUI"}, {oui_of(identity)}},
        {{"Part number"}, {shown(identity.part_number)}},
        {{"Revision"}, {shown(identity.revision)}},
        {{"Serial number"}, {shown(identity.serial_number)}},
        {{"Date of manufacture"}, {shown(identity.date)}},
        {{"Lot"}, {shown(identity.lot)}},
        {{"Wavelength (nm)"}, {wavelength_text(identity.wavelength)}},
        {{"Bit rate (MBd)"}, {shown(bit_rate)}},
        {{"Checksums"}, {identity.checksums_are_right ? "right" : "wrong"}},
    };
    list.rows.insert(list.rows.end(), rows.begin(), rows.end());
    for (const sff8472::reach &each : of.reaches)
        list.rows.push_back({{fmt::format("Reach, {} (m)", each.medium)}, {metres_text(each)}});
}

cell raised_cell(uint16_t flags, tone when_raised) {
    std::string text;
    for (const std::string &each : raised_names(flags)) text += (text.empty() ? "" : ", ") + each;
    if (text.empty()) return {"none"};
    return {text, when_raised};
}

row quantity_row(const transceiver_diagnostics &in, const measured_quantity &of) {
    const level state = sff8472::level_of(in.raised, of.of);
    row cells{{of.label}, marked_cell(in, of), {level_words(state), look_of(state).tone}};
    for (const threshold &each : thresholds) cells.push_back({quantity_text(of, reading_of(in, of).*each.number)});
    return cells;
}

void add_diagnostics(sheet &list, const std::optional<transceiver_diagnostics> &found) {
    if (!found) {
        list.rows.push_back({{"Diagnostics"}, {"none"}});
        return;
    }
    list.rows.push_back({{"Diagnostics"}});
    list.rows.push_back({{"Read by"}, {reader_of(*found)}});
    const std::string age = found->age ? fmt::format("{:.3f}", static_cast<double>(*found->age) / 1000) : std::string();
    list.rows.push_back({{"Read for (s)"}, {shown(age)}});
    list.rows.push_back({{"Calibration"}, {found->is_externally_calibrated ? "external" : "internal"}});
    list.rows.push_back({{"Alarms"}, raised_cell(found->raised.alarms, tone::bad)});
    list.rows.push_back({{"Warnings"}, raised_cell(found->raised.warnings, tone::warning)});
    row titles{{"Quantity"}, {"Reading"}, {"State"}};
    for (const threshold &each : thresholds) titles.push_back({each.label});
    list.rows.push_back(titles);
    for (const measured_quantity &each : measured_quantities) list.rows.push_back(quantity_row(*found, each));
}

sheet list_of(const transceiver_port &port) {
    sheet list{interface_name(port.if_index), {}, {}};
    if (!port.plugged_in) {
        list.rows.push_back({{"Transceiver"}, {absence_text(port)}});
        return list;
    }
    add_identity(list, *port.plugged_in);
    add_diagnostics(list, port.plugged_in->diagnostics);
    return list;
}

}  // namespace

sheet transceiver_table(const std::vector<transceiver_port> &ports) {
    sheet table{"", {"Interface", "Type", "Vendor", "Part number", "Serial number", "nm"}, {}};
    for (const measured_quantity &each : measured_quantities) table.header.emplace_back(each.column);
    for (const transceiver_port &port : ports) table.rows.push_back(table_row(port));
    return table;
}

std::vector<sheet> transceiver_lists(const std::vector<transceiver_port> &ports) {
    std::vector<sheet> lists;
    for (const transceiver_port &port : ports) lists.push_back(list_of(port));
    return lists;
}

}  // namespace pmctl
