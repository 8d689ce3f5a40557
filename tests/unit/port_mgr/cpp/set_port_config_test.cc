// SPDX-License-Identifier: Apache-2.0
// A change of an attribute: its arguments, and what became of it.
#include <cerrno>

#include "../port_config_fixture.h"
#include "cpp_layer_fixture.h"

namespace {

using port_mgr::bytes_of;
using port_mgr::change_outcome;
using port_mgr::origin;
using port_mgr::set_port_config;
using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::calls;
using unit::handle;
using unit::queried;
using unit::set_answer;
using unit::set_request_of;

const std::vector<pm_if_index_range_t> one_range{{0x01020304, 0x01020506}};
constexpr uint8_t rx_buffer_size = 7;

// A guarded value, so that a look behind it ends the test.
std::span<const std::byte> view_of(const support::guarded_bytes &value) {
    return std::as_bytes(std::span(value.data(), value.size()));
}

class cpp_change : public unit::cpp_layer {
  protected:
    // The request of a change that succeeds.
    calls changed(std::span<const std::byte> to, const port_mgr::change_options &options,
                  uint8_t attribute = rx_buffer_size) {
        transport.will_answer_query(0, set_answer(0, {}));
        EXPECT_TRUE(set_port_config(handle, one_range, attribute, to, options).request.ok());
        return sent_requests();
    }

    const support::guarded_bytes value{unit::host_value(rx_buffer_size)};
};

TEST_F(cpp_change, sends_what_the_c_function_sends) {
    transport.will_answer_query(0, set_answer(0, {}));
    const std::vector<pm_if_index_range_t> ranges{{0x01020304, 0x05060708}, {0x090a0b0c, 0x0d0e0f10}};
    const auto outcome = set_port_config(handle, ranges, rx_buffer_size, bytes_of(uint16_t{0x1112}),
                                         {.user = "who", .from = "where", .wait = unit::wait});
    EXPECT_TRUE(outcome.request.ok());
    EXPECT_TRUE(outcome.entries.empty());
    const bytes request = payload()
                              .append({'w', 'h', 'o'})
                              .fill(57, 0)
                              .append({'w', 'h', 'e', 'r', 'e'})
                              .fill(35, 0)
                              .append({0, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 7, 2, 0x11, 0x12});
    EXPECT_THAT(transported(), ElementsAre(queried(2826, 3, request, 43)));
}

TEST_F(cpp_change, tells_nobody_unless_told_and_waits_as_long_as_the_transport_does) {
    EXPECT_THAT(changed(view_of(value), {.wait = unit::wait}),
                ElementsAre(queried(2826, 3, set_request_of({.type = rx_buffer_size}), 43)));
    EXPECT_THAT(changed(view_of(value), {}), ElementsAre(testing::EndsWith(", 0x55667788, 0)")));
}

TEST_F(cpp_change, tells_from_where_alone) {
    EXPECT_THAT(changed(view_of(value), {.from = "there", .wait = unit::wait}),
                ElementsAre(queried(2826, 3, set_request_of({.second = "there", .type = rx_buffer_size}), 43)));
}

TEST_F(cpp_change, has_the_entries_in_the_order_of_the_answer) {
    transport.will_answer_query(0, set_answer(0, {0x01020304, 0x01020305}));
    const change_outcome outcome = set_port_config(handle, one_range, rx_buffer_size, view_of(value));
    EXPECT_TRUE(outcome.request.ok());
    EXPECT_EQ(unit::indexes_of(outcome.entries), (std::vector<if_index_t>{0x01020304, 0x01020305}));
    EXPECT_EQ(port_mgr::status_of(outcome.entries[1]).value(), 0x01020306U);
    EXPECT_EQ(port_mgr::status_of(outcome.entries[1]).from(), origin::answer);
}

TEST_F(cpp_change, that_fails_in_part_has_the_entries_beside_its_status) {
    transport.will_answer_query(0, set_answer(PM_ERR_REJECTED, {0x01020304}));
    const change_outcome outcome = set_port_config(handle, one_range, rx_buffer_size, view_of(value));
    EXPECT_EQ(outcome.request.value(), PM_ERR_REJECTED);
    ASSERT_EQ(outcome.entries.size(), 1U);
    EXPECT_EQ(outcome.entries[0].if_index, 0x01020304U);
}

TEST_F(cpp_change, that_fails_in_the_transport_has_no_entries) {
    transport.will_answer_query(ETIMEDOUT, {});
    const change_outcome outcome = set_port_config(handle, one_range, rx_buffer_size, view_of(value));
    EXPECT_EQ(outcome.request.value(), uint32_t{ETIMEDOUT});
    EXPECT_TRUE(outcome.request.is_transport_failure());
    EXPECT_TRUE(outcome.entries.empty());
}

// The C function leaves the entries of the first service, which it has freed, when the second one does not answer.
TEST_F(cpp_change, that_fails_at_a_second_service_leaves_the_entries_of_the_first_alone) {
    interfaces.chassis_looks = {{0, 10U}, {0, 10U}, {0, 1U}};
    transport.will_answer_query(0, set_answer(0, {0x04000001}));
    transport.will_answer_query(ETIMEDOUT, {});
    const std::vector<pm_if_index_range_t> channel{{0x04000001, 0x04000001}};
    const change_outcome outcome = set_port_config(handle, channel, PM_ATTR_ADMIN_STATE, bytes_of(uint8_t{1}));
    EXPECT_EQ(outcome.request.value(), uint32_t{ETIMEDOUT});
    EXPECT_TRUE(outcome.entries.empty());
    EXPECT_EQ(sent_requests().size(), 2U);
}

TEST_F(cpp_change, of_a_value_that_no_length_can_tell_sends_nothing) {
    const bytes longest(255, 0x55);
    const bytes too_long(256, 0x55);
    const change_outcome refused =
        set_port_config(handle, one_range, rx_buffer_size, std::as_bytes(std::span(too_long)));
    EXPECT_EQ(refused.request.value(), PM_ERR_FAILURE);
    EXPECT_TRUE(refused.entries.empty());
    EXPECT_THAT(transported(), IsEmpty());
    EXPECT_EQ(changed(std::as_bytes(std::span(longest)), {}).size(), 1U);
}

TEST_F(cpp_change, of_no_value_or_no_range_sends_nothing) {
    EXPECT_EQ(set_port_config(handle, one_range, rx_buffer_size, {}).request.value(), PM_ERR_FAILURE);
    EXPECT_EQ(set_port_config(handle, {}, rx_buffer_size, view_of(value)).request.value(), PM_ERR_FAILURE);
    EXPECT_THAT(transported(), IsEmpty());
}

// The C function reads a value as wide as its attribute's kind: here a text of 81 bytes.
TEST_F(cpp_change, reads_nothing_behind_a_value_that_is_too_short) {
    const support::guarded_bytes text({'u', 'p'});
    const calls log = changed(view_of(text), {.wait = unit::wait}, PM_ATTR_DESCRIPTION);
    const bytes request =
        payload().fill(100, 0).append({0, 1, 1, 2, 3, 4, 1, 2, 5, 6}).append({PM_ATTR_DESCRIPTION, 2, 'u', 'p'});
    EXPECT_THAT(log, ElementsAre(queried(2826, 3, request, 43)));
}

TEST_F(cpp_change, of_an_attribute_that_nobody_knows_is_refused_by_the_encoder) {
    EXPECT_EQ(set_port_config(handle, one_range, 0, view_of(value)).request.value(), PM_ERR_TLV);
    assertions.take();
    output.take();
    EXPECT_THAT(transported(), IsEmpty());
}

}  // namespace
