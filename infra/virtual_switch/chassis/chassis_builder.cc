// SPDX-License-Identifier: Apache-2.0
#include "chassis/chassis_builder.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>

#include "chassis/default_transceiver.h"
#include "chassis/module_kind.h"
#include "chassis/page_dump.h"
#include "chassis/port_settings.h"
#include "chassis/transceiver_keys.h"
#include "platform_dev/if_index_dev.h"
#include "protocol/ethernet_stats_layout.h"
#include "protocol/line_card_node.h"

namespace virtual_switch {
namespace {

constexpr size_t longest_name = 64;
constexpr size_t longest_path = 4096;
constexpr uint32_t most_slots = 32;
constexpr number_range chassis_types{1, 0xffff};

struct supervisor_kind {
    uint8_t type;
    port_kind kind;
};
constexpr std::array supervisor_kinds{
    supervisor_kind{IF_TYPE_MGMT, port_kind::mgmt},
    supervisor_kind{IF_TYPE_LOOPBACK, port_kind::loopback},
    supervisor_kind{IF_TYPE_OTHER, port_kind::other},
};

// FCIP tunnels may join Fibre Channel ports in one channel.
port_kind channel_kind_for(port_kind member) {
    return member == port_kind::ethernet ? port_kind::ethernet_channel : port_kind::fc_channel;
}

bool may_be_member(const port &candidate) {
    return candidate.kind == port_kind::fc || candidate.kind == port_kind::fcip ||
           candidate.kind == port_kind::ethernet;
}

void apply_counters(const section &from, counter_settings &to) {
    for (size_t i = 0; i < counter_table.size(); ++i) {
        to.rates[i] = from.number_or(counter_table[i].key, any_32, to.rates[i]);
    }
    if (from.has(unreachable_key)) to.unreachable = from.word(unreachable_key, yes_no_words) != 0;
}

// Whatever a section does not say is as in the usual transceiver of the kind.
transceiver described_transceiver(const section &from, port_kind kind) {
    transceiver_plan plan = default_transceiver(kind);
    apply_page_keys(from, plan);
    apply_quantity_keys(from, plan);
    return build(plan);
}

}  // namespace

void chassis_builder::set_chassis(const document_value &value) {
    const section from("chassis", value, {"name", "type", "slots"});
    model_.name = from.text("name", longest_name);
    model_.chassis_type = from.number("type", chassis_types);
    model_.slot_count = static_cast<uint8_t>(from.number("slots", {1, most_slots}));
}

void chassis_builder::add_module(const document_value &value) {
    const section from("module", value, {"slot", "kind", "ports", "card_type"}, port_setting_keys());
    const auto slot = static_cast<uint8_t>(from.number("slot", {1, model_.slot_count}) - 1);
    const module_kind &kind = module_kinds.at(from.word("kind", module_kind_words));
    const auto ports = static_cast<uint8_t>(from.number("ports", {1, kind.most_ports}));
    const auto card_type = static_cast<uint16_t>(from.number_or("card_type", {1, 0xffff}, kind.card_type));
    if (!model_.line_cards.try_emplace(slot, line_card{slot, kind.ports, card_type, ports}).second) {
        from.fail("slot", "slot " + std::to_string(slot + 1) + " has a module already");
    }
    for (uint8_t port = 0; port < ports; ++port) {
        if_index_t if_index = 0;
        if_index_slot_port_init(&if_index, kind.type, slot, port);
        add_port(from, if_index, kind.ports, {pm::line_card_node(slot), slot, port});
    }
}

void chassis_builder::add_interfaces(const document_value &value) {
    const section from("interface", value, {"name"}, port_setting_keys());
    for (const if_index_t if_index : from.interfaces("name")) {
        const auto *const found = std::find_if(supervisor_kinds.begin(), supervisor_kinds.end(),
                                               [&](const auto &kind) { return kind.type == type_of(if_index); });
        if (found == supervisor_kinds.end()) {
            from.fail("name", quoted_name(if_index) + " is of a kind that has a section of its own or a module");
        }
        add_port(from, if_index, found->kind, on_supervisor);
    }
}

void chassis_builder::add_fcip(const document_value &value) {
    const section from("fcip", value, {"name", "slot", "port"}, port_setting_keys());
    const auto slot = static_cast<uint8_t>(from.number("slot", {1, model_.slot_count}) - 1);
    const auto module = model_.line_cards.find(slot);
    if (module == model_.line_cards.end() || module->second.kind != port_kind::ips) {
        from.fail("slot", "slot " + std::to_string(slot + 1) + " has no module of kind 'ips'");
    }
    const auto port = static_cast<uint8_t>(from.number("port", {1, module->second.port_count}) - 1);
    const uint8_t port_base = pm::tunnel_base(module->second.card_type, port);
    for (const if_index_t if_index : from.interfaces("name")) {
        if (type_of(if_index) != IF_TYPE_FCIP) from.fail("name", quoted_name(if_index) + " is no FCIP interface");
        add_port(from, if_index, port_kind::fcip, {pm::line_card_node(slot), slot, port_base});
    }
}

void chassis_builder::add_port_channel(const document_value &value) {
    const section from("port_channel", value, {"name", "members"}, port_setting_keys());
    const std::vector<if_index_t> channels = from.interfaces("name");
    const if_index_t channel = channels.front();
    if (channels.size() != 1 || !is_port_channel(channel) || is_sub_interface(channel)) {
        from.fail("name", "must be one port channel");
    }
    const std::vector<if_index_t> members = from.has("members") ? from.interfaces("members") : channel_members{};
    if (members.size() > max_channel_members) {
        from.fail("members", "has more than " + std::to_string(max_channel_members) + " members");
    }
    const port *const first = members.empty() ? nullptr : model_.find(members.front());
    add_port(from, channel, first == nullptr ? port_kind::fc_channel : channel_kind_for(first->kind), on_supervisor);
    model_.members[channel];
    for (const if_index_t member : members) add_member(from, channel, member);
}

void chassis_builder::add_member(const section &from, if_index_t channel, if_index_t member) {
    const port *const joining = model_.find(member);
    if (joining == nullptr) from.fail("members", why_missing(member));
    if (!may_be_member(*joining) || channel_kind_for(joining->kind) != model_.find(channel)->kind) {
        from.fail("members", quoted_name(member) + " is of the wrong kind for the channel: '" +
                                 std::string(traits_of(joining->kind).name) + "'");
    }
    for (const auto &[other, members] : model_.members) {
        if (std::find(members.begin(), members.end(), member) == members.end()) continue;
        from.fail("members", quoted_name(member) + " is a member of " + quoted_name(other) + " already");
    }
    model_.members[channel].push_back(member);
}

void chassis_builder::add_sub_interfaces(const document_value &value) {
    const section from("sub_interface", value, {"name"}, port_setting_keys());
    for (const if_index_t if_index : from.interfaces("name")) {
        check_sub_interface(from, if_index);
        const port_place place = model_.find(if_index_get_mainintf_from_subintf(if_index))->place;
        add_port(from, if_index, port_kind::sub_interface, place);
    }
}

void chassis_builder::check_sub_interface(const section &from, if_index_t if_index) const {
    if (!is_sub_interface(if_index)) from.fail("name", quoted_name(if_index) + " is no sub-interface");
    if (has_reserved_number(if_index)) from.fail("name", quoted_name(if_index) + " has a reserved number");
    const if_index_t main = if_index_get_mainintf_from_subintf(if_index);
    if (!switched_ethernet.contains(named_port(from, main).kind)) {
        from.fail("name", quoted_name(main) + " is no Ethernet channel and has no sub-interfaces");
    }
}

void chassis_builder::override_ports(const document_value &value) {
    const section from("ports", value, {"name"}, port_setting_keys());
    for (const if_index_t if_index : from.interfaces("name")) {
        const auto found = model_.ports.find(if_index);
        if (found == model_.ports.end()) from.fail("name", why_missing(if_index));
        from.apply_settings(found->second);
    }
}

void chassis_builder::set_counters(const document_value &value) {
    const section from("counters", value, {"name"}, counter_keys);
    for (const if_index_t if_index : from.interfaces("name")) {
        const port_kind kind = named_port(from, if_index).kind;
        if (!keeping_counters.contains(kind)) {
            from.fail("name", quoted_name(if_index) + " is of kind '" + std::string(traits_of(kind).name) +
                                  "', which keeps no counters");
        }
        apply_counters(from, model_.counting[if_index]);
    }
}

transceiver chassis_builder::dumped_transceiver(const section &from) const {
    for (const std::string_view key : page_keys()) {
        if (from.has(key)) from.fail(key, "stands in the pages");
    }
    const std::filesystem::path file = std::filesystem::path(folder_) / from.text("pages", longest_path);
    transceiver made = transceiver_of(load_page_dump(file));
    apply_drift_keys(from, made);
    return made;
}

// Of several ports that one section names, each has another serial number, and so have those that no section gives one.
void chassis_builder::add_transceivers(const document_value &value) {
    const section from("transceiver", value, {"name", "pages"}, transceiver_keys());
    const auto dumped = from.has("pages") ? std::optional(dumped_transceiver(from)) : std::nullopt;
    const bool has_number = dumped || from.has("serial_number");
    uint32_t earlier = 0;
    for (const if_index_t if_index : from.interfaces("name")) {
        const port_kind kind = named_port(from, if_index).kind;
        if (!takes_transceiver.contains(kind)) from.fail("name", quoted_name(if_index) + " takes no transceiver");
        transceiver made = dumped ? *dumped : described_transceiver(from, kind);
        if (!advance_serial_number(made, has_number ? earlier++ : serial_number_of_place(if_index))) {
            from.fail("serial_number", "has no room for a running number");
        }
        if (model_.transceivers.try_emplace(if_index, made).second) continue;
        from.fail("name", quoted_name(if_index) + " has a transceiver already");
    }
}

void chassis_builder::add_default_transceivers() {
    for (const auto &[if_index, at] : model_.ports) {
        if (!takes_transceiver.contains(at.kind) || model_.transceivers.contains(if_index)) continue;
        transceiver made = build(default_transceiver(at.kind));
        advance_serial_number(made, serial_number_of_place(if_index));
        model_.transceivers.emplace(if_index, made);
    }
}

void chassis_builder::add_port(const section &from, if_index_t if_index, port_kind kind, port_place place) {
    port added{kind, place, default_port_info(kind, if_index)};
    from.apply_settings(added);
    if (!model_.ports.try_emplace(if_index, added).second) from.fail("name", quoted_name(if_index) + " exists already");
}

const port &chassis_builder::named_port(const section &from, if_index_t if_index) const {
    const port *const found = model_.find(if_index);
    if (found == nullptr) from.fail("name", why_missing(if_index));
    return *found;
}

std::string chassis_builder::why_missing(if_index_t if_index) const {
    uint8_t slot = 0;
    if (if_index_get_slot(if_index, &slot) != 0 || is_sub_interface(if_index)) {
        return quoted_name(if_index) + " does not exist";
    }
    const std::string prefix = quoted_name(if_index) + " does not exist: slot " + std::to_string(slot + 1);
    const auto module = model_.line_cards.find(slot);
    if (module == model_.line_cards.end()) return prefix + " has no module";
    return prefix + " has a module of kind '" + std::string(traits_of(module->second.kind).name) + "' with " +
           std::to_string(module->second.port_count) + " ports";
}

chassis_model chassis_builder::finish() {
    add_default_transceivers();
    settle(model_);
    return std::move(model_);
}

}  // namespace virtual_switch
