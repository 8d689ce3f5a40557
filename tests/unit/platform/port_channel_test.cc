// SPDX-License-Identifier: Apache-2.0
#include "platform/port_channel.h"

#include <dlfcn.h>

#include <cstring>
#include <vector>

#include "platform_dev/chassis_db.h"
#include "runtime_dir_fixture.h"

namespace {

constexpr if_index_t two_members = 0x04001000;
constexpr if_index_t no_member = 0x04002000;
constexpr if_index_t sixteen_members = 0x04003000;
constexpr if_index_t unknown = 0x04004000;

// A library loaded the way its callers do, for as long as the object lives.
class loaded_library {
  public:
    explicit loaded_library(const char *name) : handle_(dlopen(name, RTLD_NOW)) {
        EXPECT_NE(handle_, nullptr) << dlerror();
    }
    ~loaded_library() { dlclose(handle_); }
    loaded_library(const loaded_library &) = delete;
    loaded_library &operator=(const loaded_library &) = delete;

    template <typename Function>
    Function *symbol(const char *name) const {
        return reinterpret_cast<Function *>(dlsym(handle_, name));
    }

  private:
    void *handle_;
};

class PortChannel : public runtime_dir_test {
  protected:
    void publish() {
        publisher_ = platform_dev::chassis_publisher::open();
        platform_dev::chassis content;
        std::vector<if_index_t> sixteen;
        for (uint32_t i = 0; i < 16; ++i) sixteen.push_back(0x21222300 + i);
        content.port_channels = {{two_members, {0x11121314, 0x15161718}}, {no_member, {}}, {sixteen_members, sixteen}};
        ASSERT_TRUE(publisher_->publish(content));
    }

    std::unique_ptr<platform_dev::chassis_publisher> publisher_;
};

// Where a record keeps its words.
struct record_offsets {
    size_t size, channel, count, first;
};

// Asks for a channel with a record of exactly its size; what the answer does not hold must stay as it was.
void expect_members(int32_t (*lookup)(void *), const record_offsets &at, if_index_t channel,
                    const std::vector<if_index_t> &members) {
    std::vector<uint8_t> record(at.size, 0x5a);
    memcpy(record.data() + at.channel, &channel, sizeof channel);
    std::vector<uint8_t> expected = record;
    const auto count = static_cast<uint32_t>(members.size());
    memcpy(expected.data() + at.count, &count, sizeof count);
    for (size_t i = 0; i < members.size(); ++i)
        memcpy(expected.data() + at.first + 4 * i, &members[i], sizeof members[i]);
    EXPECT_EQ(lookup(record.data()), 0);
    EXPECT_EQ(record, expected);
}

void expect_every_channel(int32_t (*lookup)(void *), const record_offsets &at) {
    expect_members(lookup, at, two_members, {0x11121314, 0x15161718});
    expect_members(lookup, at, no_member, {});
    std::vector<if_index_t> sixteen;
    for (uint32_t i = 0; i < 16; ++i) sixteen.push_back(0x21222300 + i);
    expect_members(lookup, at, sixteen_members, sixteen);
}

void expect_unknown(int32_t (*lookup)(void *), const record_offsets &at, if_index_t channel) {
    std::vector<uint8_t> record(at.size, 0x5a);
    memcpy(record.data() + at.channel, &channel, sizeof channel);
    const std::vector<uint8_t> before = record;
    EXPECT_NE(lookup(record.data()), 0);
    EXPECT_EQ(record, before);
}

constexpr record_offsets pcmap_record = {172, 0, 8, 32};
constexpr record_offsets pcm_record = {144, 6, 18, 26};

TEST_F(PortChannel, PcmapListsMembers) {
    publish();
    expect_every_channel(pcmap_get_port_channel, pcmap_record);
    expect_unknown(pcmap_get_port_channel, pcmap_record, unknown);
}

TEST_F(PortChannel, PcmapFailsWithoutADatabase) { expect_unknown(pcmap_get_port_channel, pcmap_record, two_members); }

TEST_F(PortChannel, LoadedLibraryListsMembers) {
    const loaded_library library("libpcm_sdb.so");
    auto *lookup = library.symbol<int32_t(void *)>("pcm_get_pc_info");
    ASSERT_NE(lookup, nullptr);
    expect_unknown(lookup, pcm_record, two_members);
    publish();
    expect_every_channel(lookup, pcm_record);
    expect_unknown(lookup, pcm_record, unknown);
}

TEST_F(PortChannel, LoadedLibraryTellsWhetherAPortIsAMember) {
    const loaded_library library("libpcm_sdb.so");
    auto *is_member = library.symbol<decltype(pcm_get_pc_for_port)>("pcm_get_pc_for_port");
    ASSERT_NE(is_member, nullptr);
    EXPECT_NE(is_member(0x11121314, two_members), 0);
    publish();
    EXPECT_EQ(is_member(0x11121314, two_members), 0);
    EXPECT_EQ(is_member(0x15161718, two_members), 0);
    EXPECT_NE(is_member(0x11121314, sixteen_members), 0);
    EXPECT_EQ(is_member(0x2122230f, sixteen_members), 0);
    EXPECT_NE(is_member(0x11121314, unknown), 0);
    EXPECT_NE(is_member(0, two_members), 0);
    EXPECT_NE(is_member(0, no_member), 0);
}

struct subscriber {
    uint32_t form = 7;
    const char *name = "clish";
    uint32_t words[5] = {262, 0, 0, 0, 0};
};
static_assert(sizeof(void *) == 8 || sizeof(subscriber) == 28);

TEST_F(PortChannel, SubscriberIsCheckedAndNeedsADatabase) {
    const loaded_library library("libfsrv_client.so");
    auto *init = library.symbol<decltype(fsrv_sdb_subscriber_init)>("fsrv_sdb_subscriber_init");
    ASSERT_NE(init, nullptr);
    subscriber good;
    EXPECT_NE(init(&good), 0);
    publish();
    EXPECT_EQ(init(&good), 0);
    subscriber wrong_form{.form = 8};
    EXPECT_NE(init(&wrong_form), 0);
    subscriber nameless{.name = nullptr};
    EXPECT_NE(init(&nameless), 0);
}

size_t open_descriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<size_t>(std::distance(begin(all), end(all)));
}

TEST_F(PortChannel, UnloadedLibraryLeavesNothingBehind) {
    publish();
    const size_t before = open_descriptors();
    for (int i = 0; i < 100; ++i) {
        const loaded_library library("libpcm_sdb.so");
        ASSERT_EQ(library.symbol<decltype(pcm_get_pc_for_port)>("pcm_get_pc_for_port")(0x11121314, two_members), 0);
        EXPECT_EQ(open_descriptors(), before + 1);
    }
    EXPECT_EQ(open_descriptors(), before);
}

}  // namespace
