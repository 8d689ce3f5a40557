// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "chassis_db/chassis_mapping.h"
#include "chassis_db/sequence_lock.h"
#include "common/own_file.h"
#include "platform_dev/chassis_db.h"

namespace platform_dev {
namespace {

// An empty file is one that was made just now.
bool is_current(int fd) {
    chassis_header header{};
    struct stat status {};
    if (fstat(fd, &status) != 0) return false;
    if (status.st_size == 0) return true;
    return status.st_size == sizeof(chassis_image) && pread(fd, &header, sizeof header, 0) == sizeof header &&
           (memcmp(&header, &current_chassis_header, sizeof header) == 0 || header.magic == 0);
}

// The blocks are taken at once: writing to a hole of a full file system would end the process.
bool allocate(int fd) {
    errno = posix_fallocate(fd, 0, sizeof(chassis_image));
    return errno == 0;
}

// Opens the file at `path`, under the lock. Readers may have a file of another format mapped, so it is never cut or
// rewritten: they see it go.
unique_fd take_file(const runtime_directory &directory, const char *path) {
    unique_fd fd = open_own_file(path);
    if (fd && !is_current(fd.get())) {
        unlink(path);
        fd = open_own_file(path);
    }
    if (!fd || !allocate(fd.get()) || !admit_users(directory, path, S_IRGRP)) return {};
    return fd;
}

template <typename To, size_t capacity, typename From, typename Convert>
bool fill_table(To (&table)[capacity], uint32_t &count, const std::vector<From> &entries, Convert convert) {
    if (entries.size() > capacity) return false;
    std::ranges::transform(entries, table, convert);
    count = static_cast<uint32_t>(entries.size());
    return true;
}

port_channel_image encode_port_channel(const port_channel_entry &entry) {
    port_channel_image image{};
    image.if_index = entry.if_index;
    image.member_count = static_cast<uint32_t>(std::min<size_t>(entry.members.size(), max_members));
    std::copy_n(entry.members.begin(), image.member_count, image.members);
    return image;
}

// Returns false when a table is too long.
bool encode(const chassis &from, chassis_content &to) {
    to.published = 1;
    to.chassis_type = from.chassis_type;
    to.slot_count = from.slot_count;
    const bool fits = fill_table(to.modules, to.module_count, from.modules,
                                 [](const module_entry &entry) {
                                     return module_image{entry.slot, entry.card_type};
                                 }) &&
                      fill_table(to.port_channels, to.port_channel_count, from.port_channels, encode_port_channel) &&
                      fill_table(to.index_map, to.index_map_count, from.index_map, [](const index_map_entry &entry) {
                          return index_map_image{entry.if_index, entry.node, entry.slot, entry.port_base};
                      });
    if (fits)
        std::stable_sort(to.index_map, to.index_map + to.index_map_count,
                         [](const auto &a, const auto &b) { return a.if_index < b.if_index; });
    return fits;
}

}  // namespace

// The database file, mapped, and the lock on it.
class chassis_publisher::database_file {
  public:
    database_file(unique_fd lock, image_ptr image) : lock_(std::move(lock)), image_(std::move(image)) {}

    void write(const chassis_content &content) {
        write_sequenced(image_->sequence, words(image_->content), words(content), sizeof content / sizeof(uint32_t));
    }

    void clear() { write(*std::make_unique<chassis_content>()); }

    // Readers map the file only once its header is there.
    void write_header() {
        shared_word(image_->header.size).store(current_chassis_header.size, std::memory_order_relaxed);
        shared_word(image_->header.version).store(current_chassis_header.version, std::memory_order_relaxed);
        shared_word(image_->header.magic).store(current_chassis_header.magic, std::memory_order_release);
    }

  private:
    static uint32_t *words(chassis_content &content) { return reinterpret_cast<uint32_t *>(&content); }
    static const uint32_t *words(const chassis_content &content) {
        return reinterpret_cast<const uint32_t *>(&content);
    }

    unique_fd lock_;
    image_ptr image_;
};

std::unique_ptr<chassis_publisher> chassis_publisher::open() {
    runtime_directory directory;
    path_buffer lock_path;
    path_buffer path;
    if (!own_runtime_dir(directory) || !runtime_file(directory, chassis_lock_name, lock_path) ||
        !runtime_file(directory, chassis_file_name, path))
        return nullptr;
    unique_fd lock = take_lock(lock_path.data());
    if (!lock) return nullptr;
    const unique_fd fd = take_file(directory, path.data());
    if (!fd) return nullptr;
    image_ptr image = map_image(fd.get(), PROT_READ | PROT_WRITE);
    if (image == nullptr) return nullptr;
    auto taken = std::make_unique<database_file>(std::move(lock), std::move(image));
    taken->clear();
    taken->write_header();
    return std::unique_ptr<chassis_publisher>(new chassis_publisher(std::move(taken)));
}

chassis_publisher::chassis_publisher(std::unique_ptr<database_file> file) : file_(std::move(file)) {}

chassis_publisher::~chassis_publisher() { file_->clear(); }

bool chassis_publisher::follow_sharing() {
    runtime_directory directory;
    path_buffer path;
    return own_runtime_dir(directory) && runtime_file(directory, chassis_file_name, path) &&
           admit_users(directory, path.data(), S_IRGRP);
}

bool chassis_publisher::publish(const chassis &content) {
    const auto encoded = std::make_unique<chassis_content>();
    if (!encode(content, *encoded)) {
        errno = ENOSPC;
        return false;
    }
    file_->write(*encoded);
    return true;
}

}  // namespace platform_dev
