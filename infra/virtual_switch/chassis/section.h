// SPDX-License-Identifier: Apache-2.0
// section.h: one table of a chassis file, read by keys.
#ifndef VIRTUAL_SWITCH_CHASSIS_SECTION_H
#define VIRTUAL_SWITCH_CHASSIS_SECTION_H

#include <initializer_list>
#include <span>

#include "chassis/document.h"
#include "chassis/model.h"
#include "chassis/value_reader.h"

namespace virtual_switch {

// Refers to the document, which must outlive it. Everything throws chassis_error.
class section {
  public:
    // Checks that `value` is a table with no other keys than `keys` and `settings`.
    section(std::string name, const document_value &value, std::initializer_list<std::string_view> keys,
            std::span<const std::string_view> settings = {});

    // Values that must be there.
    [[nodiscard]] uint32_t number(std::string_view key, number_range range) const;
    [[nodiscard]] const std::string &text(std::string_view key, size_t longest) const;
    [[nodiscard]] uint32_t word(std::string_view key, std::span<const named_value> words) const;
    [[nodiscard]] std::vector<if_index_t> interfaces(std::string_view key) const;

    // Values that need not be there.
    [[nodiscard]] uint32_t number_or(std::string_view key, number_range range, uint32_t otherwise) const;
    [[nodiscard]] bool has(std::string_view key) const { return find(key) != nullptr; }

    // Applies the settings of ports that the table holds, in order of lines.
    void apply_settings(port &to) const;

    // The value of a key, null when it is not there, and what messages call it.
    [[nodiscard]] const document_value *find(std::string_view key) const;
    [[nodiscard]] std::string path(std::string_view key) const { return name_ + "." + std::string(key); }

    [[noreturn]] void fail(std::string_view key, const std::string &what) const;

  private:
    [[nodiscard]] const document_value &required(std::string_view key) const;

    std::string name_;
    unsigned line_;
    const document_table &table_;
};

}  // namespace virtual_switch

#endif
