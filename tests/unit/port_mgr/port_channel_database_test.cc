// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "guarded_bytes.h"
#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr if_index_t channel = 0x04123456;
constexpr size_t database_record_size = 144;
constexpr size_t map_record_size = 172;

using calls = std::vector<std::string>;

const calls subscribed{"dlopen(libfsrv_client.so, RTLD_LAZY)", "dlsym(libfsrv_client.so, fsrv_sdb_subscriber_init)",
                       "dlerror()", "fsrv_sdb_subscriber_init(7, clish, 262, 0 0 0 0)"};

calls operator+(calls first, const calls &second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// ---- the port-channel map

class port_channel_map : public support::library_test, public testing::WithParamInterface<uint32_t> {
  protected:
    const guarded_bytes record{bytes(map_record_size, 0x77)};
};

TEST_P(port_channel_map, is_asked_about_the_channel) {
    EXPECT_EQ(get_port_channel_members(GetParam(), channel, record.data()), 0);
    EXPECT_THAT(support::call_log::take(), ElementsAre("pcmap_get_port_channel(0x04123456)"));
    EXPECT_EQ(support::hex(record.data(), 4), "56341204");
}

TEST_P(port_channel_map, fills_the_callers_record) {
    interfaces.map_count = 0x01020304;
    interfaces.map_member = 0x05060708;
    EXPECT_EQ(get_port_channel_members(GetParam(), channel, record.data()), 0);
    EXPECT_EQ(support::hex(record.data() + 8, 4), "04030201");
    EXPECT_EQ(support::hex(record.data() + 32, 4), "08070605");
}

TEST_P(port_channel_map, fails_with_minus_1_and_without_a_word) {
    for (const int32_t result : {1, -1, 22, -5}) {
        interfaces.map_result = result;
        EXPECT_EQ(get_port_channel_members(GetParam(), channel, record.data()), -1) << result;
    }
}

INSTANTIATE_TEST_SUITE_P(chassis, port_channel_map, testing::Values(0U, 1U, 9U, 12U, 266U, 0xffffffffU));

// ---- the port-channel database: both functions take the same road to it

struct database_case {
    const char *name;
    const char *symbol;
    const char *call;
    int32_t (*function)(void *record);
};

void PrintTo(const database_case &value, std::ostream *to) { *to << value.name; }

class port_channel_database : public support::library_test, public testing::WithParamInterface<database_case> {
  protected:
    int32_t look_up() { return GetParam().function(record.data()); }

    // The function's symbol is looked up; it is followed by these calls.
    [[nodiscard]] calls up_to_symbol(const calls &more) const {
        return subscribed +
               calls{"dlopen(libpcm_sdb.so, RTLD_NOW)", std::string("dlsym(libpcm_sdb.so, ") + GetParam().symbol + ")",
                     "dlerror()"} +
               more;
    }

    const guarded_bytes record{bytes(database_record_size, 0x77)};
    const calls both_closed{"dlclose(libpcm_sdb.so)", "dlclose(libfsrv_client.so)"};
};

TEST_P(port_channel_database, is_asked_after_subscribing_and_closed_in_reverse_order) {
    EXPECT_EQ(look_up(), 0);
    EXPECT_EQ(support::call_log::take(), up_to_symbol(calls{GetParam().call} + both_closed));
}

TEST_P(port_channel_database, is_loaded_anew_each_time) {
    EXPECT_EQ(look_up(), 0);
    const calls first = support::call_log::take();
    EXPECT_EQ(look_up(), 0);
    EXPECT_EQ(support::call_log::take(), first);
}

TEST_P(port_channel_database, fails_when_its_answer_is_not_0) {
    for (const int32_t result : {1, -1, 22}) {
        loader.info_result = loader.port_result = result;
        support::call_log::take();
        EXPECT_EQ(look_up(), -1) << result;
        EXPECT_EQ(support::call_log::take(), up_to_symbol(calls{GetParam().call} + both_closed));
    }
}

TEST_P(port_channel_database, fails_without_the_subscriber_library) {
    loader.missing_libraries = {"libfsrv_client.so"};
    EXPECT_EQ(look_up(), -1);
    EXPECT_EQ(output.take(), "Unable to open libfsrv_client.so!\n");
    EXPECT_THAT(support::call_log::take(), ElementsAre("dlopen(libfsrv_client.so, RTLD_LAZY)"));
}

TEST_P(port_channel_database, leaves_the_subscriber_library_open_without_the_database_library) {
    loader.missing_libraries = {"libpcm_sdb.so"};
    EXPECT_EQ(look_up(), -1);
    EXPECT_EQ(output.take(), "Unable to open libpcm_sdb.so!\n");
    EXPECT_EQ(support::call_log::take(), subscribed + calls{"dlopen(libpcm_sdb.so, RTLD_NOW)"});
    EXPECT_THAT(loader.open_libraries, ElementsAre("libfsrv_client.so"));
    loader.open_libraries.clear();
}

TEST_P(port_channel_database, fails_when_subscribing_fails) {
    for (const int32_t result : {1, -1}) {
        loader.subscribe_result = result;
        support::call_log::take();
        EXPECT_EQ(look_up(), -1) << result;
        EXPECT_EQ(support::call_log::take(), subscribed + calls{"dlclose(libfsrv_client.so)"});
    }
}

// A symbol that is null, with or without the loader's error text, or that comes with one.
struct symbol_case {
    bool is_null;
    const char *error;
    const char *shown;
};
const symbol_case bad_symbols[] = {{true, "undefined symbol", "undefined symbol"},
                                   {true, nullptr, "(null)"},
                                   {false, "out of memory", "out of memory"}};

TEST_P(port_channel_database, fails_without_the_subscribing_function) {
    for (const symbol_case &bad : bad_symbols) {
        loader.look_ups["fsrv_sdb_subscriber_init"] = {bad.is_null, bad.error};
        support::call_log::take();
        EXPECT_EQ(look_up(), -1);
        EXPECT_EQ(output.take(), std::string("Error loadingfsrv_sdb_subscriber_init (") + bad.shown + ")\n");
        EXPECT_THAT(support::call_log::take(), ElementsAre("dlopen(libfsrv_client.so, RTLD_LAZY)",
                                                           "dlsym(libfsrv_client.so, fsrv_sdb_subscriber_init)",
                                                           "dlerror()", "dlclose(libfsrv_client.so)"));
    }
}

TEST_P(port_channel_database, fails_without_its_function_and_names_the_member_query_whichever_it_is) {
    for (const symbol_case &bad : bad_symbols) {
        loader.look_ups[GetParam().symbol] = {bad.is_null, bad.error};
        support::call_log::take();
        EXPECT_EQ(look_up(), -1);
        EXPECT_EQ(output.take(), std::string("Error loading pcm_get_pc_info (") + bad.shown + ")\n");
        EXPECT_EQ(support::call_log::take(), up_to_symbol(both_closed));
    }
}

INSTANTIATE_TEST_SUITE_P(
    functions, port_channel_database,
    testing::Values(database_case{"members_on_chassis_10", "pcm_get_pc_info", "pcm_get_pc_info(0x04123456)",
                                  [](void *record) { return get_port_channel_members(10, channel, record); }},
                    database_case{"members_on_chassis_11", "pcm_get_pc_info", "pcm_get_pc_info(0x04123456)",
                                  [](void *record) { return get_port_channel_members(11, channel, record); }},
                    database_case{"channel_of_a_port", "pcm_get_pc_for_port",
                                  "pcm_get_pc_for_port(0x1020304, 0xfffffffe)",
                                  [](void *) { return get_port_channel_info(0x01020304, 0xfffffffe); }}),
    [](const auto &each) { return std::string(each.param.name); });

class port_channel_members : public support::library_test {
  protected:
    const guarded_bytes record{bytes(database_record_size, 0x77)};
};

TEST_F(port_channel_members, of_the_database_fill_the_callers_record) {
    loader.member_count = 0x01020304;
    loader.member = 0x05060708;
    EXPECT_EQ(get_port_channel_members(10, channel, record.data()), 0);
    EXPECT_EQ(support::hex(record.data(), 10), "77777777777756341204");
    EXPECT_EQ(support::hex(record.data() + 18, 4), "04030201");
    EXPECT_EQ(support::hex(record.data() + 26, 4), "08070605");
}

TEST_F(port_channel_members, are_not_asked_for_a_channel_of_a_port) {
    interfaces.chassis_type = 1;
    EXPECT_EQ(get_port_channel_info(1, 2), 0);
    const calls log = support::call_log::take();
    EXPECT_TRUE(std::ranges::none_of(log, [](const std::string &call) { return call.starts_with("pdb_"); }));
    EXPECT_TRUE(std::ranges::none_of(log, [](const std::string &call) { return call.starts_with("pcmap_"); }));
}

}  // namespace
