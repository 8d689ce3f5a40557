// SPDX-License-Identifier: Apache-2.0
#include "chassis/configuration.h"

#include "chassis/config_attributes.h"
#include "platform/if_index.h"

namespace virtual_switch {
namespace {

void add_interface(chassis_model &model, if_index_t if_index, port_kind kind, port_place place) {
    model.ports.try_emplace(if_index, port{kind, place, default_port_info(kind, if_index)});
}

// A sub-interface whose interface is not there, or cannot have any, waits.
void add_created(chassis_model &model, if_index_t if_index) {
    if (!is_sub_interface(if_index)) return add_interface(model, if_index, port_kind::loopback, on_supervisor);
    const port *const main = model.find(if_index_get_mainintf_from_subintf(if_index));
    if (main == nullptr || !switched_ethernet.contains(main->kind)) return;
    add_interface(model, if_index, port_kind::sub_interface, main->place);
}

void configure_all(port &to, const attribute_values &values) {
    for (const config_attribute &attribute : config_attributes) {
        const auto value = values.find(attribute.number);
        if (value != values.end() && has_attribute(to.kind, attribute)) configure(to, attribute, value->second);
    }
}

}  // namespace

void configuration::remove(if_index_t if_index, const chassis_model &chassis) {
    created.erase(if_index);
    settings.erase(if_index);
    if (chassis.find(if_index) != nullptr) deleted.insert(if_index);
}

chassis_model configured(chassis_model chassis, const configuration &changes) {
    for (const if_index_t if_index : changes.deleted) chassis.ports.erase(if_index);
    for (const if_index_t if_index : changes.created) add_created(chassis, if_index);
    for (const auto &[if_index, values] : changes.settings) {
        const auto found = chassis.ports.find(if_index);
        if (found != chassis.ports.end()) configure_all(found->second, values);
    }
    settle(chassis);
    return chassis;
}

}  // namespace virtual_switch
