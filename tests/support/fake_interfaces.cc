// SPDX-License-Identifier: Apache-2.0
#include "fake_interfaces.h"

#include <fmt/format.h>

#include <bit>
#include <cstring>
#include <string>

#include "call_log.h"
#include "platform/if_index.h"
#include "platform/pdb.h"
#include "platform/port_channel.h"

namespace support {
namespace {

fake_interfaces *active = nullptr;
static_assert(std::endian::native == std::endian::little);

template <typename Value>
int32_t next_look(std::deque<scripted_look<Value>> &looks, Value *out) {
    const scripted_look<Value> look = looks.front();
    looks.pop_front();
    if (look.value) *out = *look.value;
    return look.result;
}

}  // namespace

fake_interfaces::fake_interfaces() { active = this; }

fake_interfaces::~fake_interfaces() { active = nullptr; }

}  // namespace support

using support::active;
using support::call_log::add;

int32_t if_index_get_type(if_index_t if_index, uint8_t *type) {
    add(fmt::format("if_index_get_type({:#010x})", if_index));
    if (!active->type_looks.empty()) return support::next_look(active->type_looks, type);
    const bool fails = active->without_type.contains(if_index);
    if (fails && !active->stores_untold_types) return active->without_type_result;
    const auto special = active->special_types.find(if_index);
    *type = special != active->special_types.end() ? special->second : static_cast<uint8_t>(if_index >> 24);
    return fails ? active->without_type_result : 0;
}

int32_t if_index_is_port_channel_sub_interface(if_index_t if_index) {
    add(fmt::format("if_index_is_port_channel_sub_interface({:#010x})", if_index));
    return active->channel_sub_interfaces.contains(if_index) ? 2 : 0;
}

uint32_t hton_if_index(if_index_t if_index) {
    add(fmt::format("hton_if_index({:#010x})", if_index));
    return __builtin_bswap32(if_index) ^ active->wire_mask;
}

if_index_t ntoh_if_index(uint32_t wire) {
    const if_index_t if_index = __builtin_bswap32(wire ^ active->wire_mask);
    add(fmt::format("ntoh_if_index() = {:#010x}", if_index));
    return if_index;
}

int32_t sprintf_if_index(char *text, if_index_t if_index) {
    add(fmt::format("sprintf_if_index({:#010x})", if_index));
    std::string name = fmt::format("port {:x}", if_index);
    if (active->name_size != 0) name.resize(active->name_size, '+');
    std::memcpy(text, name.c_str(), name.size() + 1);
    return static_cast<int32_t>(name.size());
}

int32_t pdb_get_chassis_type(uint32_t *type) {
    add(fmt::format("pdb_get_chassis_type({})", *type));
    if (!active->chassis_looks.empty()) return support::next_look(active->chassis_looks, type);
    if (active->chassis_type) *type = *active->chassis_type;
    return active->chassis_result;
}

int32_t pcmap_get_port_channel(void *record) {
    auto *const bytes = static_cast<uint8_t *>(record);
    if_index_t channel;
    std::memcpy(&channel, bytes, sizeof channel);
    add(fmt::format("pcmap_get_port_channel({:#010x})", channel));
    // Rubbish around the two members, so that a look at another place is seen.
    std::memset(bytes + sizeof channel, 0xee, 172 - sizeof channel);
    std::memcpy(bytes + 8, &active->map_count, sizeof active->map_count);
    std::memcpy(bytes + 32, &active->map_member, sizeof active->map_member);
    return active->map_result;
}
