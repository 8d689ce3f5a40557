// SPDX-License-Identifier: Apache-2.0
// What the library answers itself, from interface indexes and the databases of the chassis.
#include "virtual_switch_test.h"

namespace {

constexpr uint32_t refused = PM_ERR_INVALID_RANGE;

class local_answers : public virtual_switch_test {
  protected:
    // The number of members, or the failure.
    static std::string count(const char *first, const char *last) {
        uint32_t members = 77;
        const uint32_t status = pm_get_num_ports_in_if_index_range(index_of(first), index_of(last), &members);
        return status == 0 ? std::to_string(members) : failure(status);
    }

    // The name of the member, or the failure.
    static std::string member(const char *first, const char *last, uint32_t offset) {
        if_index_t at = 0;
        const uint32_t status = pm_get_if_index_in_range(index_of(first), index_of(last), &at, offset);
        return status == 0 ? name_of(at) : failure(status);
    }

  private:
    static std::string failure(uint32_t status) {
        if (status == refused) return "refused";
        return status == PM_ERR_REJECTED ? "past the end" : "status " + std::to_string(status);
    }
};

TEST_F(local_answers, the_slots_of_the_chassis_are_learnt_when_there_is_one_and_kept) {
    EXPECT_EQ(count("fc9/1", "fc9/4"), "4");
    EXPECT_EQ(count("fc10/1", "fc10/4"), "refused");
    {
        virtual_switch_process daemon(every_kind);
        EXPECT_EQ(count("fc5/1", "fc5/4"), "4");
        EXPECT_EQ(count("fc6/1", "fc6/4"), "refused");
        EXPECT_EQ(member("fc6/1", "fc6/4", 1), "refused");
        daemon.send(SIGTERM);
        EXPECT_EQ(daemon.wait(), 0);
    }
    EXPECT_EQ(count("fc6/1", "fc6/4"), "refused");
}

TEST_F(local_answers, ranges_of_every_kind_are_counted) {
    EXPECT_EQ(count("fc1/1", "fc1/48"), "48");
    EXPECT_EQ(count("Ethernet2/1", "Ethernet2/4"), "4");
    EXPECT_EQ(count("Ethernet2/4.100", "Ethernet2/4.120"), "21");
    EXPECT_EQ(count("Ethernet2/4.120", "Ethernet2/4.100"), "refused");
    EXPECT_EQ(count("port-channel1", "port-channel12"), "12");
    EXPECT_EQ(count("if22-3", "if22-4"), "2");
    EXPECT_EQ(count("mgmt0", "mgmt0"), "1");
    EXPECT_EQ(count("fcip1", "fcip3"), "3");
    EXPECT_EQ(count("fcip3", "fcip1"), "4294967295");
    EXPECT_EQ(count("if11-4/1", "if11-4/2"), "2");
    EXPECT_EQ(count("if13-3/1", "if13-3/2"), "2");
    for (const char *uncounted : {"loopback1", "if26-5/1", "if254-1"})
        EXPECT_EQ(count(uncounted, uncounted), "refused");
    EXPECT_EQ(count("fc1/1", "Ethernet1/2"), "refused");
    EXPECT_EQ(count("fc1/1", "fc2/1"), "refused");
}

TEST_F(local_answers, ranges_are_stepped_through) {
    EXPECT_EQ(member("fc1/1", "fc1/4", 3), "fc1/4");
    EXPECT_EQ(member("fc1/1", "fc1/4", 4), "past the end");
    EXPECT_EQ(member("Ethernet2/1", "Ethernet2/4", 2), "Ethernet2/3");
    EXPECT_EQ(member("if13-3/1", "if13-3/2", 1), "Ethernet3/2");
    EXPECT_EQ(member("port-channel1", "port-channel5", 4), "port-channel5");
    EXPECT_EQ(member("port-channel1", "port-channel5", 5), "refused");
    EXPECT_EQ(member("fcip1", "fcip3", 1), "fcip2");
    EXPECT_EQ(member("loopback1", "loopback1", 0), "loopback1");
    EXPECT_EQ(member("if11-4/1", "if11-4/2", 1), "refused");
}

TEST_F(local_answers, kinds_of_interfaces_differ_in_what_they_support) {
    EXPECT_EQ(pm_is_beacon_mode_supported(index_of("fc1/1")), 1);
    EXPECT_EQ(pm_is_beacon_mode_supported(index_of("mgmt0")), 0);
    EXPECT_EQ(pm_is_bbcredit_supported(index_of("if254-1")), 0);
    EXPECT_EQ(pm_is_transceiver_supported(index_of("if26-5/1")), 1);
    EXPECT_EQ(pm_is_transceiver_supported(index_of("fcip1")), 0);
    EXPECT_EQ(pm_is_xgfc_interface(index_of("port-channel1/12")), 1);
    EXPECT_EQ(pm_is_bundle_port_type(index_of("port-channel1/12")), 0);
    EXPECT_EQ(pm_is_bundle_port_type(index_of("port-channel12")), 1);
    EXPECT_EQ(pm_is_bundle_port_type(index_of("if22-3")), 1);
}

TEST_F(local_answers, sets_of_vsans_are_the_platform_s) {
    constexpr uint32_t start = 4090;
    constexpr uint8_t all_of_two_bytes[] = {0xff, 0xff};
    std::vector<uint8_t> flexi(sizeof(flexi_bitset_t) + sizeof all_of_two_bytes);
    memcpy(&flexi[0], &start, sizeof start);
    flexi[4] = sizeof all_of_two_bytes;
    memcpy(&flexi[sizeof(flexi_bitset_t)], all_of_two_bytes, sizeof all_of_two_bytes);
    vsan_bitset_t vsans;
    memset(&vsans, 0xee, sizeof vsans);
    EXPECT_EQ(pm_create_vsan_bitset_from_pm_flexi_bitset(reinterpret_cast<flexi_bitset_t *>(flexi.data()), &vsans), 0u);
    EXPECT_EQ(vsans.size, 512u);
    for (uint32_t vsan = 0; vsan < 4096; ++vsan) EXPECT_EQ(bitset_is_bit_set(&vsans, vsan) != 0, vsan >= start) << vsan;
}

}  // namespace
