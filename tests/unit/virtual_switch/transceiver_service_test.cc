// SPDX-License-Identifier: Apache-2.0
#include "services/transceiver_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_reply.h"
#include "names.h"
#include "optics_chassis.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "port_mgr/transceiver_info.h"
#include "services/port_service.h"

namespace {

using namespace std::chrono_literals;
using bytes = std::vector<uint8_t>;
using named_ranges = std::vector<std::pair<const char *, const char *>>;

constexpr uint32_t plain = 1;
constexpr uint32_t with_diagnostics = 2;
constexpr size_t header_size = 8;
constexpr size_t record_size = 267;

void append_word(bytes &to, uint32_t word) {
    for (int shift = 24; shift >= 0; shift -= 8) to.push_back(static_cast<uint8_t>(word >> shift));
}

bytes request_for(uint32_t flavour, const named_ranges &ranges) {
    bytes request;
    append_word(request, static_cast<uint32_t>(ranges.size()));
    append_word(request, flavour);
    for (const auto &[first, last] : ranges) {
        append_word(request, index_of(first));
        append_word(request, index_of(last));
    }
    return request;
}

class transceivers : public testing::Test {
  protected:
    mts_reply send(const bytes &payload, uint32_t sap = PM_SAP_PORT_MANAGER, uint32_t is_cmi = 1) {
        const auto size = static_cast<uint32_t>(payload.size());
        const mts_request_t request{PM_NODE_SUPERVISOR, sap, CMI_OPC_PM_GET_FCOT_INFO, is_cmi, 3, size,
                                    payload.data(),     {}};
        mts_reply reply;
        virtual_switch::port_service_context context{&switch_.state, {}};
        virtual_switch::port_service(&context, &request, &reply);
        return reply;
    }
    mts_reply ask(uint32_t flavour, const named_ranges &ranges, uint32_t sap = PM_SAP_PORT_MANAGER) {
        return send(request_for(flavour, ranges), sap);
    }
    // The record of the one port in question.
    bytes record(uint32_t flavour, const char *name, uint32_t sap = PM_SAP_PORT_MANAGER) {
        const mts_reply reply = ask(flavour, {{name, name}}, sap);
        EXPECT_EQ(reply.word(0), 0u);
        EXPECT_EQ(reply.word(4), 1u);
        EXPECT_EQ(reply.payload->size(), header_size + record_size);
        return {reply.payload->begin() + header_size, reply.payload->end()};
    }
    void expect_refusal(const mts_reply &reply, uint32_t status) {
        EXPECT_EQ(reply.payload->size(), 4u);
        EXPECT_EQ(reply.word(0), status);
    }
    [[nodiscard]] const virtual_switch::transceiver &of(const char *name) const {
        return switch_.state.model().transceivers.at(index_of(name));
    }

