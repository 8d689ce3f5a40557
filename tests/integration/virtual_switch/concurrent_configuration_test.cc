// SPDX-License-Identifier: Apache-2.0
// Many clients that change the same interfaces: what is left equals some order of their requests.
#include <algorithm>
#include <atomic>
#include <random>
#include <set>
#include <thread>

#include "configuration_client.h"

namespace {

constexpr int client_count = 16;
constexpr int turns = 40;
constexpr uint8_t port_count = 4;  // fc1/1 to fc1/4

std::string port_name(int port) { return "fc1/" + std::to_string(port); }

// One request of a client: its ports, and what it writes there.
struct request {
    int client;
    int turn;
    int first;
    int last;
    uint8_t attribute;

    [[nodiscard]] std::string text() const { return std::to_string(client) + ":" + std::to_string(turn); }
    // The same as a number that is good for a speed.
    [[nodiscard]] uint32_t number() const { return static_cast<uint32_t>(1000 + client * turns + turn); }
    [[nodiscard]] bool covers(int port) const { return first <= port && port <= last; }
};

std::vector<request> requests_of(int client, uint32_t seed) {
    std::minstd_rand random(seed + static_cast<uint32_t>(client));
    std::vector<request> requests;
    for (int turn = 0; turn < turns; ++turn) {
        const int a = static_cast<int>(random() / 7 % port_count) + 1;
        const int b = static_cast<int>(random() / 7 % port_count) + 1;
        const uint8_t attribute = random() / 7 % 2 == 0 ? PM_ATTR_DESCRIPTION : PM_ATTR_SPEED;
        requests.push_back({client, turn, std::min(a, b), std::max(a, b), attribute});
    }
    return requests;
}

void send(const configuration_client &client, const request &sent) {
    const auto value =
        sent.attribute == PM_ATTR_SPEED ? word_value(PM_ATTR_SPEED, sent.number()) : description(sent.text());
    const auto range = range_of(port_name(sent.first).c_str(), port_name(sent.last).c_str());
    const set_outcome outcome = client.set({range}, value);
    EXPECT_EQ(outcome.status, 0u);
    EXPECT_EQ(outcome.results.size(), static_cast<size_t>(sent.last - sent.first + 1));
}

// For each port and attribute the request that wrote what is left.
using last_writers = std::map<std::pair<int, uint8_t>, size_t>;

last_writers find_writers(const std::vector<request> &all, const std::vector<pm_port_info_t> &left) {
    last_writers writers;
    for (int port = 1; port <= port_count; ++port) {
        const pm_port_info_t &record = left[static_cast<size_t>(port) - 1];
        for (size_t i = 0; i < all.size(); ++i) {
            const bool wrote = all[i].attribute == PM_ATTR_SPEED ? record.admin_speed == all[i].number()
                                                                 : record.description == all[i].text();
            if (wrote && all[i].covers(port)) writers[{port, all[i].attribute}] = i;
        }
    }
    return writers;
}

// Whether the requests have an order that keeps each client's own and ends with the writers. Each request comes after
// those that it must follow; there is such an order when that goes on until none is left.
bool has_an_order(const std::vector<request> &all, const last_writers &writers) {
    std::vector<std::set<size_t>> earlier(all.size());
    for (size_t i = 0; i < all.size(); ++i) {
        if (all[i].turn > 0) earlier[i].insert(i - 1);
        for (const auto &[written, writer] : writers) {
            const auto &[port, attribute] = written;
            if (writer != i && all[i].attribute == attribute && all[i].covers(port)) earlier[writer].insert(i);
        }
    }
    std::set<size_t> left;
    for (size_t i = 0; i < all.size(); ++i) left.insert(i);
    for (bool moved = true; moved;) {
        const size_t before = left.size();
        std::erase_if(left, [&](size_t i) {
            return std::none_of(earlier[i].begin(), earlier[i].end(), [&](size_t e) { return left.contains(e); });
        });
        moved = left.size() != before;
    }
    return left.empty();
}

class concurrent_configuration : public virtual_switch_test {
  protected:
    // Runs `work` on a thread a client, each with a handle of its own.
    static void run_clients(const auto &work) {
        std::vector<std::thread> threads;
        for (int client = 0; client < client_count; ++client) {
            threads.emplace_back([client, &work] { work(client, configuration_client()); });
        }
        for (std::thread &thread : threads) thread.join();
    }

