// SPDX-License-Identifier: Apache-2.0
#include "output/column_table.h"

#include <gtest/gtest.h>

#include "fixed_records.h"
#include "output/port_members.h"
#include "output/render.h"

namespace {

std::string table_of(const std::vector<pm_port_info_brief_t> &ports) {
    return pmctl::render({{pmctl::column_sheet(pmctl::brief_columns(), pmctl::records_of(std::span(ports)))}, {}}, {});
}

TEST(column_table, shows_each_member_in_its_column) {
    EXPECT_EQ(table_of({full_brief_port(), worded_brief_port(), bare_brief_port()}),
              R"(Interface  Admin mode       Oper mode        State    Reason         Gbps  Port channel    VSAN
fc1/4      Unknown(201001)  Unknown(201002)  unknown  ficonProhibit  201   port-channel12  2003
fc1/4      E                TE               down     notConnected   0.1   port-channel12  2003
mgmt0      -                -                unknown  down           --    -               -
)");
}

TEST(column_table, leaves_out_that_there_is_no_reason) {
    pm_port_info_brief_t port = full_brief_port();
    port.state_reason = 2;
    EXPECT_NE(table_of({port}).find("unknown  -       201"), std::string::npos) << table_of({port});
}

TEST(column_table, leaves_no_blanks_at_the_end) {
    const std::string table = table_of({full_brief_port(), bare_brief_port()});
    EXPECT_EQ(table.find(" \n"), std::string::npos);
}

TEST(column_table, is_empty_without_records) { EXPECT_EQ(table_of({}), ""); }

}  // namespace
