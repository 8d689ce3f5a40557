// SPDX-License-Identifier: Apache-2.0
// The generated tables of the dissector name all that the protocol has.
#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "port_mgr/port_mgr_common.h"
#include "protocol/config_value_kinds.h"
#include "protocol/ethernet_stats_layout.h"
#include "protocol/port_info_layout.h"
#include "protocol/transceiver_layout.h"

namespace {

using testing::Contains;
using testing::ElementsAreArray;

std::string text_of(const std::string &path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

std::string header(const std::string &name) {
    return text_of(SOURCE_FOLDER "/infra/port_manager/include/port_mgr/" + name);
}

// The matches of an expression, each as its groups.
std::vector<std::vector<std::string>> matches(const std::string &text, const std::string &expression) {
    std::vector<std::vector<std::string>> found;
    const std::regex pattern(expression);
    for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at) {
        std::vector<std::string> groups;
        for (size_t i = 1; i < at->size(); ++i) groups.push_back((*at)[i]);
        found.push_back(groups);
    }
    return found;
}

struct row {
    std::string name;
    size_t at;
    size_t width;
    size_t count;
    std::string kind;
};

std::vector<row> rows_in(const std::string &text) {
    std::vector<row> rows;
    for (const auto &groups : matches(text,
                                      "\\{name = \"([^\"]*)\", at = (\\d+), width = (\\d+)(?:, count = (\\d+))?, "
                                      "kind = \"(\\w+)\""))
        rows.push_back({groups[0], std::stoul(groups[1]), std::stoul(groups[2]),
                        groups[3].empty() ? 1 : std::stoul(groups[3]), groups[4]});
    return rows;
}

class dissector_tables : public testing::Test {
  protected:
    // What stands between a line that begins like this and the next one that ends the table.
    [[nodiscard]] std::string table(const std::string &begin, const std::string &end) const {
        const size_t start = tables_.find("\n" + begin);
        if (start == std::string::npos) {
            ADD_FAILURE() << "no table " << begin;
            return "";
        }
        return tables_.substr(start, tables_.find("\n" + end, start + 1) - start);
    }
    [[nodiscard]] std::vector<row> record(const std::string &name, size_t size) const {
        return rows_in(table("    " + name + " = {size = " + std::to_string(size) + ", fields = {", "    }}"));
    }

