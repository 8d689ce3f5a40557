// SPDX-License-Identifier: Apache-2.0
// Display names of interfaces, written and read: a word, then [unit/]number[.sub-interface].
//
// A kind without a word is called if<type>-, and an index that no layout explains if<type>-0x<the other 24 bits>,
// so that every index has a name of its own.
#include <algorithm>
#include <charconv>
#include <string_view>

#include "if_index_kinds.h"

namespace platform_dev {
namespace {

constexpr size_t name_room = 256;
constexpr std::string_view unnamed_word = "if";
constexpr bit_field raw_field = {0, 24};

// Slots and the ports in them count from 1 in names.
uint32_t name_base(const index_layout &layout) { return layout.unit_is == unit_kind::slot ? 1 : 0; }

// Builds a name in a caller's buffer, which has room for every name.
class name_writer {
  public:
    explicit name_writer(char *text) : begin_(text), end_(text) {}

    void add(std::string_view text) { end_ = std::copy(text.begin(), text.end(), end_); }
    void add(uint32_t number, int base = 10) { end_ = std::to_chars(end_, begin_ + name_room, number, base).ptr; }

    // Ends the name. Returns its length.
    [[nodiscard]] int32_t finish() {
        *end_ = '\0';
        return static_cast<int32_t>(end_ - begin_);
    }

  private:
    char *begin_;
    char *end_;
};

void add_numbers(name_writer &writer, const index_layout &layout, if_index_t index) {
    const uint32_t unit = layout.unit.get(index);
    const uint32_t base = name_base(layout);
    if (layout.unit_is == unit_kind::slot || unit != 0) {
        writer.add(unit + base);
        writer.add("/");
    }
    writer.add(layout.number.get(index) + base);
    if (const uint32_t sub_intf = layout.sub_intf.get(index); sub_intf != 0) {
        writer.add(".");
        writer.add(sub_intf);
    }
}

// Instead of a word.
void add_type(name_writer &writer, uint32_t type) {
    writer.add(unnamed_word);
    writer.add(type);
    writer.add("-");
}

void add_raw(name_writer &writer, uint32_t bits) {
    writer.add("0x");
    writer.add(bits, 16);
}

// Takes a name apart from left to right.
class name_reader {
  public:
    explicit name_reader(std::string_view text) : rest_(text) {}

    [[nodiscard]] bool at_end() const { return rest_.empty(); }

    std::string_view word() {
        const std::string_view word = rest_.substr(0, rest_.find_first_of("0123456789"));
        rest_.remove_prefix(word.size());
        return word;
    }

    bool skip(std::string_view expected) {
        if (!rest_.starts_with(expected)) return false;
        rest_.remove_prefix(expected.size());
        return true;
    }

    bool number(uint32_t *out, int base = 10) {
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), *out, base);
        rest_.remove_prefix(static_cast<size_t>(end - rest_.data()));
        return error == std::errc{};
    }

  private:
    std::string_view rest_;
};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool begins(std::string_view name, std::string_view word) {
    if (word.size() > name.size()) return false;
    for (size_t i = 0; i < word.size(); ++i)
        if (lower(word[i]) != lower(name[i])) return false;
    return true;
}

const interface_kind *kind_of_word(std::string_view word) {
    if (word.size() < 2) return nullptr;
    for (const interface_kind &kind : interface_kinds)
        if (begins(kind.name, word)) return &kind;
    return nullptr;
}

bool read_sub_intf(name_reader &reader, uint32_t *sub_intf) {
    return !reader.skip(".") || (reader.number(sub_intf) && *sub_intf != 0);
}

bool unit_allowed(const index_layout &layout, bool present) {
    switch (layout.unit_is) {
        case unit_kind::slot:
            return present;
        case unit_kind::subtype:
            return true;
        case unit_kind::none:
            break;
    }
    return !present;
}

bool read_numbers(name_reader &reader, const interface_kind &kind, if_index_t *out) {
    const uint32_t base = name_base(kind.layout);
    index_numbers numbers = {base, 0, 0};
    if (!reader.number(&numbers.number)) return false;
    const bool has_unit = reader.skip("/");
    if (has_unit) {
        numbers.unit = numbers.number;
        if (!reader.number(&numbers.number)) return false;
    }
    if (!unit_allowed(kind.layout, has_unit) || numbers.unit < base || numbers.number < base ||
        !read_sub_intf(reader, &numbers.sub_intf) || !reader.at_end())
        return false;
    numbers.unit -= base;
    numbers.number -= base;
    return compose_index(kind, numbers, out);
}

bool read_raw(name_reader &reader, uint32_t type, if_index_t *out) {
    uint32_t bits;
    if (!reader.number(&bits, 16) || bits > raw_field.max() || !reader.at_end()) return false;
    *out = type << type_field.shift | bits;
    return true;
}

// What follows the word "if".
bool read_unnamed(name_reader &reader, if_index_t *out) {
    uint32_t type;
    if (!reader.number(&type) || type > type_field.max() || !reader.skip("-")) return false;
    if (reader.skip("0x")) return read_raw(reader, type, out);
    const interface_kind *kind = kind_of_type(static_cast<uint8_t>(type));
    return kind != nullptr && read_numbers(reader, *kind, out);
}

}  // namespace
}  // namespace platform_dev

using namespace platform_dev;

int32_t sprintf_if_index(char *text, if_index_t index) {
    name_writer writer(text);
    const interface_kind *kind = kind_of(index);
    const bool is_raw = kind == nullptr || (raw_field.get(index) & ~kind->layout.mask()) != 0;
    if (is_raw || kind->name.empty())
        add_type(writer, type_field.get(index));
    else
        writer.add(kind->name);
    if (is_raw)
        add_raw(writer, raw_field.get(index));
    else
        add_numbers(writer, kind->layout, index);
    return writer.finish();
}

int32_t if_index_from_name(const char *name, if_index_t *out) {
    name_reader reader(name);
    const std::string_view word = reader.word();
    const bool unnamed = word.size() == unnamed_word.size() && begins(unnamed_word, word);
    if (unnamed) return read_unnamed(reader, out) ? 0 : -1;
    const interface_kind *kind = kind_of_word(word);
    return kind != nullptr && read_numbers(reader, *kind, out) ? 0 : -1;
}
