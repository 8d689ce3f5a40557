// SPDX-License-Identifier: Apache-2.0
// Which interfaces there are, and what modules use, asked of the running daemon through the library.
#include <array>

#include "configuration_client.h"
#include "protocol/byte_order.h"
#include "virtual_switch_test.h"

namespace {

using testing::ElementsAre;

constexpr uint32_t wait = 10;

class listings : public virtual_switch_test {
  protected:
    // The names in the answer to a query, which is released, or its status.
    std::vector<std::string> names_in(uint32_t status, mts_msg_t &message) {
        if (status != 0) return {"transport error " + std::to_string(status)};
        const auto *const payload = static_cast<const uint8_t *>(mts_payload_get(&message));
        const uint32_t answered = pm::load_be32(payload);
        std::vector<std::string> names;
        if (answered != 0) names.push_back("status " + std::to_string(answered));
        for (size_t offset = 8; offset < mts_payload_size(&message); offset += 4)
            names.push_back(name_of(pm::load_be32(payload + offset)));
        mts_drop(client_.handle(), &message);
        return names;
    }

    std::vector<std::string> list(uint8_t type) {
        mts_msg_t message{};
        return names_in(pm_get_if_index_listing(type, client_.handle(), &message, wait), message);
    }

    std::vector<std::string> list_startup(uint8_t type, const std::string &text) {
        std::array<char, PM_STARTUP_BLOCK_SIZE> block{};
        text.copy(block.data(), block.size());
        mts_msg_t message{};
        return names_in(pm_get_startup_if_index_listing(block.data(), type, client_.handle(), &message, wait), message);
    }

    // The numbers of one record: module, resource, total, used.
    using record = std::array<uint32_t, 4>;

    std::vector<record> resources(uint16_t module, const std::vector<pm_if_index_range_t> &ranges = {}) {
        mts_msg_t message{};
        EXPECT_EQ(pm_get_module_resources(client_.handle(), static_cast<uint16_t>(ranges.size()), ranges.data(), module,
                                          PM_NODE_SUPERVISOR, &message),
                  0u);
        const auto *const payload = static_cast<const uint8_t *>(mts_payload_get(&message));
        EXPECT_EQ(pm::load_be32(payload), 0u);
        std::vector<record> records;
        for (size_t at = 8; at < mts_payload_size(&message); at += sizeof(pm_module_resource_t)) {
            records.push_back({pm::load_be16(payload + at), pm::load_be16(payload + at + 2),
                               pm::load_be32(payload + at + 4), pm::load_be32(payload + at + 8)});
        }
        mts_drop(client_.handle(), &message);
        return records;
    }
};

TEST_F(listings, of_every_type_that_has_one) {
    const virtual_switch_process daemon(every_kind);
    EXPECT_THAT(list(1), ElementsAre("fc1/1", "fc1/2", "fc1/3", "fc1/4"));
    EXPECT_THAT(list(2), ElementsAre("Ethernet2/1", "Ethernet2/2", "Ethernet2/3", "Ethernet2/4", "Ethernet2/4.9"));
    EXPECT_THAT(list(5), ElementsAre("mgmt0"));
    EXPECT_THAT(list(11), ElementsAre("if11-4/1", "if11-4/2"));
    EXPECT_THAT(list(13), ElementsAre("if13-3/1", "if13-3/2"));
    EXPECT_THAT(list(20), ElementsAre("loopback1"));
    EXPECT_THAT(list(26), ElementsAre("if26-5/1", "if26-5/2"));
    EXPECT_THAT(list(254), ElementsAre("if254-1"));
}

TEST_F(listings, follow_the_configuration) {
    const virtual_switch_process daemon(every_kind);
    const configuration_client configuring;
    EXPECT_EQ(configuring.config_loopbacks(true, {range_of("loopback8", "loopback9")}), 0u);
    EXPECT_THAT(list(20), ElementsAre("loopback1", "loopback8", "loopback9"));
}

TEST_F(listings, of_a_startup_description) {
    const virtual_switch_process daemon(every_kind);
    const std::string text = "fc1/3-4, Ethernet2/9, fc9/1, loopback5, mgmt0, fc1/3";
    EXPECT_THAT(list_startup(1, text), ElementsAre("fc1/3", "fc1/4", "fc9/1"));
    EXPECT_THAT(list_startup(2, text), ElementsAre("Ethernet2/9"));
    EXPECT_THAT(list_startup(5, text), ElementsAre("mgmt0"));
    EXPECT_THAT(list_startup(20, text), ElementsAre("loopback5"));
    EXPECT_THAT(list_startup(1, "fc1/1, no interface"), ElementsAre("status " + std::to_string(PM_ERR_INVALID_PARAM)));
    EXPECT_THAT(list_startup(1, std::string(256, ' ')), ElementsAre("status " + std::to_string(PM_ERR_INVALID_PARAM)));
}

using module_resources = listings;

TEST_F(module_resources, of_a_director) {
    const virtual_switch_process daemon(director);
    // One port of slot 4 is at 100 Mbit/s, twelve are without a transceiver.
    EXPECT_THAT(resources(4),
                ElementsAre(record{4, PM_RESOURCE_PORTS, 48, 36}, record{4, PM_RESOURCE_BANDWIDTH, 480000, 350100},
                            record{4, PM_RESOURCE_SUB_INTERFACES, 48 * 4092, 4}));
    EXPECT_THAT(resources(5),
                ElementsAre(record{5, PM_RESOURCE_PORTS, 8, 3}, record{5, PM_RESOURCE_BANDWIDTH, 8000, 3000}));
    EXPECT_THAT(resources(5, {range_of("if13-5/2", "if13-5/9")}),
                ElementsAre(record{5, PM_RESOURCE_PORTS, 8, 2}, record{5, PM_RESOURCE_BANDWIDTH, 8000, 2000}));
    EXPECT_EQ(resources(0).size(), 3u * 3 + 3 + 2);
}

}  // namespace
