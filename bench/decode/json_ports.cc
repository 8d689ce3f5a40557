// SPDX-License-Identifier: Apache-2.0
#include "bench/decode/json_ports.h"

#include <algorithm>
#include <type_traits>

#include <nlohmann/json.hpp>

#include "bench/decode/port_members.h"

namespace bench {

namespace {

using nlohmann::json;

json write(const pm_port_info_t &port) {
    json object = {{"description", port.description}, {"fifth_bb_credit", uint32_t{port.bb_credit[4]}}};
#define WRITE(name) object[#name] = +port.name;
    PORT_NUMBERS(WRITE)
#undef WRITE
#define WRITE(name, count) \
    for (int i = 0; i < (count); ++i) object[#name].push_back(+port.name[i]);
    PORT_LISTS(WRITE)
#undef WRITE
    return object;
}

void read(const json &object, pm_port_info_t &port) {
    const auto &description = object.at("description").get_ref<const std::string &>();
    description.copy(port.description, sizeof port.description);
    port.bb_credit[4] = object.at("fifth_bb_credit").get<uint32_t>();
#define READ(name) port.name = object.at(#name).get<decltype(port.name)>();
    PORT_NUMBERS(READ)
#undef READ
#define READ(name, count)                \
    const json &name = object.at(#name); \
    for (size_t i = 0; i < (count); ++i) port.name[i] = name.at(i).get<std::decay_t<decltype(port.name[i])>>();
    PORT_LISTS(READ)
#undef READ
}

}  // namespace

json_ports::json_ports(const port_list &ports) : records_(ports.size()) {
    json list = json::array();
    for (const pm_port_info_t &port : ports) list.push_back(write(port));
    encoded_ = list.dump();
}

void json_ports::decode() {
    const json list = json::parse(encoded_);
    for (size_t i = 0; i < records_.size(); ++i) read(list.at(i), records_[i]);
}

}  // namespace bench
