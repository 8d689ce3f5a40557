// SPDX-License-Identifier: Apache-2.0
#include "support/json_schema.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>

using nlohmann::json;

namespace {

// The schema's own words for what a value is.
bool is_of_type(const json &value, const json &type) {
    if (type.is_array())
        return std::any_of(type.begin(), type.end(), [&](const json &one) { return is_of_type(value, one); });
    if (type == "integer") return value.is_number_unsigned();
    return value.type_name() == type;
}

void expect_type(const std::string &key, const json &value, const json &property) {
    EXPECT_TRUE(is_of_type(value, property.at("type"))) << key << " is " << value;
    if (!value.is_array()) return;
    if (property.contains("minItems")) {
        EXPECT_EQ(value.size(), property.at("minItems")) << key;
    }
    for (const json &element : value) expect_type(key, element, property.at("items"));
}

}  // namespace

json_schema::json_schema(const std::string &file) {
    std::ifstream text(file);
    schema_ = json::parse(text);
}

const json &json_schema::definition(const char *name) const { return schema_.at("$defs").at(name); }

// Where the schema only refers to a definition, the definition.
const json &json_schema::resolved(const json &property) const {
    if (!property.contains("$ref")) return property;
    return schema_.at(json::json_pointer(property.at("$ref").get<std::string>().substr(1)));
}

void json_schema::expect_described(const char *name, const json &object) const {
    const json &properties = definition(name).at("properties");
    std::set<std::string> keys;
    for (const auto &[key, value] : object.items()) {
        keys.insert(key);
        ASSERT_TRUE(properties.contains(key)) << key;
        expect_type(key, value, resolved(properties.at(key)));
    }
    EXPECT_EQ(properties.size(), keys.size());
    EXPECT_EQ(definition(name).at("required").get<std::set<std::string>>(), keys);
}
