// SPDX-License-Identifier: Apache-2.0
// Sixteen threads, a handle each, that make every kind of call at once, while the switch reads its chassis again and
// publishes it. What a call returns does not depend on the others.
#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "exchange_calls.h"
#include "integration/virtual_switch/virtual_switch_test.h"
#include "platform/if_index.h"
#include "support/captured_stdout.h"

namespace {

constexpr uint32_t thread_count = 16;
constexpr int rounds = 2;
constexpr size_t calls_between_reloads = 40;

// The bytes of a record as a text, to compare and to show.
template <typename Record>
std::string bytes_of(const Record &record) {
    return {reinterpret_cast<const char *>(&record), sizeof record};
}

std::string services() {
    std::string saps;
    for (const char *name : {"fc1/1", "Ethernet4/5", "mgmt0", "port-channel1", "port-channel5", "port-channel5.7"}) {
        const if_index_t index = index_of(name);
        saps += std::to_string(pm_get_mts_sap(index)) + ' ' + std::to_string(pm_port_channel_type(index)) + ' ' +
                std::to_string(pm_is_bundle_port_type(index)) + '\n';
    }
    return saps;
}

// The chassis type chooses the database.
template <uint32_t chassis_type>
std::string members() {
    std::array<uint8_t, 172> record{};
    const int32_t result = get_port_channel_members(chassis_type, index_of("port-channel5"), record.data());
    return std::to_string(result) + bytes_of(record);
}

std::string membership() { return std::to_string(get_port_channel_info(index_of("fc1/1"), index_of("port-channel5"))); }

std::string ranges() {
    uint32_t count = 0;
    if_index_t member = 0;
    const uint32_t counted = pm_get_num_ports_in_if_index_range(index_of("fc1/3"), index_of("fc1/20"), &count);
    const uint32_t found = pm_get_if_index_in_range(index_of("fc1/3"), index_of("fc1/20"), &member, 7);
    return std::to_string(counted) + ' ' + std::to_string(count) + ' ' + std::to_string(found) + ' ' + name_of(member);
}

std::string kernel_interface() {
    pm_net_dev_stats_t stats{};
    return std::to_string(pm_get_proc_net_dev_stats("lo", &stats)) +
           std::to_string(pm_get_proc_net_dev_stats("no such one", &stats));
}

std::string written_texts() {
    std::array<char, 80> text{};
    return std::string(port_speed_string(16000, text.data())) + port_bb_credit_string(1 << 30 | 5, text.data()) +
           port_rxbufsize_string(2112, text.data()) + port_promiscuous_mode_string(1, text.data());
}

// Of values that are known: the texts of others are in a buffer that all share.
std::string constant_texts() {
    return std::string(port_mode_string(4)) + port_service_state_string(1) + port_beacon_mode_string(2) +
           port_state_string(2) + port_state_reason_string(5, 1) + pm_cli_dump_port_speed(4000);
}

std::string port_record() {
    std::array<uint8_t, 189> wire{};
    for (size_t i = 0; i < wire.size(); ++i) wire[i] = static_cast<uint8_t>(i);
    pm_port_info_t record{};
    const uint32_t status = pm_parse_port_info(wire.data(), nullptr, &record);
    return std::to_string(status) + bytes_of(record);
}

std::string port_records() {
    std::array<uint8_t, 8 + 2 * 189> payload{};
    payload[7] = 2;
    uint32_t count = 0;
    pm_port_info_t *records = nullptr;
    const uint32_t status =
        pm_parse_get_port_info_res_payload(payload.data(), static_cast<uint32_t>(payload.size()), &count, &records);
    const std::string result = std::to_string(status) + std::to_string(count) + bytes_of(records[1]);
    std::free(records);
    return result;
}

std::string transceiver_records() {
    std::array<uint8_t, 8 + 267> payload{};
    payload[7] = 1;
    uint32_t count = 0;
    pm_fcot_info_t *records = nullptr;
    const uint32_t status = pm_parse_cmi_get_fcot_info_res_payload(payload.data(), &count, &records);
    const std::string result = std::to_string(status) + std::to_string(count) + bytes_of(*records);
    std::free(records);
    return result;
}

std::string set_results() {
    const std::array<uint8_t, 16> payload{0, 0, 0, 0, 0, 0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 8};
    uint32_t count = 0;
    pm_set_port_result_t *entries = nullptr;
    const uint32_t status = pm_parse_set_port_info_res_payload(payload.data(), &count, &entries);
    const std::string result = std::to_string(status) + std::to_string(count) + bytes_of(*entries);
    std::free(entries);
    return result;
}

std::string diagnostics() {
    std::array<uint8_t, 176> payload{0, 27, 0, 172};
    pm_sfp_diag_info_t info{};
    pm_sfp_diag_extra_t extra{};
    const uint32_t status = pm_parse_get_sfp_info(payload.data(), static_cast<uint32_t>(payload.size()), &info, &extra);
    return std::to_string(status) + bytes_of(info);
}

std::string attribute() {
    pm_cfg_tlv_t element{};
    const uint32_t mtu = 9216;
    const uint32_t encoded = pm_encode_tlv(&element, PM_ATTR_MTU, sizeof mtu, &mtu);
    uint8_t type = 0;
    uint8_t length = 0;
    uint32_t value = 0;
    const uint32_t decoded = pm_decode_tlv(&element, &type, &length, &value);
    return std::to_string(encoded) + std::to_string(decoded) + ' ' + std::to_string(type) + ' ' + std::to_string(value);
}

std::string vsans() {
    const std::array<uint32_t, 3> words{4, 4, 0xa5a5a5a5};  // the numbers from 4 on, four bytes of bits
    vsan_bitset_t set{};
    pm_create_vsan_bitset_from_pm_flexi_bitset(reinterpret_cast<const flexi_bitset_t *>(words.data()), &set);
    return bytes_of(set);
}

std::string iterator() {
    mts_msg_t message{};
    pm_iterator_t *made = nullptr;
    const uint32_t created = pm_iterator_create(&made, &message);
    const std::string content = bytes_of(*made);
    return std::to_string(created) + content + std::to_string(pm_iterator_destroy(&made));
}

std::string transceiver_kind() {
    pm_x2_ident_t ident{};
    ident.dwdm_channel = 12;
    return std::to_string(pm_is_transceiver_supported(index_of("fc1/1"))) + std::to_string(pm_is_x2_dwdm(&ident)) +
           std::to_string(pm_get_x2_fcot_type(&ident)) + std::to_string(pm_is_beacon_mode_supported(index_of("mgmt0")));
}

constexpr std::array local_calls{
    services,       members<6>,  members<10>,     membership,          ranges,      kernel_interface, written_texts,
    constant_texts, port_record, port_records,    transceiver_records, set_results, diagnostics,      attribute,
    vsans,          iterator,    transceiver_kind};

using local_results = std::array<std::string, local_calls.size()>;

local_results call_all_locally() {
    local_results results;
    for (size_t i = 0; i < local_calls.size(); ++i) results[i] = local_calls[i]();
    return results;
}

// Makes every call, in an order of the thread's own, and counts them. Keeps what the local ones returned last.
void call_everything(uint32_t thread, local_results &results, std::atomic<size_t> &made) {
    std::minstd_rand random(thread);
    std::array<size_t, local_calls.size()> order{};
    for (size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::vector<exchange_call> calls(exchange_calls().begin(), exchange_calls().end());
    for (int round = 0; round < rounds; ++round) {
        const client own;
        std::ranges::shuffle(calls, random);
        std::ranges::shuffle(order, random);
        for (size_t i = 0; i < calls.size(); ++i) {
            EXPECT_EQ(calls[i].run(own.handle()), 0u) << calls[i].name << ", thread " << thread;
            made.fetch_add(1, std::memory_order_relaxed);  // orders nothing, or it would hide races
            const size_t local = order[i % order.size()];
            results[local] = local_calls[local]();
        }
    }
}

class threads : public virtual_switch_test {
  protected:
    threads() {
        std::filesystem::copy(SOURCE_FOLDER "/examples/chassis", folder_, std::filesystem::copy_options::recursive);
    }

    // Gives the switch a chassis with or without one more interface, and has it read.
    void reload(virtual_switch_process &daemon, bool extended) const {
        const std::string next = chassis_ + ".next";
        std::filesystem::copy_file(director, next, std::filesystem::copy_options::overwrite_existing);
        if (extended) std::ofstream(next, std::ios::app) << "\n[[interface]]\nname = 'loopback900'\n";
        std::filesystem::rename(next, chassis_);
        daemon.send(SIGHUP);
    }

    std::string folder_ = directory_.file("chassis");
    std::string chassis_ = folder_ + "/director.toml";
};

// The library loads and unloads these for each look-up, under the loader's lock, which the thread sanitizer does not
// see: it takes what one thread left and another loads again at the same place for raced for. Loaded here, they stay.
void keep_loaded_under_the_thread_sanitizer() {
#ifdef __SANITIZE_THREAD__
    for (const char *const library : {"libpcm_sdb.so", "libfsrv_client.so"})
        ASSERT_NE(dlopen(library, RTLD_NOW), nullptr) << dlerror();
#endif
}

TEST_F(threads, with_a_handle_each_do_not_disturb_each_other) {
    keep_loaded_under_the_thread_sanitizer();
    const support::captured_stdout output;
    virtual_switch_process daemon(chassis_);
    std::vector<local_results> results(thread_count);
    std::atomic<size_t> made = 0;
    std::vector<std::thread> all;
    for (uint32_t i = 0; i < thread_count; ++i) {
        all.emplace_back([&, i] { call_everything(i, results[i], made); });
    }
    // Time after time, but not so often that the switch does nothing else.
    const size_t to_make = thread_count * rounds * exchange_calls().size();
    bool extended = false;
    for (size_t next = calls_between_reloads; next < to_make; next += calls_between_reloads) {
        while (made < next) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        extended = !extended;
        reload(daemon, extended);
    }
    for (std::thread &thread : all) thread.join();
    // Only now, so that the threads were the first to make these calls.
    EXPECT_THAT(results, testing::Each(call_all_locally()));
    daemon.send(SIGTERM);
    EXPECT_EQ(daemon.wait(), 0);
    EXPECT_EQ(daemon.read_rest(child_process::standard_error), "");
}

}  // namespace
