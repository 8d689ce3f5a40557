// SPDX-License-Identifier: Apache-2.0
// The only file that knows nlohmann-json, which takes long to compile.
#include "output/json_text.h"

#include <nlohmann/json.hpp>

namespace pmctl {
namespace {

using nlohmann::ordered_json;

ordered_json numbers(const record_member &member, std::span<const std::byte> record) {
    if (member.place.count == 1) return number_of(member, record);
    ordered_json array = ordered_json::array();
    for (size_t element = 0; element < member.place.count; ++element)
        array.push_back(number_of(member, record, element));
    return array;
}

ordered_json value_of(const record_member &member, std::span<const std::byte> record) {
    if (is_absent(member, record)) return nullptr;
    switch (member.format) {
        case member_format::number:
        case member_format::network_number:
        case member_format::interface:
            return numbers(member, record);
        case member_format::text:
        case member_format::owner:
            return characters_of(member, record);
        default:
            return address_text(member, record);
    }
}

// "if_index" has its name under "name", "parent_if_index" under "parent_name".
std::string name_key(std::string_view index_key) {
    return std::string(index_key.substr(0, index_key.rfind("if_index"))) + "name";
}

ordered_json words_of(const record_member &member, words_function words, std::span<const std::byte> record) {
    if (member.place.count == 1) return words(code_of(member, record));
    ordered_json array = ordered_json::array();
    for (size_t element = 0; element < member.place.count; ++element)
        array.push_back(words(code_of(member, record, element)));
    return array;
}

void add_words(ordered_json &object, const record_member &member, std::span<const std::byte> record) {
    const std::string key(member.key);
    if (member.words != nullptr) object[key + "_text"] = words_of(member, member.words, record);
    if (member.keyword != nullptr) object[key + "_keyword"] = words_of(member, member.keyword, record);
}

void add_member(ordered_json &object, const record_member &member, std::span<const std::byte> record) {
    object[std::string(member.key)] = value_of(member, record);
    add_words(object, member, record);
    if (member.format != member_format::interface) return;
    ordered_json &name = object[name_key(member.key)];
    if (!is_absent(member, record)) name = address_text(member, record);
}

ordered_json object_of(std::span<const member_group> groups, std::span<const std::byte> record) {
    ordered_json object = ordered_json::object();
    for (const member_group &group : groups)
        for (const record_member &member : group.members) add_member(object, member, record);
    return object;
}

ordered_json object_of(const json_fields &fields) {
    ordered_json object = ordered_json::object();
    for (const auto &[key, value] : fields)
        std::visit([&object, &name = key](const auto &held) { object[name] = held; }, value);
    return object;
}

std::string document_of(std::string_view array, ordered_json objects) {
    ordered_json document;
    document[std::string(array)] = std::move(objects);
    constexpr int indent = 2;
    return document.dump(indent, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string json_text(std::string_view array, std::span<const member_group> groups, const record_list &records) {
    ordered_json objects = ordered_json::array();
    for (const auto &record : records) objects.push_back(object_of(groups, record));
    return document_of(array, std::move(objects));
}

std::string json_text(std::string_view array, const std::vector<json_fields> &all) {
    ordered_json objects = ordered_json::array();
    for (const json_fields &fields : all) objects.push_back(object_of(fields));
    return document_of(array, std::move(objects));
}

}  // namespace pmctl
