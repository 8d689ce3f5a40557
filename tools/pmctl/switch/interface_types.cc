// SPDX-License-Identifier: Apache-2.0
#include "switch/interface_types.h"

#include <strings.h>

#include <fmt/format.h>

#include "platform/if_index.h"

namespace pmctl {
namespace {

struct named_type {
    uint8_t type;
    const char *word;
    bool is_listed = true;
};

constexpr named_type named_types[] = {
    {IF_TYPE_FC, "fc"},
    {IF_TYPE_ETHERNET, "ethernet"},
    {IF_TYPE_PORT_CHANNEL, "port-channel", false},
    {IF_TYPE_MGMT, "mgmt"},
    {IF_TYPE_FCIP, "fcip", false},
    {IF_TYPE_SLOT_PORT, "slot-port"},
    {IF_TYPE_ETHERNET_KIND, "ips"},
    {IF_TYPE_LOOPBACK, "loopback"},
    {IF_TYPE_BUNDLE, "bundle", false},
    {IF_TYPE_ETHERNET_SFP, "ethernet-sfp"},
    {IF_TYPE_OTHER, "other"},
};

}  // namespace

std::string type_word(uint32_t type) {
    for (const named_type &known : named_types)
        if (known.type == type) return known.word;
    return fmt::to_string(type);
}

std::vector<std::string> type_words() {
    std::vector<std::string> words;
    for (const named_type &known : named_types) words.emplace_back(known.word);
    return words;
}

std::vector<uint8_t> listed_types() {
    std::vector<uint8_t> types;
    for (const named_type &known : named_types)
        if (known.is_listed) types.push_back(known.type);
    return types;
}

std::optional<uint8_t> type_of_word(const std::string &word) {
    for (const named_type &known : named_types)
        if (strcasecmp(known.word, word.c_str()) == 0) return known.type;
    return std::nullopt;
}

}  // namespace pmctl
