// SPDX-License-Identifier: Apache-2.0
#include "chassis/publication.h"

namespace virtual_switch {

platform_dev::chassis publication_of(const chassis_model &model) {
    platform_dev::chassis chassis;
    chassis.chassis_type = model.chassis_type;
    chassis.slot_count = model.slot_count;
    for (const auto &[slot, card] : model.line_cards) chassis.modules.push_back({slot, card.card_type});
    for (const auto &[channel, members] : model.members) chassis.port_channels.push_back({channel, members});
    for (const auto &[if_index, at] : model.ports) {
        if (at.kind == port_kind::sub_interface) continue;
        chassis.index_map.push_back({if_index, at.place.node, at.place.slot, at.place.port_base});
    }
    return chassis;
}

}  // namespace virtual_switch
