// SPDX-License-Identifier: Apache-2.0
#include "chassis/chassis_builder.h"

#include <algorithm>
#include <array>

#include "chassis/module_kind.h"
#include "chassis/port_settings.h"
#include "platform_dev/if_index_dev.h"
#include "protocol/ethernet_stats_layout.h"

namespace virtual_switch {
namespace {

constexpr size_t longest_name = 64;
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
        add_port(from, if_index, kind.ports, {line_card_node(slot), slot, port});
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
        add_port(from, if_index, port_kind::fcip, {line_card_node(slot), slot, port_base});
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
    const port *const found = model_.find(main);
    if (found == nullptr) from.fail("name", why_missing(main));
    if (!switched_ethernet.contains(found->kind)) {
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
        const port *const at = model_.find(if_index);
        if (at == nullptr) from.fail("name", why_missing(if_index));
        if (!keeping_counters.contains(at->kind)) {
            from.fail("name", quoted_name(if_index) + " is of kind '" + std::string(traits_of(at->kind).name) +
                                  "', which keeps no counters");
        }
        apply_counters(from, model_.counting[if_index]);
    }
}

void chassis_builder::add_port(const section &from, if_index_t if_index, port_kind kind, port_place place) {
    port added{kind, place, default_port_info(kind, if_index)};
    from.apply_settings(added);
    if (!model_.ports.try_emplace(if_index, added).second) from.fail("name", quoted_name(if_index) + " exists already");
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
    settle(model_);
    return std::move(model_);
}

}  // namespace virtual_switch
