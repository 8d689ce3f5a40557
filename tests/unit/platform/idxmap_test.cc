// SPDX-License-Identifier: Apache-2.0
#include "platform/idxmap.h"

#include <cerrno>
#include <cstring>

#include "platform_dev/chassis_db.h"
#include "platform_dev/if_index_dev.h"
#include "runtime_dir_fixture.h"

namespace {

constexpr if_index_t ethernet = 0x02003000;
constexpr if_index_t fcip = 0x0a000003;

class Idxmap : public runtime_dir_test {
  protected:
    void publish() {
        publisher_ = platform_dev::chassis_publisher::open();
        platform_dev::chassis content;
        content.index_map = {{fcip, 0x31323334, 33, 34}, {ethernet, 0x21222324, 22, 23}};
        ASSERT_TRUE(publisher_->publish(content));
    }

    std::unique_ptr<platform_dev::chassis_publisher> publisher_;
};

void expect_absent(if_index_t index) {
    uint32_t node = 0x5a5a5a5a;
    EXPECT_EQ(idxmap_node_by_if_index(index, &node), ENOENT);
    EXPECT_EQ(node, 0x5a5a5a5au);
    idxmap_entry_t entry;
    memset(&entry, 0x5a, sizeof entry);
    const idxmap_entry_t before = entry;
    EXPECT_EQ(idxmap_entry_by_if_index(index, &entry), ENOENT);
    EXPECT_EQ(memcmp(&entry, &before, sizeof entry), 0);
}

void expect_entry(if_index_t index, uint32_t expected_node, uint8_t slot, uint8_t port_base) {
    uint32_t node = 0;
    EXPECT_EQ(idxmap_node_by_if_index(index, &node), 0);
    EXPECT_EQ(node, expected_node);
    idxmap_entry_t expected{};
    expected.byte[8] = slot;
    expected.byte[9] = port_base;
    idxmap_entry_t entry;
    memset(&entry, 0x5a, sizeof entry);
    EXPECT_EQ(idxmap_entry_by_if_index(index, &entry), 0);
    EXPECT_EQ(memcmp(&entry, &expected, sizeof entry), 0);
}

TEST_F(Idxmap, FailsAndStoresNothingWithoutADatabase) { expect_absent(ethernet); }

TEST_F(Idxmap, TellsWhereAnInterfaceLives) {
    publish();
    expect_entry(ethernet, 0x21222324, 22, 23);
    expect_entry(fcip, 0x31323334, 33, 34);
}

TEST_F(Idxmap, SubInterfaceLivesWhereItsMainInterfaceDoes) {
    publish();
    expect_entry(ethernet | 1, 0x21222324, 22, 23);
    expect_entry(ethernet | 4095, 0x21222324, 22, 23);
}

TEST_F(Idxmap, UnknownInterfacesAreAbsent) {
    publish();
    for (const if_index_t index : {0u, ethernet - 0x1000, ethernet + 0x1000, fcip + 1, 0xffffffffu})
        expect_absent(index);
}

}  // namespace
