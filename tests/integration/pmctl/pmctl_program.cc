// SPDX-License-Identifier: Apache-2.0
#include "integration/pmctl/pmctl_program.h"

nlohmann::json objects_in(const std::string &json_text, const char *array) {
    return nlohmann::json::parse(json_text).at(array);
}

std::vector<std::string> names_in(const std::string &json_text) {
    std::vector<std::string> names;
    for (const auto &port : objects_in(json_text)) names.push_back(port.at("name"));
    return names;
}
