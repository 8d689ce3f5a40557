// SPDX-License-Identifier: Apache-2.0
// model.h: the chassis as the services see it: its ports in order of interface indexes, modules and port channels.
#ifndef VIRTUAL_SWITCH_CHASSIS_MODEL_H
#define VIRTUAL_SWITCH_CHASSIS_MODEL_H

#include <map>
#include <string>
#include <vector>

#include "chassis/counter_table.h"
#include "chassis/port_kind.h"
#include "chassis/transceiver.h"
#include "platform_dev/mts_dev.h"

namespace virtual_switch {

// Where an interface lives: the node that answers for it, its slot, counted from 0, and its port base there.
struct port_place {
    uint32_t node;
    uint8_t slot;
    uint8_t port_base;

    // In the module of this slot.
    [[nodiscard]] bool is_in(uint8_t module_slot) const { return node != MTS_NODE_SUPERVISOR && slot == module_slot; }
};

// Interfaces of the supervisor's own, and the channels, live in no slot.
inline constexpr port_place on_supervisor{MTS_NODE_SUPERVISOR, 0, 0};

struct port {
    port_kind kind;
    port_place place;
    pm_port_info_t configured;  // as settings made it; 0 where a value follows from others
    pm_port_info_t info{};      // as it reports itself, made by settle

    // In operation, trunking or not.
    [[nodiscard]] bool is_up() const;

    // What reaches the transceiver and what it may send. Nothing is received from a peer that is not connected, and
    // shutting the port down turns the laser off.
    [[nodiscard]] optical_link link() const;
};

struct line_card {
    uint8_t slot;  // counted from 0
    port_kind kind;
    uint16_t card_type;
    uint8_t port_count;

    [[nodiscard]] uint32_t node() const;
    bool operator==(const line_card &) const = default;
};

// The members of a port channel, at most as many as the chassis database publishes.
using channel_members = std::vector<if_index_t>;
inline constexpr size_t max_channel_members = 16;

struct chassis_model {
    std::string name;
    uint32_t chassis_type = 0;
    uint8_t slot_count = 0;
    std::map<uint8_t, line_card> line_cards;          // by slot
    std::map<if_index_t, port> ports;                 // all kinds
    std::map<if_index_t, channel_members> members;    // of every channel, also of empty ones
    std::map<if_index_t, counter_settings> counting;  // of interfaces that the file makes count
    std::map<if_index_t, transceiver> transceivers;   // of every port that takes one, plugged in or not

    [[nodiscard]] const port *find(if_index_t if_index) const;

    // The transceiver that is plugged into a port; null when there is none.
    [[nodiscard]] const transceiver *plugged_into(if_index_t if_index) const;

    // The port that follows in order of indexes, whether or not `if_index` exists; null after the last.
    [[nodiscard]] const port *next(if_index_t if_index) const;

    // The first member of the channel; 0 when there is no such channel, or it is empty.
    [[nodiscard]] if_index_t first_member(if_index_t channel) const;

    // The SAP of the service that owns an interface, which need not exist.
    [[nodiscard]] uint32_t owner_sap(if_index_t if_index) const;
};

// The interface type; IF_TYPE_NONE for an index without one.
uint8_t type_of(if_index_t if_index);

bool is_port_channel(if_index_t if_index);

bool is_sub_interface(if_index_t if_index);

// Whether the number of a sub-interface is one that no sub-interface may have.
bool has_reserved_number(if_index_t if_index);

// Makes what every port reports from what is configured and from the members of channels. To be called after every
// change of either.
void settle(chassis_model &model);

// The display name of an interface.
std::string name_of(if_index_t if_index);

// The same in quotes, for messages.
std::string quoted_name(if_index_t if_index);

}  // namespace virtual_switch

#endif
