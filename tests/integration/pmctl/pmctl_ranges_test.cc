// SPDX-License-Identifier: Apache-2.0
// Ranges of the director's interfaces.
#include "integration/pmctl/pmctl_program.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class pmctl_ranges : public pmctl_program {
  protected:
    static std::vector<std::string> names_of_range(const std::string &range) {
        return names_in(pmctl({"show", "interface", range, "--json"}).output);
    }

    client client_;
};

TEST_F(pmctl_ranges, shows_the_pages_of_a_range_as_one_answer) {
    EXPECT_THAT(names_of_range("fc1/1-48"), SizeIs(48));
    EXPECT_EQ(names_of_range("fc1/1-48"), names_of(client_.range("fc1/1", "fc1/48").records));
    EXPECT_THAT(names_of_range("Ethernet4/1-48"), SizeIs(52));
    EXPECT_EQ(names_of_range("Ethernet4/1-48"), names_of(client_.range("Ethernet4/1", "Ethernet4/48").records));
    EXPECT_EQ(names_of_range("po1-1023"), names_of(client_.range("port-channel1", "port-channel1023").records));
}

TEST_F(pmctl_ranges, shows_the_pages_of_the_switch_as_one_answer) {
    const auto names = names_in(pmctl({"show", "interface", "--json"}).output);
    EXPECT_THAT(names, SizeIs(testing::Gt(200)));
    EXPECT_EQ(names, names_of(client_.ports(PM_PORT_INFO_MODE_ALL, {}).records));
}

TEST_F(pmctl_alone, shows_pages_of_interfaces_of_every_kind) {
    const virtual_switch_process daemon(every_kind);
    const client asked;
    const auto names = names_in(pmctl({"show", "interface", "--json"}).output);
    EXPECT_THAT(names, testing::Not(IsEmpty()));
    EXPECT_EQ(names, names_of(asked.ports(PM_PORT_INFO_MODE_ALL, {}).records));
}

// Sub-interfaces of the last interface of a page.
TEST_F(pmctl_ranges, loses_nothing_between_two_pages) {
    EXPECT_EQ(names_of_range("Ethernet4/25-48"), names_of(client_.range("Ethernet4/25", "Ethernet4/48").records));
    EXPECT_THAT(names_of_range("Ethernet4/25-48"), testing::Contains("Ethernet4/40.5"));
    EXPECT_THAT(names_of_range("po5-40"), testing::Contains("port-channel20.30"));
}

TEST_F(pmctl_ranges, shows_what_exists_of_a_range) {
    EXPECT_THAT(names_of_range("po1-64"), ElementsAre("port-channel5", "port-channel11", "port-channel12",
                                                      "port-channel20", "port-channel20.30"));
    EXPECT_THAT(names_of_range("Ethernet4/7.1-4095"),
                ElementsAre("Ethernet4/7.100", "Ethernet4/7.101", "Ethernet4/7.102"));
    EXPECT_THAT(names_of_range("port-channel20.1-40"), ElementsAre("port-channel20.30"));
    EXPECT_THAT(names_of_range("loopback0-20"), ElementsAre("loopback1"));
    EXPECT_THAT(names_of_range("fcip3-99"), ElementsAre("fcip3"));
    EXPECT_THAT(names_of_range("if13-5/7-if13-5/30"), ElementsAre("if13-5/7", "if13-5/8"));
}

TEST_F(pmctl_ranges, says_that_nothing_of_a_range_exists) {
    const auto result = pmctl({"show", "interface", "fc6/1-48", "mgmt0", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "pmctl: no such interface: fc6/1-48\n");
    EXPECT_THAT(names_in(result.output), ElementsAre("mgmt0"));
}

TEST_F(pmctl_ranges, says_what_is_wrong_with_a_range) {
    const auto two_slots = pmctl({"show", "interface", "mgmt0", "fc1/1-fc2/1"});
    EXPECT_EQ(two_slots.status, 2);
    EXPECT_THAT(two_slots.output, IsEmpty());
    EXPECT_EQ(two_slots.messages, "pmctl: the ends of the range lie on two slots: fc1/1-fc2/1\n");
}

TEST_F(pmctl_ranges, leaves_it_to_the_switch_which_slots_there_are) {
    for (const char *range : {"fc9/1-4", "fc10/1-4", "Ethernet32/1.5-9"}) {
        const auto result = pmctl({"show", "interface", range});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.messages, std::string("pmctl: no such interface: ") + range + "\n");
    }
}

}  // namespace
