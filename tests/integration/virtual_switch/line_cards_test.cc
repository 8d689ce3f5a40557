// SPDX-License-Identifier: Apache-2.0
// The nodes of line cards, and the transceivers that they read.
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "platform_dev/mts_dev.h"
#include "sff8472/diagnostics.h"
#include "sff8472/identification.h"
#include "support/captured_stdout.h"
#include "virtual_switch_test.h"

namespace {

std::string module_in(int slot, const std::string &kind) {
    return "[[module]]\nslot = " + std::to_string(slot) + "\nkind = '" + kind + "'\nports = 2\n";
}

std::string chassis_with(const std::string &modules) {
    return "[chassis]\nname = 'cards'\ntype = 6\nslots = 4\n" + modules;
}

class line_cards : public virtual_switch_test {
  protected:
    void write(const std::string &text) { std::ofstream(file_, std::ios::trunc) << text; }

    // The status of a query for the diagnostics of an interface.
    [[nodiscard]] uint32_t diagnostics(const std::string &name) {
        info_ = {};
        extra_ = {};
        const support::captured_stdout quiet;
        return pm_get_sfp_diag_info(client_.handle(), index_of(name), &info_, &extra_);
    }

    [[nodiscard]] answer<pm_fcot_info_t> transceivers(const char *first, const char *last) const {
        const pm_if_index_range_t range = range_of(first, last);
        uint32_t count = 0;
        pm_fcot_info_t *records = nullptr;
        answer<pm_fcot_info_t> found;
        found.status = pm_get_next_port_fcot_info_with_ddm(client_.handle(), 1, 1, &range, &count, &records, 10);
        if (records != nullptr) found.records.assign(records, records + count);
        std::free(records);
        return found;
    }

    // Waits until a query has this status.
    [[nodiscard]] bool comes_to(const std::string &name, uint32_t status) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (diagnostics(name) != status) {
            if (std::chrono::steady_clock::now() > deadline) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }

