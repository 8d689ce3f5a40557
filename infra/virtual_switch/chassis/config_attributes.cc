// SPDX-License-Identifier: Apache-2.0
#include "chassis/config_attributes.h"

namespace virtual_switch {

const config_attribute *find_attribute(uint8_t number) {
    const auto *const found = std::find_if(config_attributes.begin(), config_attributes.end(),
                                           [number](const auto &attribute) { return attribute.number == number; });
    return found == config_attributes.end() ? nullptr : found;
}

bool has_attribute(port_kind kind, const config_attribute &attribute) {
    return attribute.kinds.contains(kind) && has_member(kind, *attribute.setting);
}

void configure(port &to, const config_attribute &attribute, const setting_value &value) {
    store_setting(*attribute.setting, value, to.configured);
    attribute.release(to.configured);
}

}  // namespace virtual_switch
