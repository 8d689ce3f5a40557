// SPDX-License-Identifier: Apache-2.0
#include "chassis/page_dump.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include "chassis/chassis_error.h"
#include "chassis/text_file.h"

namespace virtual_switch {
namespace {

constexpr size_t bytes_in_line = 16;
constexpr std::string_view blanks = " \t\r";

[[noreturn]] void fail(unsigned line, const std::string &what) { throw chassis_error(line, "page dump", what); }

[[noreturn]] void fail_word(unsigned line, std::string_view word, const char *what) {
    constexpr size_t most_shown = 32;
    const std::string_view shown = word.substr(0, most_shown);
    fail(line, std::string("'").append(shown).append(shown == word ? "' " : "...' ").append(what));
}

// Takes a line, or a word of a line, from the front of a text.
std::string_view take_until(std::string_view &text, std::string_view separators) {
    const size_t end = text.find_first_of(separators);
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return taken;
}

std::string_view take_word(std::string_view &line) {
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    return take_until(line, blanks);
}

// The lines that hold no bytes begin with "Offset" or "------", with #, or are blank.
bool is_heading(std::string_view first_word) {
    return first_word.empty() || first_word.front() == '#' || first_word == "Offset" ||
           first_word.find_first_not_of('-') == std::string_view::npos;
}

bool read_hex(std::string_view digits, size_t most_digits, size_t &number) {
    const char *const end = digits.data() + digits.size();
    if (digits.empty() || digits.size() > most_digits) return false;
    const auto [stopped, error] = std::from_chars(digits.data(), end, number, 16);
    return error == std::errc() && stopped == end;
}

// "0x0010:" must be where the next byte goes.
void check_offset(std::string_view word, unsigned line, size_t due) {
    size_t offset = 0;
    const bool is_offset =
        word.starts_with("0x") && word.ends_with(':') && read_hex(word.substr(2, word.size() - 3), 4, offset);
    if (!is_offset) fail_word(line, word, "is no offset such as '0x0010:'");
    if (offset != due)
        fail(line, "the line starts at byte " + std::to_string(offset) + ", not at " + std::to_string(due));
}

void append_line(std::string_view rest, unsigned line, std::vector<uint8_t> &pages) {
    size_t count = 0;
    for (std::string_view word = take_word(rest); !word.empty(); word = take_word(rest), ++count) {
        size_t byte = 0;
        if (word.size() != 2 || !read_hex(word, 2, byte)) fail_word(line, word, "is no byte in hex");
        pages.push_back(static_cast<uint8_t>(byte));
    }
    if (count != bytes_in_line) fail(line, "the line has " + std::to_string(count) + " bytes, not 16");
    if (pages.size() > 2 * dumped_page_size) fail(line, "has more than 512 bytes");
}

}  // namespace

std::vector<uint8_t> parse_page_dump(std::string_view text) {
    std::vector<uint8_t> pages;
    unsigned line = 0;
    while (!text.empty()) {
        ++line;
        std::string_view rest = take_until(text, "\n");
        const std::string_view first_word = take_word(rest);
        if (is_heading(first_word)) continue;
        check_offset(first_word, line, pages.size());
        append_line(rest, line, pages);
    }
    if (pages.size() == dumped_page_size || pages.size() == 2 * dumped_page_size) return pages;
    fail(line, "has " + std::to_string(pages.size()) + " bytes, not 256 or 512");
}

// Of both pages only the beginning counts. A transceiver whose diagnostic page was not dumped has none.
transceiver transceiver_of(const std::vector<uint8_t> &pages) {
    transceiver made;
    std::copy_n(pages.begin(), made.serial_id.size(), made.serial_id.begin());
    const uint8_t type = made.serial_id[sff8472::serial_id::diagnostic_type];
    made.has_diagnostics = pages.size() > dumped_page_size && (type & sff8472::diagnostic_type::implemented) != 0;
    if (!made.has_diagnostics) return made;
    std::copy_n(pages.begin() + dumped_page_size, made.diagnostics.size(), made.diagnostics.begin());
    return made;
}

std::vector<uint8_t> load_page_dump(const std::string &path) {
    constexpr size_t most_mib = 1;
    try {
        return parse_page_dump(read_text_file(open_regular_file(path), most_mib));
    } catch (const chassis_error &error) {
        throw std::runtime_error(path + ":" + error.what());
    }
}

}  // namespace virtual_switch
