// SPDX-License-Identifier: Apache-2.0
#include "chassis/page_dump.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "chassis/chassis_file.h"
#include "names.h"
#include "sff8472/identification.h"
#include "temporary_folder.h"

namespace {

using virtual_switch::parse_page_dump;
using virtual_switch::transceiver;

// A line of 16 bytes, each the low byte of its position.
std::string line_at(size_t offset) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%04zx:\t\t", offset);
    std::string line(text);
    for (size_t i = 0; i < 16; ++i) {
        std::snprintf(text, sizeof text, "%02zx ", (offset + i) & 0xff);
        line += text;
    }
    return line + "\n";
}

std::string dump(size_t size) {
    std::string text = "Offset\t\tValues\n------\t\t------\n";
    for (size_t offset = 0; offset < size; offset += 16) text += line_at(offset);
    return text;
}

std::string complaint(const std::string &text) {
    try {
        parse_page_dump(text);
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return "";
}

TEST(page_dump, holds_one_page_or_two) {
    for (const size_t size : {256u, 512u}) {
        const std::vector<uint8_t> pages = parse_page_dump(dump(size));
        ASSERT_EQ(pages.size(), size);
        for (size_t i = 0; i < size; ++i) EXPECT_EQ(pages[i], i & 0xff);
    }
}

TEST(page_dump, may_have_comments_blank_lines_and_other_line_ends) {
    std::string text = "# of a transceiver\r\n\r\n   \n" + dump(256) + "\n# the end";
    EXPECT_EQ(parse_page_dump(text), parse_page_dump(dump(256)));
    std::string with_returns;
    for (const char letter : dump(256)) with_returns += letter == '\n' ? std::string("\r\n") : std::string(1, letter);
    EXPECT_EQ(parse_page_dump(with_returns), parse_page_dump(dump(256)));
}

TEST(page_dump, may_have_capital_digits_and_no_last_line_end) {
    std::string text = dump(256);
    text.pop_back();
    EXPECT_EQ(complaint(text), "");
    const size_t last = text.rfind("ff");
    text.replace(last, 2, "FF");
    EXPECT_EQ(parse_page_dump(text).back(), 0xff);
}

struct bad_dump {
    const char *line;  // in the place of the second of bytes, the fourth of the text
    const char *complaint;
};

TEST(page_dump, tells_what_is_wrong_with_a_line) {
    const bad_dump cases[] = {
        {"what is this", "4: page dump: 'what' is no offset such as '0x0010:'"},
        {"0010: 00", "4: page dump: '0010:' is no offset such as '0x0010:'"},
        {"0x0010 00", "4: page dump: '0x0010' is no offset such as '0x0010:'"},
        {"0x: 00", "4: page dump: '0x:' is no offset such as '0x0010:'"},
        {"0x00010: 00", "4: page dump: '0x00010:' is no offset such as '0x0010:'"},
        {"0x001g: 00", "4: page dump: '0x001g:' is no offset such as '0x0010:'"},
        {"0x0020: 00", "4: page dump: the line starts at byte 32, not at 16"},
        {"0x0000: 00", "4: page dump: the line starts at byte 0, not at 16"},
        {"0x0010: 00 11 22 33", "4: page dump: the line has 4 bytes, not 16"},
        {"0x0010:", "4: page dump: the line has 0 bytes, not 16"},
        {"0x0010: 0 1 2 3 4 5 6 7 8 9 a b c d e f", "4: page dump: '0' is no byte in hex"},
        {"0x0010: 0123456789abcdef0123456789abcdef",
         "4: page dump: '0123456789abcdef0123456789abcdef' is no byte in hex"},
        {"0x0010: 0123456789abcdef0123456789abcdef0",
         "4: page dump: '0123456789abcdef0123456789abcdef...' is no byte in hex"},
        {"0x0010: \x1b[2J", "4: page dump: '?[2J' is no byte in hex"},
        {"0x0010: 00 0g", "4: page dump: '0g' is no byte in hex"},
        {"0x0010: 00 -1", "4: page dump: '-1' is no byte in hex"},
        {"0x0010: 00 0x11", "4: page dump: '0x11' is no byte in hex"},
        {"0x0010: 0011", "4: page dump: '0011' is no byte in hex"},
        {"0x0010: 00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10", "4: page dump: the line has 17 bytes, not 16"},
    };
    for (const auto &[line, expected] : cases) {
        std::string text = dump(256);
        text.replace(text.find(line_at(16)), line_at(16).size(), std::string(line) + "\n");
        EXPECT_EQ(complaint(text), expected);
    }
}

TEST(page_dump, tells_that_there_is_too_little_or_too_much) {
    EXPECT_EQ(complaint(""), "0: page dump: has 0 bytes, not 256 or 512");
    EXPECT_EQ(complaint(dump(240)), "17: page dump: has 240 bytes, not 256 or 512");
    EXPECT_EQ(complaint(dump(272)), "19: page dump: has 272 bytes, not 256 or 512");
    EXPECT_EQ(complaint(dump(528)), "35: page dump: has more than 512 bytes");
}

TEST(page_dump, becomes_a_transceiver) {
    std::vector<uint8_t> pages(512);
    for (size_t i = 0; i < pages.size(); ++i) pages[i] = static_cast<uint8_t>(i * 7 + i / 256);
    pages[92] = 0x58;
    const transceiver made = virtual_switch::transceiver_of(pages);
    EXPECT_TRUE(made.has_diagnostics);
    EXPECT_TRUE(made.is_externally_calibrated());
    EXPECT_TRUE(std::equal(made.serial_id.begin(), made.serial_id.end(), pages.begin()));
    EXPECT_TRUE(std::equal(made.diagnostics.begin(), made.diagnostics.end(), pages.begin() + 256));
    pages[92] = 0x18;
    EXPECT_FALSE(virtual_switch::transceiver_of(pages).has_diagnostics);
    pages[92] = 0x68;
    EXPECT_FALSE(virtual_switch::transceiver_of(pages).is_externally_calibrated());
    pages.resize(256);
    const transceiver half = virtual_switch::transceiver_of(pages);
    EXPECT_FALSE(half.has_diagnostics);
    EXPECT_THAT(half.diagnostics, testing::Each(0));
}

// ---------------------------------------------------------------------------------------------- from a chassis file

std::string chassis_with(const std::string &section, const std::string &names = "fc1/1") {
    return "[chassis]\nname = 'test'\ntype = 6\nslots = 1\n[[module]]\nslot = 1\nkind = 'fc'\nports = 4\n"
           "[[transceiver]]\nname = '" +
           names + "'\n" + section;
}

class dump_of_chassis : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directory(folder_.file("pages"));
        std::ofstream(folder_.file("pages/one.hex")) << dump(512);
    }
    [[nodiscard]] std::string complaint_of_chassis(const std::string &section) const {
        std::ofstream(folder_.file("chassis.toml"), std::ios::trunc) << chassis_with(section);
        try {
            virtual_switch::load_chassis(folder_.file("chassis.toml"));
        } catch (const std::runtime_error &error) {
            return error.what();
        }
        return "";
    }
    temporary_folder folder_;
};