    virtual_switch_process daemon_{every_kind};
    configuration_client client_;
};

TEST_F(concurrent_configuration, leaves_what_some_order_of_the_requests_leaves) {
    const uint32_t seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    run_clients([&](int client, const configuration_client &own) {
        for (const request &next : requests_of(client, seed)) send(own, next);
    });
    std::vector<request> all;
    for (int client = 0; client < client_count; ++client) {
        for (const request &made : requests_of(client, seed)) all.push_back(made);
    }
    const auto left = client_.range("fc1/1", "fc1/4").records;
    ASSERT_EQ(left.size(), port_count);
    const last_writers writers = find_writers(all, left);
    EXPECT_EQ(writers.size(), 2u * port_count) << "every port and attribute was written";
    EXPECT_TRUE(has_an_order(all, writers));
}

// The check of the test above sees a state that no order leaves.
TEST(order_of_requests, is_not_found_where_there_is_none) {
    const std::vector<request> all{{0, 0, 1, 2, PM_ATTR_SPEED}, {1, 0, 1, 2, PM_ATTR_SPEED}};
    EXPECT_TRUE(has_an_order(all, {{{1, PM_ATTR_SPEED}, 1}, {{2, PM_ATTR_SPEED}, 1}}));
    EXPECT_FALSE(has_an_order(all, {{{1, PM_ATTR_SPEED}, 0}, {{2, PM_ATTR_SPEED}, 1}}));
    const std::vector<request> own{{0, 0, 1, 1, PM_ATTR_SPEED}, {0, 1, 1, 1, PM_ATTR_SPEED}};
    EXPECT_FALSE(has_an_order(own, {{{1, PM_ATTR_SPEED}, 0}}));
}

TEST_F(concurrent_configuration, never_shows_half_of_a_request) {
    std::atomic<bool> done = false;
    std::thread reader([&done] {
        const client own;
        while (!done) {
            const auto seen = own.range("fc1/1", "fc1/4").records;
            ASSERT_EQ(seen.size(), port_count);
            for (const pm_port_info_t &record : seen) EXPECT_STREQ(record.description, seen[0].description);
        }
    });
    run_clients([](int client, const configuration_client &own) {
        for (int turn = 0; turn < turns; ++turn) send(own, {client, turn, 1, port_count, PM_ATTR_DESCRIPTION});
    });
    done = true;
    reader.join();
}

TEST_F(concurrent_configuration, keeps_the_sub_interfaces_of_every_client) {
    run_clients([](int client, const configuration_client &own) {
        const std::string name = "Ethernet2/1." + std::to_string(100 + client);
        for (int turn = 0; turn < turns; ++turn) {
            EXPECT_EQ(own.config_sub_interfaces(true, {range_of(name.c_str(), name.c_str())}), 0u);
            if (turn == turns - 1 && client % 2 == 0) break;
            EXPECT_EQ(own.config_sub_interfaces(false, {range_of(name.c_str(), name.c_str())}), 0u);
        }
    });
    const auto left = client_.range("Ethernet2/1.100", "Ethernet2/1.115").records;
    ASSERT_EQ(left.size(), client_count / 2u);
    for (size_t i = 0; i < left.size(); ++i) {
        EXPECT_EQ(name_of(left[i].if_index), "Ethernet2/1." + std::to_string(100 + 2 * i));
    }
}

}  // namespace
