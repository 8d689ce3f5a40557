// SPDX-License-Identifier: Apache-2.0
// fake_interface_numbers.h: the numbers in interface indexes, and the indexes that are built from numbers. Below the
// type, an index is a slot, a port and a sub-interface of one byte each; the number of a channel or a tunnel takes the
// two lowest bytes, the subtype of a channel the one above them. Where sub-interfaces of every type are told, they take
// the 12 lowest bits.
#ifndef SUPPORT_FAKE_INTERFACE_NUMBERS_H
#define SUPPORT_FAKE_INTERFACE_NUMBERS_H

#include <map>
#include <set>

#include "platform/types.h"

namespace support {

class fake_interface_numbers {
  public:
    fake_interface_numbers();
    ~fake_interface_numbers();
    fake_interface_numbers(const fake_interface_numbers &) = delete;
    fake_interface_numbers &operator=(const fake_interface_numbers &) = delete;

    // Indexes of another sub-interface, channel or tunnel than their lowest bytes.
    std::map<if_index_t, uint16_t> special_sub_interfaces;
    std::map<if_index_t, uint16_t> special_channels;
    std::map<if_index_t, uint16_t> special_tunnels;

    // Indexes whose number cannot be told.
    std::set<if_index_t> without_slot;
    std::set<if_index_t> without_port;
    std::set<if_index_t> without_sub_interface;
    std::set<if_index_t> without_channel;
    std::set<if_index_t> without_subtype;
    std::set<if_index_t> without_tunnel;

    // Indexes of another main interface than the one with sub-interface 0.
    std::map<if_index_t, if_index_t> special_mains;

    // Indexes that cannot be built.
    std::set<if_index_t> unbuildable;

    // What a call that fails returns, and whether a getter stores its number all the same, so that nothing but its
    // result tells.
    int32_t failure = -1;
    bool stores_on_failure = false;
};

}  // namespace support

#endif