TEST_F(dump_of_chassis, is_relative_to_the_chassis_file) {
    EXPECT_EQ(complaint_of_chassis("pages = 'pages/one.hex'"), "");
    EXPECT_EQ(complaint_of_chassis("pages = '" + folder_.file("pages/one.hex") + "'"), "");
    const auto model = virtual_switch::parse_chassis(chassis_with("pages = 'pages/one.hex'"), folder_.path());
    const transceiver *const first = model.plugged_into(index_of("fc1/1"));
    ASSERT_NE(first, nullptr);
    for (size_t i = 0; i < first->serial_id.size(); ++i) EXPECT_EQ(first->serial_id[i], i);
    for (size_t i = 0; i < first->diagnostics.size(); ++i) EXPECT_EQ(first->diagnostics[i], i);
}

TEST_F(dump_of_chassis, is_relative_to_the_working_directory_without_a_folder) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());
    EXPECT_NO_THROW(virtual_switch::parse_chassis(chassis_with("pages = 'pages/one.hex'")));
    std::filesystem::current_path(before);
}

// What is left of the dump is good: only its serial number and the checksum that goes with it are others.
TEST_F(dump_of_chassis, has_its_serial_number_on_the_first_port_alone) {
    std::string text = dump(512);
    const auto replace = [&](size_t offset, const std::string &bytes) {
        text.replace(text.find(line_at(offset)), line_at(offset).size(), bytes + "\n");
    };
    replace(0x40, "0x0040: 40 41 42 43 41 42 30 30 39 20 20 20 20 20 20 20");
    replace(0x50, "0x0050: 20 20 20 20 54 55 56 57 58 59 5a 5b 5c 5d 5e 5f");
    std::ofstream(folder_.file("two.hex")) << text;
    const auto model = virtual_switch::parse_chassis(chassis_with("pages = 'two.hex'", "fc1/1-3"), folder_.path());
    const auto page = [&](const char *name) { return model.plugged_into(index_of(name))->serial_id; };
    const auto id = [&](const char *name) { return sff8472::identify(page(name)); };
    EXPECT_EQ(id("fc1/1").serial_number, "AB009");
    EXPECT_FALSE(id("fc1/1").checksums_are_right);
    EXPECT_EQ(id("fc1/2").serial_number, "AB010");
    EXPECT_EQ(id("fc1/3").serial_number, "AB011");
    EXPECT_TRUE(id("fc1/3").checksums_are_right);
    for (size_t i = 0; i < page("fc1/1").size(); ++i) {
        const bool changes = (i >= 68 && i < 84) || i == 63 || i == 95;
        if (!changes) {
            EXPECT_EQ(page("fc1/3")[i], i);
        }
    }
}

