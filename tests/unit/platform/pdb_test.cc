// SPDX-License-Identifier: Apache-2.0
#include "platform/pdb.h"

#include <cstring>

#include "platform_dev/chassis_db.h"
#include "runtime_dir_fixture.h"

namespace {

class Pdb : public runtime_dir_test {
  protected:
    void publish() {
        publisher_ = platform_dev::chassis_publisher::open();
        platform_dev::chassis content;
        content.chassis_type = 0x11121314;
        content.slot_count = 13;
        content.modules = {{0, 41}, {6, 0x2122}};
        ASSERT_TRUE(publisher_->publish(content));
    }

    std::unique_ptr<platform_dev::chassis_publisher> publisher_;
};

template <typename Record>
bool is_untouched(const Record &record) {
    for (const uint8_t byte : record.byte)
        if (byte != 0x5a) return false;
    return true;
}

TEST_F(Pdb, FailsAndStoresNothingWithoutADatabase) {
    uint32_t type = 0x5a5a5a5a;
    EXPECT_NE(pdb_get_chassis_type(&type), 0);
    EXPECT_EQ(type, 0x5a5a5a5au);
    pdb_mod_info_t module;
    memset(&module, 0x5a, sizeof module);
    EXPECT_NE(pdb_get_mod_info(0, &module, 2), 0);
    EXPECT_TRUE(is_untouched(module));
    platform_info_t platform;
    memset(&platform, 0x5a, sizeof platform);
    EXPECT_LT(get_platform_info(&platform), 0);
    EXPECT_TRUE(is_untouched(platform));
}

TEST_F(Pdb, TellsChassisTypeAndSlotCount) {
    publish();
    uint32_t type = 0;
    EXPECT_EQ(pdb_get_chassis_type(&type), 0);
    EXPECT_EQ(type, 0x11121314u);
    platform_info_t platform;
    memset(&platform, 0x5a, sizeof platform);
    EXPECT_GE(get_platform_info(&platform), 0);
    EXPECT_EQ(platform.byte[2], 13);
    EXPECT_EQ(platform.byte[3], 0);
}

TEST_F(Pdb, TellsTheModuleInASlot) {
    publish();
    pdb_mod_info_t module;
    memset(&module, 0x5a, sizeof module);
    EXPECT_EQ(pdb_get_mod_info(6, &module, 2), 0);
    uint16_t card_type = 0;
    memcpy(&card_type, module.byte + 2, sizeof card_type);
    EXPECT_EQ(module.byte[0], 6);
    EXPECT_EQ(card_type, 0x2122);
    EXPECT_EQ(module.byte[63], 0);
}

TEST_F(Pdb, FailsForAnEmptySlot) {
    publish();
    pdb_mod_info_t module;
    memset(&module, 0x5a, sizeof module);
    for (const uint8_t slot : std::initializer_list<uint8_t>{1, 5, 7, 255})
        EXPECT_NE(pdb_get_mod_info(slot, &module, 2), 0);
    EXPECT_TRUE(is_untouched(module));
}

}  // namespace
