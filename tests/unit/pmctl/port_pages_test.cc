// SPDX-License-Identifier: Apache-2.0
// Many ports in full: which pages they are asked for in, and how many requests are under way.
#include <cerrno>

#include "command_test.h"
#include "failure.h"
#include "port_mgr/status.h"
#include "switch/interface_names.h"
#include "switch/switch_client.h"

namespace {

using port_mgr::module_pages;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<if_index_t> indexes_named(const std::vector<const char *> &names) {
    std::vector<if_index_t> all;
    for (const char *name : names) all.push_back(index_named(name));
    return all;
}

pm_port_info_t port_named(const std::string &name) {
    pm_port_info_t port = full_port();
    port.if_index = index_named(name.c_str());
    return port;
}

std::vector<std::string> names_of(const std::vector<pm_port_info_t> &ports) {
    std::vector<std::string> names;
    for (const pm_port_info_t &port : ports) names.push_back(pmctl::interface_name(if_index_t{port.if_index}));
    return names;
}

std::vector<std::string> names_of(const std::vector<pm_if_index_range_t> &pages) {
    std::vector<std::string> names;
    for (const pm_if_index_range_t &page : pages)
        names.push_back(pmctl::interface_name(page.first) + " " + pmctl::interface_name(page.last));
    return names;
}

class port_pages : public command_test {
  protected:
    // Ports fc1/1, fc1/2 ... that exist and answer one by one.
    static void exist_singly(unsigned count) {
        for (unsigned number = 1; number <= count; ++number) {
            const std::string name = "fc1/" + std::to_string(number);
            exist({name.c_str()});
            answer((name + " " + name).c_str(), {port_named(name)});
        }
    }

    static std::vector<std::string> ask(const port_mgr::paging &by) {
        return names_of(pmctl::switch_client().ports(by));
    }

    // What the refusal says.
    static std::string refusal_of(const port_mgr::paging &by) {
        try {
            ask(by);
        } catch (const pmctl::query_refused &refusal) {
            return refusal.what();
        }
        return "not refused";
    }
};

TEST_F(port_pages, hold_ports_that_follow_one_another) {
    const auto pages = module_pages(indexes_named({"fc1/1", "fc1/2", "fc1/7", "fc1/8"}), 3);
    EXPECT_THAT(names_of(pages), ElementsAre("fc1/1 fc1/7", "fc1/8 fc1/8"));
    EXPECT_THAT(module_pages({}, 3), IsEmpty());
}

TEST_F(port_pages, come_in_the_order_of_indexes) {
    const auto pages = module_pages(indexes_named({"fc2/1", "fc1/2", "fc1/9", "fc1/1"}), 2);
    EXPECT_THAT(names_of(pages), ElementsAre("fc1/1 fc1/2", "fc1/9 fc1/9", "fc2/1 fc2/1"));
}

TEST_F(port_pages, are_of_one_type_one_service_and_one_module) {
    the_switch.services = {{"port-channel2", 175}, {"port-channel3", 175}};
    const auto pages = module_pages(
        indexes_named({"fc1/1", "fc2/1", "Ethernet4/1", "port-channel1", "port-channel2", "port-channel3", "mgmt0"}),
        16);
    EXPECT_THAT(names_of(pages),
                ElementsAre("fc1/1 fc1/1", "fc2/1 fc2/1", "Ethernet4/1 Ethernet4/1", "port-channel1 port-channel1",
                            "port-channel2 port-channel3", "mgmt0 mgmt0"));
}

TEST_F(port_pages, hold_sub_interfaces_beside_their_port) {
    const auto pages = module_pages(indexes_named({"Ethernet4/1", "Ethernet4/1.5", "Ethernet4/2"}), 16);
    EXPECT_THAT(names_of(pages), ElementsAre("Ethernet4/1 Ethernet4/2"));
}

TEST_F(port_pages, show_all_ports_in_their_order) {
    exist({"mgmt0", "fc1/1", "fc1/3"});
    answer("fc1/1 fc1/3", {port_named("fc1/1"), port_named("fc1/3")});
    answer("mgmt0 mgmt0", {port_named("mgmt0")});
    EXPECT_THAT(ask({}), ElementsAre("fc1/1", "fc1/3", "mgmt0"));
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "fc1/1 fc1/3", "mgmt0 mgmt0"));
}