TEST_F(dump_of_chassis, tells_its_own_name_and_line) {
    EXPECT_EQ(complaint_of_chassis("pages = 'no.hex'"), folder_.file("no.hex") + ":1: file: No such file or directory");
    std::ofstream(folder_.file("bad.hex")) << "\n0x0010: 00\n";
    EXPECT_EQ(complaint_of_chassis("pages = 'bad.hex'"),
              folder_.file("bad.hex") + ":2: page dump: the line starts at byte 16, not at 0");
}

TEST_F(dump_of_chassis, is_a_regular_file) {
    const std::string path = folder_.file("odd.hex");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(complaint_of_chassis("pages = 'odd.hex'"), path + ":1: file: is no regular file");
    EXPECT_EQ(complaint_of_chassis("pages = 'pages'"), folder_.file("pages") + ":1: file: is no regular file");
    EXPECT_EQ(complaint_of_chassis("pages = '/dev/zero'"), "/dev/zero:1: file: is no regular file");
    std::filesystem::create_symlink("pages/one.hex", folder_.file("link.hex"));
    EXPECT_EQ(complaint_of_chassis("pages = 'link.hex'"), "");
    std::filesystem::create_symlink("round.hex", folder_.file("round.hex"));
    EXPECT_THAT(complaint_of_chassis("pages = 'round.hex'"), testing::EndsWith("Too many levels of symbolic links"));
    std::ofstream(folder_.file("huge.hex")) << std::string((1 << 20) + 1, '\n');
    EXPECT_THAT(complaint_of_chassis("pages = 'huge.hex'"), testing::EndsWith("is larger than 1 MiB"));
}

TEST_F(dump_of_chassis, goes_with_drifts_alone) {
    const std::string pages = "pages = 'pages/one.hex'\n";
    const std::string start = folder_.file("chassis.toml") + ":12: transceiver.";
    EXPECT_EQ(complaint_of_chassis(pages + "vendor = 'X'"), start + "vendor: stands in the pages");
    EXPECT_EQ(complaint_of_chassis(pages + "calibration = 'none'"), start + "calibration: stands in the pages");
    EXPECT_EQ(complaint_of_chassis(pages + "bias = { value = 7 }"), start + "bias.value: unknown key");
    // Byte 92 says that there are diagnostics, until it does not.
    EXPECT_EQ(complaint_of_chassis(pages + "bias = { drift = 1, period = 9 }"), "");
    EXPECT_EQ(complaint_of_chassis(pages + "bias = { drift = 1 }"), start + "bias.period: is missing");
    std::string text = dump(512);
    text.replace(text.find("5c 5d"), 2, "1c");
    std::ofstream(folder_.file("pages/one.hex"), std::ios::trunc) << text;
    EXPECT_EQ(complaint_of_chassis(pages + "bias = { drift = 1, period = 9 }"),
              start + "bias: a transceiver without diagnostics reads nothing");
}

}  // namespace
