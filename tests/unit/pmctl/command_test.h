// SPDX-License-Identifier: Apache-2.0
// Commands from their words to their outcome, over the scripted switch.
#ifndef TESTS_UNIT_PMCTL_COMMAND_TEST_H
#define TESTS_UNIT_PMCTL_COMMAND_TEST_H

#include <gmock/gmock.h>

#include "fixed_records.h"
#include "outcome.h"
#include "scripted_switch.h"

class command_test : public testing::Test {
  protected:
    void SetUp() override { the_switch = {}; }

    // Whatever happened, nothing is left behind.
    void TearDown() override {
        EXPECT_EQ(the_switch.open_handles, 0);
        EXPECT_EQ(the_switch.undropped_messages, 0);
    }

    static pmctl::outcome run(std::vector<const char *> words) {
        words.insert(words.begin(), "pmctl");
        return pmctl::carry_out(pmctl::parse_command_line(static_cast<int>(words.size()), words.data()));
    }

    static void answer(const char *range, std::vector<pm_port_info_t> ports) {
        the_switch.ranges[range] = {0, 0, std::move(ports)};
    }

    static void answer_configured(const char *interfaces, std::vector<pm_port_info_t> ports) {
        the_switch.configured[interfaces] = {0, 0, std::move(ports)};
    }

    static void refuse_configured(const char *interfaces, uint32_t status) {
        the_switch.configured[interfaces] = {0, status, {}};
    }

    // Interfaces of the switch, as every query of all of them says.
    static void exist(const std::vector<const char *> &names) {
        for (const char *name : names) {
            pm_port_info_brief_t port = bare_brief_port();
            port.if_index = index_named(name);
            the_switch.brief_ports.push_back(port);
        }
    }

    static void refuse(const char *range, uint32_t status) { the_switch.ranges[range] = {0, status, {}}; }

    static void fail(const char *range, uint32_t error) { the_switch.ranges[range] = {error, 0, {}}; }

    // The request is sent, and no answer comes.
    static void stay_silent(const char *range, uint32_t error) { the_switch.ranges[range] = {0, 0, {}, error}; }
};

#endif