    std::string file_ = directory_.file("chassis.toml");
    pm_sfp_diag_info_t info_{};
    pm_sfp_diag_extra_t extra_{};
};

TEST_F(line_cards, answer_where_there_is_a_module) {
    write(chassis_with(module_in(1, "fc") + module_in(3, "ethernet")));
    const virtual_switch_process daemon(file_);
    EXPECT_EQ(diagnostics("fc1/1"), 0u);
    EXPECT_EQ(diagnostics("Ethernet3/2"), 0u);
    EXPECT_EQ(diagnostics("fc2/1"), static_cast<uint32_t>(EHOSTUNREACH));
    EXPECT_EQ(diagnostics("fc4/1"), static_cast<uint32_t>(EHOSTUNREACH));
    EXPECT_EQ(diagnostics("fc1/3"), PM_ERR_INVALID_RANGE);
    EXPECT_EQ(diagnostics("fc3/1"), PM_ERR_INVALID_RANGE);
}

TEST_F(line_cards, answer_for_their_own_ports_alone) {
    write(chassis_with(module_in(1, "fc") + module_in(3, "ethernet")));
    const virtual_switch_process daemon(file_);
    const auto ask = [this](uint32_t node, const char *name) {
        const uint32_t if_index = index_of(name);
        const std::vector<uint8_t> payload{static_cast<uint8_t>(if_index >> 24), static_cast<uint8_t>(if_index >> 16),
                                           static_cast<uint8_t>(if_index >> 8), static_cast<uint8_t>(if_index)};
        mts_msg_t message{};
        EXPECT_EQ(pm_ips_send_receive(client_.handle(), node, PM_SAP_SFP_DIAGNOSTICS, MTS_OPC_GET_SFP_DIAG_INFO,
                                      payload.data(), 4, &message, 10),
                  0);
        pm_sfp_diag_info_t info{};
        const support::captured_stdout quiet;
        EXPECT_EQ(pm_parse_get_sfp_info(mts_payload_get(&message), mts_payload_size(&message), &info, nullptr), 0u);
        mts_drop(client_.handle(), &message);
        return info.status;
    };
    EXPECT_EQ(ask(0x102, "fc1/1"), 0u);
    EXPECT_EQ(ask(0x302, "Ethernet3/1"), 0u);
    EXPECT_EQ(ask(0x102, "Ethernet3/1"), PM_ERR_INVALID_RANGE);
    EXPECT_EQ(ask(0x302, "fc1/1"), PM_ERR_INVALID_RANGE);
}

TEST_F(line_cards, come_and_go_with_a_reload) {
    write(chassis_with(module_in(1, "fc") + module_in(2, "fc")));
    virtual_switch_process daemon(file_);
    EXPECT_EQ(diagnostics("fc1/1"), 0u);
    EXPECT_EQ(diagnostics("fc2/1"), 0u);
    const uint64_t age = extra_.age;
    write(chassis_with(module_in(1, "fc") + module_in(3, "ethernet")));
    daemon.send(SIGHUP);
    EXPECT_TRUE(comes_to("Ethernet3/1", 0));
    EXPECT_LE(extra_.age, 10000u);
    EXPECT_EQ(diagnostics("fc2/1"), static_cast<uint32_t>(EHOSTUNREACH));
    EXPECT_EQ(diagnostics("fc1/1"), 0u);
    EXPECT_GE(extra_.age, age);
    // It comes back with other ports.
    write(chassis_with(module_in(2, "ethernet")));
    daemon.send(SIGHUP);
    EXPECT_TRUE(comes_to("Ethernet2/1", 0));
    EXPECT_EQ(diagnostics("fc2/1"), PM_ERR_INVALID_RANGE);
    for (const char *name : {"fc1/1", "Ethernet3/1"})
        EXPECT_EQ(diagnostics(name), static_cast<uint32_t>(EHOSTUNREACH)) << name;
    daemon.send(SIGTERM);
    EXPECT_EQ(daemon.wait(), 0);
    EXPECT_EQ(daemon.read_rest(child_process::standard_error), "");
}

TEST_F(line_cards, are_new_when_another_module_takes_their_slot) {
    write(chassis_with(module_in(1, "fc") + module_in(2, "fc")));
    const virtual_switch_process daemon(file_);
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    write(chassis_with(module_in(1, "fc") + module_in(2, "ethernet")));
    daemon.send(SIGHUP);
    EXPECT_TRUE(comes_to("Ethernet2/1", 0));
    const uint64_t age_of_new_module = extra_.age;
    EXPECT_EQ(diagnostics("fc1/1"), 0u);
    EXPECT_GE(extra_.age, age_of_new_module + 500);
}

TEST_F(line_cards, leave_no_descriptors_behind) {
    const std::string first = chassis_with(module_in(1, "fc") + module_in(2, "fc"));
    const std::string second = chassis_with(module_in(2, "ethernet") + module_in(3, "fc"));
    write(first);
    const virtual_switch_process daemon(file_);
    for (const char *name : {"fc1/1", "fc2/1"}) ASSERT_EQ(diagnostics(name), 0u);
    const size_t descriptors = daemon.descriptors();
    for (int i = 0; i < 40; ++i) {
        const bool is_second = i % 2 == 0;
        write(is_second ? second : first);
        daemon.send(SIGHUP);
        ASSERT_TRUE(comes_to(is_second ? "Ethernet2/1" : "fc2/1", 0)) << i;
        EXPECT_EQ(diagnostics(is_second ? "fc3/1" : "fc1/1"), 0u);
    }
    EXPECT_EQ(daemon.descriptors(), descriptors);
}

TEST_F(line_cards, stay_when_a_file_cannot_be_taken) {
    write(chassis_with(module_in(1, "fc")));
    virtual_switch_process daemon(file_);
    write(chassis_with(module_in(2, "fc") + "nonsense = 1\n"));
    daemon.send(SIGHUP);
    EXPECT_THAT(daemon.read_line(child_process::standard_error), testing::HasSubstr("not reloaded"));
    EXPECT_EQ(diagnostics("fc1/1"), 0u);
    EXPECT_EQ(diagnostics("fc2/1"), static_cast<uint32_t>(EHOSTUNREACH));
    // Here the cards are there before the database turns out to have no room.
    write(chassis_with(module_in(2, "fc") +
                       "[[interface]]\nname = 'loopback1-4000'\n[[interface]]\nname = 'if254-1-4000'\n"));
    daemon.send(SIGHUP);
    EXPECT_THAT(daemon.read_line(child_process::standard_error), testing::HasSubstr("not reloaded"));
    EXPECT_TRUE(comes_to("fc2/1", static_cast<uint32_t>(EHOSTUNREACH)));
    EXPECT_EQ(diagnostics("fc1/1"), 0u);
}

TEST_F(line_cards, read_what_the_port_services_tell) {
    const virtual_switch_process daemon(director);
    for (const char *name : {"fc1/1", "fc1/30", "fc2/25", "Ethernet4/14"}) {
        const auto found = transceivers(name, name);
        EXPECT_EQ(found.status, 0u) << name;
        ASSERT_EQ(found.records.size(), 1u) << name;
        const pm_fcot_info_t &record = found.records[0];
        EXPECT_EQ(record.flags, PM_FCOT_PRESENT | PM_FCOT_DIAGNOSTICS);
        const bool is_external =
            sff8472::is_externally_calibrated(record.serial_id[sff8472::serial_id::diagnostic_type]);
        std::array<uint8_t, sizeof record.diagnostics> page{};
        std::copy_n(record.diagnostics, page.size(), page.begin());
        const sff8472::readings readings = sff8472::read_diagnostics(page, is_external);
        ASSERT_EQ(diagnostics(name), 0u);
        EXPECT_EQ(info_.flags, is_external ? 1u : 0u) << name;
        EXPECT_EQ(info_.temperature.high_alarm, static_cast<uint32_t>(readings[0].high_alarm));
        EXPECT_EQ(info_.rx_power.low_warning, static_cast<uint32_t>(readings[4].low_warning));
        // A moment passed in between.
        EXPECT_NEAR(info_.temperature.value, readings[0].value, 8) << name;
        EXPECT_NEAR(info_.bias.value, readings[2].value, 8) << name;
        EXPECT_NEAR(info_.rx_power.value, readings[4].value, 0.01 * readings[4].value) << name;
    }
    EXPECT_EQ(diagnostics("fc1/30"), 0u);
    EXPECT_EQ(extra_.alarms, 0x0800u);
    EXPECT_EQ(extra_.warnings, 0x8800u);
}

TEST_F(line_cards, have_ports_without_transceiver_or_diagnostics) {
    const virtual_switch_process daemon(director);
    const auto cable = transceivers("Ethernet4/1", "Ethernet4/1");
    ASSERT_EQ(cable.records.size(), 1u);
    EXPECT_EQ(cable.records[0].flags, PM_FCOT_PRESENT);
    EXPECT_EQ(diagnostics("Ethernet4/1"), PM_ERR_REJECTED);
    const auto absent = transceivers("fc3/7", "fc3/8");
    ASSERT_EQ(absent.records.size(), 2u);
    EXPECT_EQ(absent.records[1].flags, 0);
    EXPECT_EQ(diagnostics("fc3/8"), PM_ERR_REJECTED);
    EXPECT_EQ(transceivers("mgmt0", "mgmt0").status, PM_ERR_REJECTED);
    EXPECT_EQ(transceivers("fc9/1", "fc9/8").status, PM_ERR_INVALID_RANGE);
    EXPECT_EQ(transceivers("fc1/1", "fc3/48").records.size(), 144u);
}

}  // namespace
