// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/transceiver_kind.h"

#include <cstring>

#include "pm_api_common/interface_type.h"

namespace {

constexpr pm::type_set with_transceiver{IF_TYPE_FC, IF_TYPE_ETHERNET, IF_TYPE_ETHERNET_SFP};

constexpr int8_t first_dwdm_channel = 9;
constexpr int8_t last_dwdm_channel = 40;

enum fcot_type : uint8_t { other_type = 1, listed_type = 12, dwdm_type = 20 };
constexpr uint8_t listed_kind = 2;

constexpr char listed_part_numbers[][sizeof pm_x2_ident_t::part_number + 1] = {
    "52-8817-03", "52-8829-03", "52-8834-03", "52-8846-03", "52-8851-03", "52-8863-03",
};

bool is_listed(const pm_x2_ident_t &ident) {
    for (const auto &part_number : listed_part_numbers) {
        if (std::memcmp(ident.part_number, part_number, sizeof ident.part_number) == 0) return true;
    }
    return false;
}

}  // namespace

int32_t pm_is_transceiver_supported(if_index_t if_index) { return with_transceiver.contains(pm::type_of(if_index)); }

int32_t pm_is_x2_dwdm(const pm_x2_ident_t *ident) {
    if (ident->dwdm_exclusion != 0) return 0;
    return ident->dwdm_channel >= first_dwdm_channel && ident->dwdm_channel <= last_dwdm_channel;
}

uint8_t pm_get_x2_fcot_type(const pm_x2_ident_t *ident) {
    if (pm_is_x2_dwdm(ident)) return dwdm_type;
    return is_listed(*ident) || ident->kind == listed_kind ? listed_type : other_type;
}