    std::string tables_ = text_of(DISSECTOR);
};

size_t width_of(pm::field_kind kind) {
    const std::map<pm::field_kind, size_t> widths{{pm::field_kind::bytes, 1},
                                                  {pm::field_kind::u16, 2},
                                                  {pm::field_kind::u32, 4},
                                                  {pm::field_kind::u64, 8},
                                                  {pm::field_kind::if_index, 4}};
    return widths.at(kind);
}

// Each byte of each field is in exactly one row, and numbers are as wide as the field says.
void expect_covered(const std::vector<row> &rows, std::span<const pm::record_field> fields) {
    std::map<size_t, const row *> row_at;
    for (const row &at : rows) {
        if (at.name.find("serial_id.") == 0) continue;  // parts of another row
        for (size_t byte = at.at; byte < at.at + at.width * at.count; ++byte)
            EXPECT_TRUE(row_at.emplace(byte, &at).second) << at.name << " overlaps";
    }
    for (const pm::record_field &field : fields) {
        const size_t width = width_of(field.kind);
        for (size_t byte = field.wire; byte < field.wire + width * field.count; ++byte) {
            ASSERT_TRUE(row_at.contains(byte)) << byte;
            const row &found = *row_at[byte];
            if (field.kind == pm::field_kind::bytes) continue;
            EXPECT_EQ(found.width, width) << found.name;
            EXPECT_EQ((byte - found.at) % width, (byte - field.wire) % width) << found.name;
            EXPECT_EQ(found.kind, field.kind == pm::field_kind::if_index ? "if_index" : "number") << found.name;
        }
    }
}

TEST_F(dissector_tables, cover_the_fields_of_every_record) {
    expect_covered(record("port_info", pm::base_record_size), pm::base_record_fields);
    expect_covered(record("port_info_brief", pm::brief_record_size), pm::brief_record_fields);
    expect_covered(record("eth_stats", sizeof(pm_eth_stats_t)), pm::eth_stats_fields);
    expect_covered(record("fcot_info", sizeof(pm_fcot_info_t)), pm::fcot_fields);
    expect_covered(record("fcot_info", sizeof(pm_fcot_info_t)), pm::fcot_fields_a);
    expect_covered(record("fcot_info", sizeof(pm_fcot_info_t)), pm::fcot_fields_b);
}

// The members of a record of the public headers.
std::set<std::string> members_of(const std::string &file, const std::string &name) {
    const std::string text = header(file);
    const size_t begin = text.find("typedef struct PM_PACKED " + name + " {");
    const std::string body = text.substr(begin, text.find("\n}", begin) - begin);
    std::set<std::string> members;
    for (const auto &groups : matches(body, "\n    \\w+ (\\w+)(?:\\[\\w+\\])?;")) members.insert(groups[0]);
    return members;
}

TEST_F(dissector_tables, name_fields_as_the_public_records_do) {
    std::set<std::string> named;
    for (const row &at : record("port_info", pm::base_record_size)) named.insert(at.name);
    const std::string elements = table("    port_attributes = {", "    },");
    for (const pm::port_attribute &attribute : pm::port_attributes)
        EXPECT_NE(elements.find("\n      [" + std::to_string(attribute.type) + "] = "), std::string::npos)
            << attribute.type;
    for (const row &at : rows_in(elements)) named.insert(at.name);
    std::set<std::string> members = members_of("port_info_record.h", "pm_port_info");
    for (const char *const reserved : {"reserved_49", "reserved_51", "reserved_58"})
        EXPECT_EQ(members.erase(reserved), 1u);
    EXPECT_THAT(named, ElementsAreArray(members));

    std::set<std::string> brief;
    for (const row &at : record("port_info_brief", pm::brief_record_size)) brief.insert(at.name);
    members = members_of("port_info_response.h", "pm_port_info_brief");
    for (const char *const reserved : {"reserved_23", "reserved_42"}) EXPECT_EQ(members.erase(reserved), 1u);
    EXPECT_THAT(brief, ElementsAreArray(members));
}

TEST_F(dissector_tables, have_every_constant_of_the_headers) {
    size_t constants = 0;
    for (const char *const file : {"opcodes.h", "status.h", "config_attribute.h"}) {
        for (const auto &groups :
             matches(header(file), "#define ((?:MTS_OPC|CMI_OPC|PM_SAP|PM_ERR|PM_ATTR)_\\w+) (\\w+)u")) {
            const std::string key = "[" + std::to_string(std::stoul(groups[1], nullptr, 0)) + "] = ";
            const std::string name = "\"" + groups[0] + "\"";
            const bool is_there = std::regex_search(
                tables_, std::regex("\\" + key.substr(0, key.size() - 4) + "\\] = (\\{\\s*(name|title) = )?" + name));
            EXPECT_TRUE(is_there) << groups[0];
            ++constants;
        }
    }
    EXPECT_EQ(constants, 15u + 8u + 6u + 15u);
}

TEST_F(dissector_tables, have_every_attribute_that_can_be_written) {
    const std::string attributes = table("  attributes = {", "  },");
    for (unsigned number = 0; number <= UINT8_MAX; ++number) {
        const pm::value_kind kind = pm::written_kind(static_cast<uint8_t>(number));
        const size_t start = attributes.find("\n    [" + std::to_string(number) + "] = ");
        EXPECT_EQ(start == std::string::npos, kind == pm::value_kind::none) << number;
        if (start == std::string::npos) continue;
        const row value = rows_in(attributes.substr(start + 1, attributes.find('\n', start + 1) - start)).at(0);
        EXPECT_EQ(value.width * value.count, pm::width_of(kind)) << number;
    }
}

TEST_F(dissector_tables, say_what_the_library_says) {
    const auto expect_texts = [this](const char *name, size_t rows, auto text) {
        const auto found = matches(table(std::string("    ") + name + " = {", "    },"), "\\[(\\d+)\\] = \"([^\"]*)\"");
        EXPECT_EQ(found.size(), rows) << name;
        for (const auto &groups : found) EXPECT_EQ(groups[1], text(std::stoul(groups[0]))) << name << groups[0];
    };
    expect_texts("port_mode", 23, [](size_t value) { return port_mode_string(static_cast<int32_t>(value)); });
    expect_texts("port_state", 6, [](size_t value) { return port_state_string(static_cast<uint8_t>(value)); });
    expect_texts("duplex", 3, [](size_t value) { return port_duplex_mode_string(static_cast<uint8_t>(value)); });
    expect_texts("trunk_mode", 3, [](size_t value) { return port_trunking_mode_string(static_cast<uint8_t>(value)); });
    expect_texts("flowctrl", 4, [](size_t value) { return port_flowctrl_mode_string(static_cast<uint16_t>(value)); });
    expect_texts("speed", 11, [](size_t value) {
        static char text[80];
        return port_speed_string(static_cast<uint32_t>(value), text);
    });
    size_t reasons = 0;
    for (const auto &groups : matches(table("    state_reason = {", "    },"), "\\[(\\d+)\\] = \"([^\"]*)\"")) {
        EXPECT_EQ(groups[1], port_state_reason_string(static_cast<uint8_t>(std::stoul(groups[0])), 0));
        ++reasons;
    }
    EXPECT_GT(reasons, 100u);
}

}  // namespace