TEST_F(port_pages, ask_nothing_of_a_switch_without_ports) {
    EXPECT_THAT(ask({}), IsEmpty());
    EXPECT_THAT(the_switch.asked, ElementsAre("brief"));
}

TEST_F(port_pages, are_under_way_together_but_not_too_many) {
    exist_singly(7);
    for (const size_t under_way : {1u, 3u, 7u}) {
        the_switch.most_under_way = 0;
        EXPECT_THAT(ask({1, under_way}), ElementsAre("fc1/1", "fc1/2", "fc1/3", "fc1/4", "fc1/5", "fc1/6", "fc1/7"));
        EXPECT_EQ(the_switch.most_under_way, under_way);
    }
}

TEST_F(port_pages, are_under_way_together_for_a_range) {
    for (const char *page : {"fc1/1 fc1/16", "fc1/17 fc1/32", "fc1/33 fc1/48"}) answer(page, {full_port()});
    EXPECT_EQ(run({"show", "interface", "fc1/1-48"}).status, 0);
    EXPECT_EQ(the_switch.most_under_way, 3);
}

TEST_F(port_pages, of_ports_that_are_gone_are_empty) {
    exist_singly(3);
    refuse("fc1/2 fc1/2", PM_ERR_INVALID_RANGE);
    EXPECT_THAT(ask({1, 2}), ElementsAre("fc1/1", "fc1/3"));
    for (const char *page : {"fc1/1 fc1/1", "fc1/3 fc1/3"}) refuse(page, PM_ERR_INVALID_RANGE);
    EXPECT_THAT(ask({1, 2}), IsEmpty());
}

TEST_F(port_pages, wait_for_room_in_a_full_queue) {
    exist_singly(6);
    the_switch.queue_room = 2;
    EXPECT_THAT(ask({1, 4}), SizeIs(6));
    EXPECT_EQ(the_switch.most_under_way, 2);
}

TEST_F(port_pages, give_up_when_a_queue_never_has_room) {
    exist_singly(1);
    the_switch.queue_room = 0;
    EXPECT_THAT(run({"show", "interface"}).messages, ElementsAre("all interfaces: Resource temporarily unavailable"));
}

TEST_F(port_pages, end_with_the_first_that_is_refused) {
    exist_singly(8);
    refuse("fc1/2 fc1/2", PM_ERR_REJECTED);
    refuse("fc1/3 fc1/3", PM_ERR_FAILURE);
    EXPECT_EQ(refusal_of({1, 4}), "all interfaces: request rejected (PM_ERR_REJECTED, 0x40290009)");
    EXPECT_THAT(the_switch.asked, SizeIs(1 + 5));  // the fifth after the first answer, none after the second
}

TEST_F(port_pages, tell_what_happened_first) {
    exist_singly(4);
    refuse("fc1/1 fc1/1", PM_ERR_REJECTED);
    fail("fc1/3 fc1/3", EHOSTUNREACH);
    EXPECT_EQ(refusal_of({1, 4}), "all interfaces: request rejected (PM_ERR_REJECTED, 0x40290009)");
    answer("fc1/1 fc1/1", {full_port()});
    EXPECT_EQ(refusal_of({1, 4}), "all interfaces: its service does not run on this switch");
}

TEST_F(port_pages, end_when_no_answer_comes) {
    exist_singly(8);
    stay_silent("fc1/2 fc1/2", ETIMEDOUT);
    EXPECT_THROW(ask({1, 4}), pmctl::switch_unavailable);
    EXPECT_THAT(the_switch.asked, SizeIs(1 + 5));
}

TEST_F(port_pages, leave_later_ranges_to_be_asked) {
    refuse("fc1/1 fc1/16", PM_ERR_REJECTED);
    for (const char *page : {"fc1/17 fc1/32", "fc1/33 fc1/48"}) answer(page, {port_named("fc1/20")});
    answer("fc2/1 fc2/1", {port_named("fc2/1")});
    const auto outcome = run({"show", "interface", "fc1/1-48", "fc2/1"});
    EXPECT_THAT(outcome.messages, ElementsAre("fc1/1-48: request rejected (PM_ERR_REJECTED, 0x40290009)"));
    EXPECT_THAT(outcome.output, testing::StartsWith("fc2/1\n"));
}

}  // namespace
