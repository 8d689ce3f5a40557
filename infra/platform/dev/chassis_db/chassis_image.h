// SPDX-License-Identifier: Apache-2.0
// chassis_image.h: the chassis database as it lies in its file: 32-bit words in host order, the same to processes of
// either width.
#ifndef PLATFORM_DEV_CHASSIS_DB_CHASSIS_IMAGE_H
#define PLATFORM_DEV_CHASSIS_DB_CHASSIS_IMAGE_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace platform_dev {

inline constexpr char chassis_file_name[] = "chassis-db";

// Whose lock the publisher holds. Those who can read the database cannot open it, or they could hold its place.
inline constexpr char chassis_lock_name[] = "chassis-db.lock";

inline constexpr uint32_t chassis_magic = 0x43484442;  // "CHDB"
inline constexpr uint32_t chassis_version = 1;

inline constexpr uint32_t max_modules = 64;
inline constexpr uint32_t max_port_channels = 256;
inline constexpr uint32_t max_members = 16;
inline constexpr uint32_t max_index_map_entries = 4096;

// What the file is; a file with another header is replaced, never rewritten.
struct chassis_header {
    uint32_t magic;
    uint32_t version;
    uint32_t size;  // bytes of the whole file
};

struct module_image {
    uint32_t slot;
    uint32_t card_type;
};

struct port_channel_image {
    uint32_t if_index;
    uint32_t member_count;
    uint32_t members[max_members];
};

struct index_map_image {
    uint32_t if_index;
    uint32_t node;
    uint32_t slot;
    uint32_t port_base;
};

// What an update replaces. The index map is sorted by if_index.
struct chassis_content {
    uint32_t published;  // 0: nothing below counts
    uint32_t chassis_type;
    uint32_t slot_count;
    uint32_t module_count;
    uint32_t port_channel_count;
    uint32_t index_map_count;
    module_image modules[max_modules];
    port_channel_image port_channels[max_port_channels];
    index_map_image index_map[max_index_map_entries];
};

struct chassis_image {
    chassis_header header;
    uint32_t sequence;  // odd while an update is under way
    chassis_content content;
};

inline constexpr chassis_header current_chassis_header = {chassis_magic, chassis_version, sizeof(chassis_image)};

static_assert(std::is_trivially_copyable_v<chassis_image> && alignof(chassis_image) == 4);
static_assert(offsetof(chassis_image, sequence) == 12);
static_assert(offsetof(chassis_image, content) == 16);
static_assert(offsetof(chassis_image, content.modules) == 40);
static_assert(offsetof(chassis_image, content.port_channels) == 552);
static_assert(offsetof(chassis_image, content.index_map) == 18984);
static_assert(sizeof(chassis_image) == 84520);

}  // namespace platform_dev

#endif
