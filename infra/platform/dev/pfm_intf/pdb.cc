// SPDX-License-Identifier: Apache-2.0
#include "platform/pdb.h"

#include <cstring>

#include "chassis_db/chassis_reader.h"

namespace {

constexpr size_t slot_offset = 0;
constexpr size_t card_type_offset = 2;
constexpr size_t slot_count_offset = 2;

}  // namespace

int32_t pdb_get_chassis_type(uint32_t *type) {
    const auto chassis = platform_dev::find_chassis();
    if (!chassis) return -1;
    *type = chassis->chassis_type;
    return 0;
}

int32_t pdb_get_mod_info(uint8_t slot, pdb_mod_info_t *info, uint32_t) {
    const auto module = platform_dev::find_module(slot);
    if (!module) return -1;
    *info = {};
    info->byte[slot_offset] = module->slot;
    memcpy(&info->byte[card_type_offset], &module->card_type, sizeof module->card_type);
    return 0;
}

int32_t get_platform_info(platform_info_t *info) {
    const auto chassis = platform_dev::find_chassis();
    if (!chassis) return -1;
    *info = {};
    info->byte[slot_count_offset] = chassis->slot_count;
    return 0;
}
