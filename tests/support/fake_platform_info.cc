// SPDX-License-Identifier: Apache-2.0
#include "fake_platform_info.h"

#include <fmt/format.h>

#include <cstring>

#include "call_log.h"
#include "platform/pdb.h"

namespace support {
namespace {

fake_platform_info *active = nullptr;
constexpr int rubbish = 7;

}  // namespace

fake_platform_info::fake_platform_info() { active = this; }

fake_platform_info::~fake_platform_info() { active = nullptr; }

}  // namespace support

int32_t get_platform_info(platform_info_t *info) {
    support::call_log::add("get_platform_info()");
    std::memset(info, support::rubbish, sizeof *info);
    info->byte[2] = support::active->slots;
    return support::active->result;
}

int32_t pdb_get_mod_info(uint8_t slot, pdb_mod_info_t *info, uint32_t last) {
    support::call_log::add(fmt::format("pdb_get_mod_info({}, {})", slot, last));
    std::memset(info, support::rubbish, sizeof *info);
    std::memcpy(info->byte + 2, &support::active->card_type, sizeof support::active->card_type);
    return support::active->module_result;
}
