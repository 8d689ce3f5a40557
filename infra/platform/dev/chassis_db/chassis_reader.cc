// SPDX-License-Identifier: Apache-2.0
#include "chassis_db/chassis_reader.h"

#include <algorithm>
#include <mutex>
#include <shared_mutex>
#include <span>

#include "chassis_db/chassis_mapping.h"
#include "chassis_db/process_lock.h"
#include "chassis_db/sequence_lock.h"

namespace platform_dev {
namespace {

// Look-ups share the mapping; only who replaces it excludes them. Neither is destroyed when the process ends, because
// other threads may still be looking things up.
union process_mapping {
    struct state {
        process_lock mutex;
        chassis_mapping mapping;
    } shared;

    constexpr process_mapping() : shared() {}
    ~process_mapping() {}
};

constinit process_mapping process;

// A shared object that is unloaded, which some are after each look-up, leaves no mapping and no descriptor behind.
[[gnu::destructor]] void close_mapping() {
    const std::lock_guard lock(process.shared.mutex);
    process.shared.mapping.close();
}

// Calls `read` with the content, as read_sequenced does; nothing when nothing is published.
template <typename Read>
auto read_image(const chassis_image &image, Read read) -> decltype(read(image.content)) {
    using result = decltype(read(image.content));
    return read_sequenced(image.sequence, [&]() -> result {
        if (load_word(image.content.published) == 0) return std::nullopt;
        return read(image.content);
    });
}

template <typename Read>
auto read_content(Read read) -> decltype(read(std::declval<const chassis_content &>())) {
    auto &[mutex, mapping] = process.shared;
    {
        const std::shared_lock lock(mutex);
        if (mapping.is_live()) return read_image(mapping.image(), read);
    }
    const std::lock_guard lock(mutex);
    if (!mapping.is_live() && !mapping.open()) return std::nullopt;
    return read_image(mapping.image(), read);
}

// The entries in use of a table; a count is never believed beyond the table's end.
template <typename T, size_t capacity>
std::span<const T> entries(const T (&table)[capacity], const uint32_t &count) {
    return {table, std::min<size_t>(load_word(count), capacity)};
}

// The first entry whose key has this value, or null.
template <typename T>
const T *find_entry(std::span<const T> table, uint32_t T::*key, uint32_t value) {
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const T &entry) { return load_word(entry.*key) == value; });
    return found == table.end() ? nullptr : &*found;
}

member_list load_members(const port_channel_image &channel) {
    member_list list{};
    for (const uint32_t &member : entries(channel.members, channel.member_count))
        list.members[list.count++] = load_word(member);
    return list;
}

}  // namespace

std::optional<chassis_summary> find_chassis() {
    return read_content([](const chassis_content &content) -> std::optional<chassis_summary> {
        return chassis_summary{load_word(content.chassis_type), static_cast<uint8_t>(load_word(content.slot_count))};
    });
}

std::optional<module_entry> find_module(uint8_t slot) {
    return read_content([slot](const chassis_content &content) -> std::optional<module_entry> {
        const auto *entry = find_entry(entries(content.modules, content.module_count), &module_image::slot, slot);
        if (entry == nullptr) return std::nullopt;
        return module_entry{slot, static_cast<uint16_t>(load_word(entry->card_type))};
    });
}

std::optional<member_list> find_port_channel(if_index_t channel) {
    return read_content([channel](const chassis_content &content) -> std::optional<member_list> {
        const auto *entry = find_entry(entries(content.port_channels, content.port_channel_count),
                                       &port_channel_image::if_index, channel);
        if (entry == nullptr) return std::nullopt;
        return load_members(*entry);
    });
}

std::optional<index_map_entry> find_index_map_entry(if_index_t index) {
    return read_content([index](const chassis_content &content) -> std::optional<index_map_entry> {
        const auto table = entries(content.index_map, content.index_map_count);
        const auto entry =
            std::ranges::lower_bound(table, index, {}, [](const auto &each) { return load_word(each.if_index); });
        if (entry == table.end() || load_word(entry->if_index) != index) return std::nullopt;
        return index_map_entry{index, load_word(entry->node), static_cast<uint8_t>(load_word(entry->slot)),
                               static_cast<uint8_t>(load_word(entry->port_base))};
    });
}

}  // namespace platform_dev
