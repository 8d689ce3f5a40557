// SPDX-License-Identifier: Apache-2.0
// Every port of a switch in pages.
#include <cstring>

#include "cpp_layer_switch_test.h"

namespace {

using port_mgr::all_ports;
using port_mgr::paging;

// The bytes of a record but for the owner: an answer about several ports gives all of them the same one.
std::string without_owner(pm_port_info_t port) {
    std::memset(port.owner, 0, sizeof port.owner);
    return {reinterpret_cast<const char *>(&port), sizeof port};
}

class cpp_all_ports_of_switch : public cpp_layer_switch_test {
  protected:
    std::vector<std::string> brief_names() {
        const auto brief = port_mgr::get_all_port_info_brief(handle());
        EXPECT_TRUE(brief) << brief.why().words();
        return names_in(*brief);
    }
};

TEST_F(cpp_all_ports_of_switch, are_those_of_the_brief_list_however_they_are_asked_for) {
    const std::vector<std::string> expected = brief_names();
    ASSERT_EQ(expected.size(), 215u);
    for (const paging by : {paging{}, paging{1, 1}, paging{1, 1000}, paging{1000, 1}, paging{3, 7}}) {
        auto ports = all_ports(handle(), by);
        EXPECT_EQ(names_in(ports), expected);
        EXPECT_TRUE(ports.why().ok()) << ports.why().words();
    }
}

TEST_F(cpp_all_ports_of_switch, are_of_every_kind) {
    switch_.reset();
    switch_.emplace(every_kind);
    const std::vector<std::string> expected = brief_names();
    EXPECT_GT(expected.size(), 20u);
    auto ports = all_ports(handle());
    EXPECT_EQ(names_in(ports), expected);
    EXPECT_TRUE(ports.why().ok()) << ports.why().words();
}

TEST_F(cpp_all_ports_of_switch, are_what_a_query_for_each_tells) {
    const platform_dev::mts_handle other;
    size_t compared = 0;
    auto ports = all_ports(handle());
    for (const pm_port_info_t &port : ports) {
        const auto alone = port_mgr::get_port_info_range(other.get(), port.if_index, port.if_index);
        ASSERT_TRUE(alone) << name_of(port.if_index) << ": " << alone.why().words();
        ASSERT_EQ(alone->size(), 1u);
        EXPECT_EQ(without_owner((*alone)[0]), without_owner(port)) << name_of(port.if_index);
        ++compared;
    }
    EXPECT_EQ(compared, 215u);
}

TEST_F(cpp_all_ports_of_switch, that_are_left_half_way_leave_the_handle_good) {
    {
        auto ports = all_ports(handle());
        EXPECT_NE(ports.next(), nullptr);
    }
    auto ports = all_ports(handle());
    EXPECT_EQ(names_in(ports), brief_names());
}

// Requests that were sent are lost then, and the next one finds nobody.
TEST_F(cpp_all_ports_of_switch, end_with_the_switch) {
    auto ports = all_ports(handle(), {.pages_under_way = 2});
    EXPECT_NE(ports.next(), nullptr);
    switch_->send(SIGKILL);
    switch_->wait();
    size_t more = 0;
    while (ports.next() != nullptr) ++more;
    EXPECT_LT(more, 3 * paging{}.ports_of_page);
    EXPECT_THAT(ports.why().value(), testing::AnyOf(ECONNRESET, EHOSTUNREACH));
    EXPECT_EQ(all_ports(handle()).why().value(), static_cast<uint32_t>(EHOSTUNREACH));
}

}  // namespace
