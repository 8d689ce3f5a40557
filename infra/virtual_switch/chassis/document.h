// SPDX-License-Identifier: Apache-2.0
// document.h: a TOML document as a tree whose every value knows its line.
#ifndef VIRTUAL_SWITCH_CHASSIS_DOCUMENT_H
#define VIRTUAL_SWITCH_CHASSIS_DOCUMENT_H

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace virtual_switch {

struct document_value;
struct document_entry;

using document_array = std::vector<document_value>;
using document_table = std::vector<document_entry>;  // in order of lines

// Values of types that no key takes: booleans, dates and times.
struct foreign_value {
    std::string_view type_name;
};

struct document_value {
    unsigned line;
    std::variant<int64_t, double, std::string, document_array, document_table, foreign_value> data;

    // What it is, for messages: "a number", "a text" ...
    [[nodiscard]] std::string_view type_name() const;
};

struct document_entry {
    std::string key;
    document_value value;
};

// Reads a document. Throws chassis_error for text that is no TOML.
document_table parse_document(std::string_view text);

}  // namespace virtual_switch

#endif
