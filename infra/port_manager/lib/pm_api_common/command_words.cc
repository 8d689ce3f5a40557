// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/command_words.h"

#include "pm_api_common/value_text.h"

namespace {

using pm::text_of;
using pm::value_text;

constexpr value_text<uint32_t> speeds[] = {
    {0, "auto"},    {1, "auto max 2000"}, {2, "auto max 4000"}, {10, "10"},     {100, "100"},     {110, "auto 10 100"},
    {1000, "1000"}, {2000, "2000"},       {4000, "4000"},       {8000, "8000"}, {10000, "10000"},
};
constexpr value_text<uint8_t> duplex_modes[] = {{1, "half"}, {2, "full"}};
constexpr value_text<uint8_t> rate_modes[] = {{1, "dedicated"}};
constexpr value_text<uint8_t> trunk_modes[] = {{2, "on"}, {3, "auto"}};

}  // namespace

const char *pm_cli_dump_port_speed(uint32_t speed) { return text_of(speeds, speed, "auto"); }

const char *pm_cli_dump_port_duplex_mode(uint8_t mode) { return text_of(duplex_modes, mode, "auto"); }

const char *pm_cli_dump_port_rate_mode(uint8_t mode) { return text_of(rate_modes, mode, "shared"); }

const char *pm_cli_dump_trunk_mode(uint8_t mode) { return text_of(trunk_modes, mode, "off"); }
