// SPDX-License-Identifier: Apache-2.0
#include "wire_record.h"

#include <algorithm>
#include <array>
#include <span>

#include "port_mgr/if_index_listing.h"
#include "presentation.h"
#include "protocol/channel_member_layout.h"
#include "protocol/config_layout.h"
#include "protocol/ethernet_stats_layout.h"
#include "protocol/listing_layout.h"
#include "protocol/member_names.h"
#include "protocol/port_info_layout.h"
#include "protocol/request_layout.h"
#include "protocol/sfp_diagnostics_layout.h"
#include "protocol/transceiver_layout.h"
#include "sff8472/page_layout.h"

namespace dissector {
namespace {

using std::string_view_literals::operator""sv;

using field_list = std::vector<wire_field>;

struct named_member {
    size_t offset;
    size_t size;
    std::string name;
};
using member_list = std::vector<named_member>;

member_list members_of(std::span<const pm::member_name> names) {
    member_list members;
    for (const auto &[offset, size, name] : names) members.push_back({offset, size, name});
    return members;
}

// Puts the members of records that lie in a member of this name in its place: "NAME.PART.MEMBER", or "NAME.MEMBER" of a
// single one.
void expand(member_list &members, std::string_view name, std::span<const pm::member_name> inner,
            std::span<const std::string_view> parts) {
    const auto outer = std::ranges::find(members, name, &named_member::name);
    member_list expanded;
    size_t offset = outer->offset;
    for (const std::string_view part : parts) {
        for (const pm::member_name &member : inner) {
            std::string full = std::string(name) + "." + (part.empty() ? "" : std::string(part) + ".") + member.name;
            expanded.push_back({offset + member.offset, member.size, std::move(full)});
        }
        offset += inner.back().offset + inner.back().size;
    }
    const auto place = members.erase(outer);
    members.insert(place, expanded.begin(), expanded.end());
}

std::string_view last_name(std::string_view name) {
    return presentation_of(name).member.empty() ? name.substr(name.rfind('.') + 1) : name;
}

size_t width_of(pm::field_kind kind) {
    switch (kind) {
        case pm::field_kind::u16:
            return sizeof(uint16_t);
        case pm::field_kind::u32:
        case pm::field_kind::if_index:
            return sizeof(uint32_t);
        case pm::field_kind::u64:
            return sizeof(uint64_t);
        case pm::field_kind::bytes:
            break;
    }
    return 1;
}

// A member that travels as it lies in memory.
wire_field unconverted(const named_member &member, size_t at) {
    const presentation shown = presentation_of(last_name(member.name));
    if (shown.kind == "numbers") return {member.name, at, 1, member.size, "number", shown.texts};
    if (!shown.kind.empty()) return {member.name, at, member.size, 1, shown.kind, shown.texts};
    return {member.name, at, member.size, 1, member.size == 1 ? "number" : "bytes"};
}

using field_table = std::span<const pm::record_field>;

// The field of the table that has the member, which it may have in common with its neighbours.
const pm::record_field *find_field(field_table table, const named_member &member) {
    const auto found = std::ranges::find_if(table, [&](const pm::record_field &field) {
        return member.offset >= field.member && member.offset < field.member + field.count * width_of(field.kind);
    });
    return found == table.end() ? nullptr : &*found;
}

// A field may have more members, or fewer elements than a member.
wire_field converted(const named_member &member, const pm::record_field &field) {
    const size_t inside = member.offset - field.member;
    const size_t at = field.wire + inside;
    if (field.kind == pm::field_kind::bytes) return unconverted(member, at);
    const size_t width = width_of(field.kind);
    const size_t count = std::min(member.size / width, field.count - inside / width);
    const bool is_interface = field.kind == pm::field_kind::if_index;
    const std::string_view texts = presentation_of(last_name(member.name)).texts;
    return {member.name, at, width, count, is_interface ? "if_index" : "number", texts};
}

enum class otherwise : uint8_t { does_not_travel, keeps_its_place };

// The members in the order of the wire. `rest` says what becomes of those that no table names.
field_list fields_of(const member_list &members, std::initializer_list<field_table> tables, otherwise rest) {
    field_list fields;
    for (const named_member &member : members) {
        const pm::record_field *found = nullptr;
        for (const field_table table : tables) found = found == nullptr ? find_field(table, member) : found;
        if (found != nullptr)
            fields.push_back(converted(member, *found));
        else if (rest == otherwise::keeps_its_place)
            fields.push_back(unconverted(member, member.offset));
    }
    std::ranges::sort(fields, {}, &wire_field::at);
    return fields;
}

// A record whose members are numbers, each as wide as it is; or words, when it is an array.
field_list numbers_of(const member_list &members) {
    field_list fields;
    for (const named_member &member : members) {
        const presentation shown = presentation_of(last_name(member.name));
        const bool is_word_array = member.size > sizeof(uint64_t) && shown.kind.empty();
        const size_t width = is_word_array ? sizeof(uint32_t) : member.size;
        const std::string_view kind = shown.kind.empty() ? "number" : shown.kind;
        const bool is_interface = member.name == "if_index";
        fields.push_back(
            {member.name, member.offset, width, member.size / width, is_interface ? "if_index" : kind, shown.texts});
    }
    return fields;
}

wire_record transceiver_record() {
    namespace page = sff8472::serial_id;
    field_list fields = fields_of(members_of(pm::fcot_info_members),
                                  {pm::fcot_fields, pm::fcot_fields_a, pm::fcot_fields_b}, otherwise::keeps_its_place);
    const auto add_text = [&fields](const char *name, const sff8472::field &at) {
        fields.push_back({name, offsetof(pm_fcot_info_t, serial_id) + at.offset, at.size, 1, "text"});
    };
    add_text("serial_id.vendor_name", page::vendor_name);
    add_text("serial_id.part_number", page::part_number);
    add_text("serial_id.revision", page::revision);
    add_text("serial_id.serial_number", page::serial_number);
    add_text("serial_id.date_code", page::date_code);
    return {"fcot_info", sizeof(pm_fcot_info_t), std::move(fields)};
}

wire_record stats_record() {
    constexpr std::array classes{"rx"sv,           "tx"sv,           "rx_unicast"sv,   "tx_unicast"sv,
                                 "rx_multicast"sv, "tx_multicast"sv, "rx_broadcast"sv, "tx_broadcast"sv};
    static_assert(classes.size() == PM_ETH_TRAFFIC_CLASSES);
    member_list members = members_of(pm::eth_stats_members);
    expand(members, "traffic", pm::eth_traffic_members, classes);
    return {"eth_stats", sizeof(pm_eth_stats_t),
            fields_of(members, {pm::eth_stats_fields}, otherwise::keeps_its_place)};
}

wire_record sfp_record() {
    constexpr std::array single{""sv};
    member_list members = members_of(pm::sfp_diag_info_members);
    for (const std::string_view quantity : {"temperature", "voltage", "bias", "tx_power", "rx_power"})
        expand(members, quantity, pm::sfp_quantity_members, single);
    return {"sfp_diag_info", sizeof(pm_sfp_diag_info_t), numbers_of(members)};
}

// Requests, which have no tables, and what answers begin with.
std::vector<wire_record> small_records() {
    return {
        {"answer", pm::answer_status_size, {{"status", 0, 4, 1, "number", "status"}}},
        {"record_count", pm::answer_header_size - pm::answer_status_size, {{"count", 0, 4}}},
        {"interface_index", sizeof(if_index_t), {{"if_index", 0, 4, 1, "if_index"}}},
        {"port_info_request",
         pm::port_info_request_header_size,
         {{"mode", 0, 1, 1, "number", "selection_mode"},
          {"selector1", 1, 4},
          {"selector2", 5, 4},
          {"option1", 9, 1},
          {"option2", 10, 1},
          {"range_count", 11, 4}}},
        {"listing_request", pm::listing_request_size, {{"type", 0, 1}}},
        {"startup_listing_request",
         pm::startup_listing_request_size,
         {{"type", 0, 1}, {"startup_block", pm::listing_request_size, PM_STARTUP_BLOCK_SIZE, 1, "text"}}},
        {"module_resources_request", pm::module_resources_header_size, {{"module", 0, 2}, {"range_count", 2, 2}}},
        {"eth_stats_request",
         pm::stats_request_size,
         {{"port", pm::stats_request_port, 2},
          {"if_index", pm::stats_request_if_index, 4, 1, "if_index"},
          {"request_word", pm::stats_request_word, 4, 1, "number", "stats_request_word"}}},
        {"channel_member_query", pm::channel_member_query_size, {{"channel", 0, 4, 1, "if_index"}}},
        {"set_request",
         pm::set_request_header_size,
         {{"first_text", 0, pm::first_text_size, 1, "text"},
          {"second_text", pm::first_text_size, pm::second_text_size, 1, "text"},
          {"range_count", pm::first_text_size + pm::second_text_size, 2}}},
        {"fcot_request",
         pm::fcot_request_header_size,
         {{"range_count", 0, 4}, {"flavour", 4, 4, 1, "number", "transceiver_flavour"}}},
        {"loopback_request", pm::loopback_request_header_size, {{"range_count", 0, 4}}},
        {"module_listing_request", pm::module_listing_request_size, {{"module", 0, 1}, {"type", 1, 1}}},
        {"sub_intf_answer",
         pm::sub_interface_answer_size,
         {{"reserved_0", 0, 4}, {"status", pm::sub_interface_answer_status, 4, 1, "number", "status"}}},
        {"sfp_element", pm::sfp_element_header_size, {{"type", 0, 2}, {"length", 2, 2}}},
    };
}

wire_record number_record(std::string_view name, size_t size, std::span<const pm::member_name> members) {
    return {name, size, numbers_of(members_of(members))};
}

}  // namespace

std::vector<wire_record> wire_records() {
    std::vector<wire_record> records = small_records();
    const auto dropped = otherwise::does_not_travel;
    records.push_back({"port_info", pm::base_record_size,
                       fields_of(members_of(pm::port_info_members), {pm::base_record_fields}, dropped)});
    records.push_back({"port_info_brief", pm::brief_record_size,
                       fields_of(members_of(pm::port_info_brief_members), {pm::brief_record_fields}, dropped)});
    records.push_back(transceiver_record());
    records.push_back(stats_record());
    records.push_back(sfp_record());
    records.push_back(number_record("if_index_range", pm::wire_range_size, pm::if_index_range_members));
    records.push_back(number_record("set_port_result", sizeof(pm_set_port_result_t), pm::set_port_result_members));
    records.push_back(number_record("module_resource", sizeof(pm_module_resource_t), pm::module_resource_members));
    records.push_back(number_record("sub_intf_entry", pm::sub_interface_entry_size, pm::sub_intf_entry_members));
    records.push_back(
        number_record("config_sub_intf_req", pm::sub_interface_request_header_size, pm::config_sub_intf_req_members));
    return records;
}

}  // namespace dissector
