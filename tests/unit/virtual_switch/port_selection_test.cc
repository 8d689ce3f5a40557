// SPDX-License-Identifier: Apache-2.0
#include "services/port_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "chassis/chassis_file.h"
#include "names.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/request_layout.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using virtual_switch::chassis_model;
using virtual_switch::port_list;

const chassis_model &chassis() {
    static const chassis_model model = virtual_switch::parse_chassis(R"(
[chassis]
name = "test"
type = 6
slots = 4
[[module]]
slot = 1
kind = "fc"
ports = 3
[[module]]
slot = 2
kind = "ethernet"
ports = 2
[[sub_interface]]
name = "Ethernet2/1.5"
)");
    return model;
}

using named_range = std::pair<const char *, const char *>;

std::vector<uint8_t> request_of(uint8_t mode, uint32_t count, const std::vector<named_range> &ranges) {
    std::vector<uint8_t> bytes(pm::port_info_request_header_size + ranges.size() * pm::wire_range_size);
    pm::byte_writer writer(bytes);
    pm::write_header(writer, {mode, 0, 0, 0, 0, count});
    for (const auto &[first, last] : ranges) {
        writer.put_be32(index_of(first));
        writer.put_be32(index_of(last));
    }
    return bytes;
}

struct selection {
    uint32_t status;
    std::vector<std::string> names;
};

selection select(const std::vector<uint8_t> &payload, uint32_t sap = PM_SAP_PORT_MANAGER) {
    port_list ports;
    const uint32_t status = select_ports(chassis(), {payload, sap}, ports);
    selection selected{status, {}};
    for (const virtual_switch::port *port : ports)
        selected.names.push_back(virtual_switch::name_of(port->info.if_index));
    return selected;
}

selection select_range(const char *first, const char *last, uint32_t sap = PM_SAP_PORT_MANAGER) {
    return select(request_of(0, 1, {{first, last}}), sap);
}

TEST(port_selection, takes_the_existing_ports_of_a_range) {
    EXPECT_THAT(select_range("fc1/2", "fc1/9").names, ElementsAre("fc1/2", "fc1/3"));
    EXPECT_THAT(select_range("fc1/3", "fc1/3").names, ElementsAre("fc1/3"));
    EXPECT_THAT(select_range("Ethernet2/1", "Ethernet2/2", PM_SAP_ETHERNET).names,
                ElementsAre("Ethernet2/1", "Ethernet2/1.5", "Ethernet2/2"));
}

TEST(port_selection, takes_ranges_in_order_of_the_request) {
    const selection selected =
        select(request_of(0, 3, {{"fc1/3", "fc1/3"}, {"Ethernet2/2", "Ethernet2/2"}, {"fc1/1", "fc1/3"}}));
    EXPECT_EQ(selected.status, 0u);
    EXPECT_THAT(selected.names, ElementsAre("fc1/3", "Ethernet2/2", "fc1/1", "fc1/2", "fc1/3"));
}

TEST(port_selection, takes_all_ports_whatever_the_count) {
    EXPECT_THAT(select(request_of(1, 9, {})).names,
                ElementsAre("fc1/1", "fc1/2", "fc1/3", "Ethernet2/1", "Ethernet2/1.5", "Ethernet2/2"));
}

TEST(port_selection, refuses_ranges_of_others) {
    EXPECT_EQ(select_range("Ethernet2/1", "Ethernet2/1").status, PM_ERR_REJECTED);
    EXPECT_EQ(select_range("fc1/1", "fc1/1", PM_SAP_ETHERNET).status, PM_ERR_REJECTED);
    EXPECT_EQ(select_range("fc1/1", "fc1/1", PM_SAP_MGMT).status, PM_ERR_REJECTED);
}

TEST(port_selection, refuses_ranges_that_name_nothing) {
    EXPECT_EQ(select_range("fc1/4", "fc1/9").status, PM_ERR_INVALID_RANGE);
    EXPECT_EQ(select_range("fc1/3", "fc1/1").status, PM_ERR_INVALID_RANGE);
    EXPECT_EQ(select_range("fc1/1", "Ethernet2/2").status, PM_ERR_INVALID_RANGE);
    EXPECT_EQ(select(request_of(0, 2, {{"fc1/1", "fc1/1"}, {"fc2/1", "fc2/1"}})).status, PM_ERR_INVALID_RANGE);
}

TEST(port_selection, refuses_malformed_requests) {
    const std::vector<uint8_t> good = request_of(0, 1, {{"fc1/1", "fc1/1"}});
    for (size_t size = 0; size < good.size(); ++size)
        EXPECT_EQ(select({good.begin(), good.begin() + static_cast<ptrdiff_t>(size)}).status, PM_ERR_INVALID_PARAM)
            << size;
    std::vector<uint8_t> longer = good;
    longer.push_back(0);
    EXPECT_EQ(select(longer).status, PM_ERR_INVALID_PARAM);
    EXPECT_EQ(select(request_of(0, 2, {{"fc1/1", "fc1/1"}})).status, PM_ERR_INVALID_PARAM);
    EXPECT_EQ(select(request_of(0, 0, {})).status, PM_ERR_INVALID_PARAM);
    EXPECT_EQ(select(request_of(0, 0x20000000, {})).status, PM_ERR_INVALID_PARAM);
    EXPECT_EQ(select(request_of(0, 0x20000001, {{"fc1/1", "fc1/1"}})).status, PM_ERR_INVALID_PARAM);
    EXPECT_EQ(select(request_of(1, 1, {{"fc1/1", "fc1/1"}})).status, PM_ERR_INVALID_PARAM);
    EXPECT_EQ(select(request_of(2, 1, {{"fc1/1", "fc1/1"}})).status, PM_ERR_INVALID_PARAM);
}

TEST(port_selection, refuses_more_records_than_an_answer_holds) {
    const size_t most = virtual_switch::most_records();
    const std::vector<named_range> enough(most / 3, {"fc1/1", "fc1/3"});
    EXPECT_EQ(select(request_of(0, static_cast<uint32_t>(enough.size()), enough)).status, 0u);
    const std::vector<named_range> too_many(most / 3 + 1, {"fc1/1", "fc1/3"});
    EXPECT_EQ(select(request_of(0, static_cast<uint32_t>(too_many.size()), too_many)).status, PM_ERR_FAILURE);
}

uint32_t select_next(std::vector<uint8_t> payload, port_list &ports) {
    return select_next_port(chassis(), {payload, PM_SAP_PORT_MANAGER}, ports);
}

TEST(port_selection, finds_the_next_port) {
    port_list ports;
    EXPECT_EQ(select_next({0, 0, 0, 0}, ports), 0u);
    ASSERT_EQ(ports.size(), 1u);
    EXPECT_EQ(ports[0]->info.if_index, index_of("fc1/1"));
}

TEST(port_selection, finds_no_port_after_the_last) {
    port_list ports;
    EXPECT_EQ(select_next({0xff, 0xff, 0xff, 0xff}, ports), PM_ERR_INVALID_RANGE);
    EXPECT_THAT(ports, IsEmpty());
}

TEST(port_selection, refuses_a_next_of_another_size) {
    port_list ports;
    EXPECT_EQ(select_next({}, ports), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(select_next({0, 0, 0}, ports), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(select_next({0, 0, 0, 0, 0}, ports), PM_ERR_INVALID_PARAM);
}

}  // namespace