    optics_switch switch_;
};

bytes slice(const bytes &of, size_t offset, size_t size) {
    const auto begin = of.begin() + static_cast<ptrdiff_t>(offset);
    return {begin, begin + static_cast<ptrdiff_t>(size)};
}

void expect_zeros(const bytes &record, size_t offset, size_t size) {
    EXPECT_THAT(slice(record, offset, size), testing::Each(0)) << offset;
}

TEST_F(transceivers, are_told_byte_for_byte) {
    const bytes found = record(plain, "fc1/1");
    EXPECT_THAT(slice(found, 0, 8), testing::ElementsAre(0x01, 0x00, 0x00, 0x00, 0, 0, 0, 0));
    EXPECT_THAT(slice(found, 8, 128), testing::ElementsAreArray(of("fc1/1").serial_id));
    EXPECT_EQ(found[136], PM_FCOT_PRESENT);
    expect_zeros(found, 137, 130);
}

TEST_F(transceivers, have_diagnostics_when_asked_for) {
    switch_.now = 50s;
    const bytes found = record(with_diagnostics, "fc1/2");
    EXPECT_THAT(slice(found, 0, 8), testing::ElementsAre(0x01, 0x00, 0x10, 0x00, 0, 0, 0, 0));
    EXPECT_THAT(slice(found, 8, 128), testing::ElementsAreArray(of("fc1/2").serial_id));
    EXPECT_EQ(found[136], PM_FCOT_PRESENT | PM_FCOT_DIAGNOSTICS);
    expect_zeros(found, 137, 8);
    const auto page = diagnostics_at(of("fc1/2"), index_of("fc1/2"), {true, true}, 50s);
    EXPECT_THAT(slice(found, 145, 109), testing::ElementsAreArray(page));
    expect_zeros(found, 254, 12);
    EXPECT_EQ(found[266], PM_FCOT_LAYOUT_A);
}

TEST_F(transceivers, have_the_readings_of_the_moment) {
    const bytes before = record(with_diagnostics, "fc1/2");
    switch_.now = 100s;
    const bytes after = record(with_diagnostics, "fc1/2");
    EXPECT_NE(slice(before, 145 + 96, 2), slice(after, 145 + 96, 2));
    EXPECT_EQ(slice(before, 145 + 98, 8), slice(after, 145 + 98, 8));
    switch_.now = 400s;
    EXPECT_EQ(record(with_diagnostics, "fc1/2"), before);
}

TEST_F(transceivers, may_have_no_diagnostics) {
    const bytes cable = record(with_diagnostics, "fc1/3");
    EXPECT_THAT(slice(cable, 8, 128), testing::ElementsAreArray(of("fc1/3").serial_id));
    EXPECT_EQ(cable[136], PM_FCOT_PRESENT);
    expect_zeros(cable, 137, 130);
    EXPECT_EQ(cable, record(plain, "fc1/3"));
}

TEST_F(transceivers, may_be_absent) {
    for (const uint32_t flavour : {plain, with_diagnostics}) {
        const bytes found = record(flavour, "fc1/4");
        EXPECT_THAT(slice(found, 0, 4), testing::ElementsAre(0x01, 0x00, 0x30, 0x00));
        expect_zeros(found, 4, record_size - 4);
    }
}

TEST_F(transceivers, without_a_peer_receive_nothing) {
    const bytes found = record(with_diagnostics, "fc1/5");
    EXPECT_THAT(slice(found, 145 + 104, 2), testing::ElementsAre(0, 0));
    EXPECT_THAT(slice(found, 145 + 102, 2), testing::Not(testing::ElementsAre(0, 0)));
}

TEST_F(transceivers, belong_to_services) {
    EXPECT_EQ(record(plain, "Ethernet2/1", PM_SAP_ETHERNET)[136], PM_FCOT_PRESENT);
    expect_refusal(ask(plain, {{"if13-3/1", "if13-3/1"}}), PM_ERR_REJECTED);
    expect_refusal(ask(plain, {{"Ethernet2/1", "Ethernet2/1"}}), PM_ERR_REJECTED);
    expect_refusal(ask(plain, {{"fc1/1", "fc1/1"}}, PM_SAP_ETHERNET), PM_ERR_REJECTED);
    // The first range decides.
    EXPECT_EQ(ask(plain, {{"fc1/1", "fc1/1"}, {"Ethernet2/1", "Ethernet2/1"}}).word(4), 2u);
}

TEST_F(transceivers, come_in_the_order_of_the_ranges) {
    const mts_reply reply = ask(plain, {{"fc1/4", "fc1/9"}, {"fc1/1", "fc1/2"}, {"fc1/1", "fc1/1"}});
    EXPECT_EQ(reply.word(4), 5u);
    const char *const names[] = {"fc1/4", "fc1/5", "fc1/1", "fc1/2", "fc1/1"};
    ASSERT_EQ(reply.payload->size(), header_size + 5 * record_size);
    for (size_t i = 0; i < std::size(names); ++i)
        EXPECT_EQ(reply.word(header_size + i * record_size), index_of(names[i]));
}

TEST_F(transceivers, are_those_of_ports_that_take_one) {
    const mts_reply reply = ask(plain, {{"Ethernet2/1", "Ethernet2/2"}}, PM_SAP_ETHERNET);
    EXPECT_EQ(reply.word(4), 2u);
    EXPECT_EQ(reply.word(header_size + record_size), index_of("Ethernet2/2"));
    EXPECT_EQ(ask(plain, {{"fc1/1", "fc1/1"}, {"fcip1", "fcip1"}}).word(4), 1u);
}

TEST_F(transceivers, are_refused_where_there_are_none) {
    expect_refusal(ask(plain, {{"fcip1", "fcip1"}}), PM_ERR_REJECTED);
    expect_refusal(ask(plain, {{"mgmt0", "mgmt0"}}, PM_SAP_MGMT), PM_ERR_REJECTED);
    expect_refusal(ask(plain, {{"loopback1", "loopback1"}}, PM_SAP_ETHERNET_CHANNEL), PM_ERR_REJECTED);
    expect_refusal(ask(plain, {{"Ethernet2/1.7", "Ethernet2/1.7"}}, PM_SAP_ETHERNET), PM_ERR_REJECTED);
    expect_refusal(ask(plain, {{"port-channel1", "port-channel1"}}), PM_ERR_REJECTED);
}

TEST_F(transceivers, are_refused_for_ranges_without_a_port) {
    expect_refusal(ask(plain, {{"fc1/6", "fc1/9"}}), PM_ERR_INVALID_RANGE);
    expect_refusal(ask(plain, {{"fc1/1", "fc1/1"}, {"fc4/1", "fc4/9"}}), PM_ERR_INVALID_RANGE);
    expect_refusal(ask(plain, {{"fc1/2", "fc1/1"}}), PM_ERR_INVALID_RANGE);
    expect_refusal(ask(plain, {{"fc1/1", "Ethernet2/1"}}), PM_ERR_INVALID_RANGE);
}

TEST_F(transceivers, are_refused_for_malformed_requests) {
    const bytes good = request_for(plain, {{"fc1/1", "fc1/1"}});
    for (size_t size = 0; size < good.size(); ++size) expect_refusal(send(slice(good, 0, size)), PM_ERR_INVALID_PARAM);
    bytes longer = good;
    longer.push_back(0);
    expect_refusal(send(longer), PM_ERR_INVALID_PARAM);
    expect_refusal(send(request_for(plain, {})), PM_ERR_INVALID_PARAM);
    for (const uint32_t flavour : {0u, 3u, 0x01000000u})
        expect_refusal(ask(flavour, {{"fc1/1", "fc1/1"}}), PM_ERR_INVALID_PARAM);
    bytes wraps = good;
    wraps[0] = 0x20;  // 0x20000001 ranges take 8 bytes more than 4 GiB
    expect_refusal(send(wraps), PM_ERR_INVALID_PARAM);
}

TEST_F(transceivers, are_refused_when_the_answer_would_be_too_large) {
    const named_ranges many(20000, {"fc1/1", "fc1/5"});
    expect_refusal(ask(plain, many), PM_ERR_FAILURE);
    const named_ranges fewer(12600, {"fc1/1", "fc1/5"});  // 63000 records are more than 16 MiB
    expect_refusal(ask(plain, fewer), PM_ERR_FAILURE);
}

TEST_F(transceivers, are_told_over_cmi_alone) {
    expect_refusal(send(request_for(plain, {{"fc1/1", "fc1/1"}}), PM_SAP_PORT_MANAGER, 0), PM_ERR_FAILURE);
}

}  // namespace
