// SPDX-License-Identifier: Apache-2.0
// json_schema.h: objects against the definitions of a schema, as far as the schemas of this tree go.
#ifndef TESTS_SUPPORT_JSON_SCHEMA_H
#define TESTS_SUPPORT_JSON_SCHEMA_H

#include <nlohmann/json.hpp>
#include <string>

class json_schema {
  public:
    explicit json_schema(const std::string &file);

    // The definition "interface" of "#/$defs/interface".
    [[nodiscard]] const nlohmann::json &definition(const char *name) const;

    // Expects the object to have every key of a definition and no others, with values of the right types.
    void expect_described(const char *name, const nlohmann::json &object) const;

  private:
    [[nodiscard]] const nlohmann::json &resolved(const nlohmann::json &property) const;

    nlohmann::json schema_;
};

#endif
