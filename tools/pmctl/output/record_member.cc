// SPDX-License-Identifier: Apache-2.0
#include "output/record_member.h"

#include <arpa/inet.h>

#include <cstring>

#include <fmt/format.h>

#include "output/printable_text.h"
#include "port_mgr/port_strings.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

template <typename Number>
uint64_t load(std::span<const std::byte> bytes) {
    Number number;
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

uint64_t load_number(std::span<const std::byte> bytes) {
    switch (bytes.size()) {
        case sizeof(uint8_t):
            return load<uint8_t>(bytes);
        case sizeof(uint16_t):
            return load<uint16_t>(bytes);
        case sizeof(uint32_t):
            return load<uint32_t>(bytes);
        default:
            return load<uint64_t>(bytes);
    }
}

bool is_network_order(member_format format) {
    return format == member_format::network_number || format == member_format::ipv4 ||
           format == member_format::fc_address;
}

std::string ipv4_text(uint32_t address) {
    return fmt::format("{}.{}.{}.{}", address >> 24, address >> 16 & 0xff, address >> 8 & 0xff, address & 0xff);
}

std::string or_absent(std::string text) { return text.empty() ? std::string(absent_text) : text; }

words_function shown_words(const record_member &member) {
    return member.in_column != nullptr ? member.in_column : member.words;
}

std::string words_text(const record_member &member, std::span<const std::byte> record) {
    const words_function words = shown_words(member);
    std::string text = or_absent(words(code_of(member, record)));
    for (size_t element = 1; element < member.place.count; ++element)
        text += ", " + or_absent(words(code_of(member, record, element)));
    return text;
}

std::string numbers_text(const record_member &member, std::span<const std::byte> record) {
    std::string text = fmt::to_string(number_of(member, record));
    for (size_t element = 1; element < member.place.count; ++element)
        text += fmt::format(" {}", number_of(member, record, element));
    return text;
}

}  // namespace

uint64_t number_of(const record_member &member, std::span<const std::byte> record, size_t element) {
    const member_place &place = member.place;
    const uint64_t number = load_number(record.subspan(place.offset + element * place.size, place.size));
    return is_network_order(member.format) ? ntohl(static_cast<uint32_t>(number)) : number;
}

uint32_t code_of(const record_member &member, std::span<const std::byte> record, size_t element) {
    return static_cast<uint32_t>(number_of(member, record, element));
}

bool is_absent(const record_member &member, std::span<const std::byte> record) {
    return member.absent && number_of(member, record) == *member.absent;
}

std::string_view characters_of(const record_member &member, std::span<const std::byte> record) {
    const auto *text = reinterpret_cast<const char *>(record.data()) + member.place.offset;
    return {text, strnlen(text, member.place.count)};
}

std::string address_text(const record_member &member, std::span<const std::byte> record) {
    const uint32_t number = code_of(member, record);
    switch (member.format) {
        case member_format::ipv4:
            return ipv4_text(number);
        case member_format::fc_address:
            return fmt::format("0x{:06X}", number);
        default:
            return interface_name(number);
    }
}

std::string display_text(const record_member &member, std::span<const std::byte> record) {
    if (shown_words(member) != nullptr) return words_text(member, record);
    if (is_absent(member, record)) return std::string(absent_text);
    switch (member.format) {
        case member_format::number:
        case member_format::network_number:
            return numbers_text(member, record);
        case member_format::text:
            return or_absent(printable_text(characters_of(member, record)));
        case member_format::owner:
            return or_absent(printable_text(port_owner_string(std::string(characters_of(member, record)).c_str())));
        default:
            return address_text(member, record);
    }
}

cell display_cell(const record_member &member, std::span<const std::byte> record) {
    const bool has_tone = member.tone_of != nullptr && !is_absent(member, record);
    return {display_text(member, record), has_tone ? member.tone_of(code_of(member, record)) : tone::plain};
}

}  // namespace pmctl
