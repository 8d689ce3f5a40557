// SPDX-License-Identifier: Apache-2.0
// fake_interfaces.h: interface indexes, the chassis and the port-channel map. An index has its type in its top byte.
#ifndef SUPPORT_FAKE_INTERFACES_H
#define SUPPORT_FAKE_INTERFACES_H

#include <deque>
#include <map>
#include <optional>
#include <set>

#include "platform/types.h"

namespace support {

// What one look-up returns, and stores when there is something to store.
template <typename Value>
struct scripted_look {
    int32_t result = 0;
    std::optional<Value> value;
};

class fake_interfaces {
  public:
    fake_interfaces();
    ~fake_interfaces();
    fake_interfaces(const fake_interfaces &) = delete;
    fake_interfaces &operator=(const fake_interfaces &) = delete;

    // Indexes of another type than their top byte.
    std::map<if_index_t, uint8_t> special_types;

    // Indexes whose type cannot be told, and what if_index_get_type returns for them.
    std::set<if_index_t> without_type;
    int32_t without_type_result = -1;

    // Whether the look-up that fails stores a type all the same, so that nothing but its result tells.
    bool stores_untold_types = false;

    // Look-ups of types that come before all this, in order, whatever their index.
    std::deque<scripted_look<uint8_t>> type_looks;

    // Sub-interfaces of port channels.
    std::set<if_index_t> channel_sub_interfaces;

    // Laid over every index on its way to and from the wire, to tell the platform's conversion from a plain swap.
    uint32_t wire_mask = 0;

    // Display names get this many characters, if it is not 0.
    size_t name_size = 0;

    // What pdb_get_chassis_type returns, and stores when there is something to store.
    int32_t chassis_result = 0;
    std::optional<uint32_t> chassis_type = 1;

    // Look-ups of the chassis type that come before that, in order.
    std::deque<scripted_look<uint32_t>> chassis_looks;

    // What pcmap_get_port_channel returns, and the record's number of members and first member.
    int32_t map_result = 0;
    uint32_t map_count = 0;
    if_index_t map_member = 0;
};

}  // namespace support

#endif
