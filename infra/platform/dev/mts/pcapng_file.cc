// SPDX-License-Identifier: Apache-2.0
#include "mts/pcapng_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string_view>

#include "common/own_file.h"

namespace platform_dev {

namespace {

// The numbers of the form, all in the byte order of the host: readers tell it by the mark.
constexpr uint32_t section_block = 0x0a0d0d0a;
constexpr uint32_t interface_block = 1;
constexpr uint32_t packet_block = 6;
constexpr uint32_t byte_order_mark = 0x1a2b3c4d;
constexpr uint16_t major_version = 1;
constexpr uint16_t minor_version = 0;
constexpr uint64_t unknown_length = UINT64_MAX;
constexpr uint16_t link_type_user0 = 147;
constexpr uint32_t no_limit = 0;
constexpr uint16_t option_end = 0;
constexpr uint16_t option_packet_flags = 2;
constexpr uint16_t option_interface_name = 2;
constexpr uint16_t option_resolution = 9;
constexpr uint8_t nanoseconds = 9;  // the negative power of ten
constexpr uint16_t option_application = 4;

constexpr size_t padding_of(size_t size) { return (4 - size % 4) % 4; }

// Blocks of a few bytes under construction; whoever adds to one knows that there is room.
class block_bytes {
  public:
    template <typename number_t>
    void put(number_t number) {
        put_bytes(&number, sizeof number);
    }
    void put_bytes(const void *from, size_t size) {
        std::memcpy(&bytes_[size_], from, size);
        size_ += size;
    }
    void pad(size_t size) { size_ += padding_of(size); }

    void put_option(uint16_t code, const void *value, size_t size) {
        put(code);
        put(static_cast<uint16_t>(size));
        put_bytes(value, size);
        pad(size);
    }

    void begin(uint32_t type) {
        start_ = size_;
        put(type);
        put(uint32_t{0});
    }

    // Ends the options and the block.
    void end() {
        put(option_end);
        put(uint16_t{0});
        const auto length = static_cast<uint32_t>(size_ - start_ + sizeof(uint32_t));
        std::memcpy(&bytes_[start_ + sizeof(uint32_t)], &length, sizeof length);
        put(length);
    }

    [[nodiscard]] iovec part() { return {bytes_.data(), size_}; }

  private:
    std::array<uint8_t, 512> bytes_{};
    size_t size_ = 0;
    size_t start_ = 0;
};

// "pmctl[1234]". Names that are longer than the system's own for processes are cut.
void put_process_name(block_bytes &to) {
    std::array<char, 80> name;
    const int length =
        std::snprintf(name.data(), name.size(), "%.60s[%d]", program_invocation_short_name, static_cast<int>(getpid()));
    to.put_option(option_interface_name, name.data(), static_cast<size_t>(length));
}

// A section with one interface, which is this process.
void put_section(block_bytes &to) {
    constexpr std::string_view application = "libmts";
    to.begin(section_block);
    to.put(byte_order_mark);
    to.put(major_version);
    to.put(minor_version);
    to.put(unknown_length);
    to.put_option(option_application, application.data(), application.size());
    to.end();
    to.begin(interface_block);
    to.put(link_type_user0);
    to.put(uint16_t{0});
    to.put(no_limit);
    put_process_name(to);
    to.put_option(option_resolution, &nanoseconds, sizeof nanoseconds);
    to.end();
}

constexpr size_t packet_flags_size = 12;  // and the end of the options
constexpr size_t packet_numbers_size = 28;

uint32_t packet_length(const captured_packet &packet) {
    return static_cast<uint32_t>(packet.header.size() + packet.payload.size());
}

uint32_t block_length(const captured_packet &packet) {
    const uint32_t length = packet_length(packet);
    return static_cast<uint32_t>(packet_numbers_size + length + padding_of(length) + packet_flags_size +
                                 sizeof(uint32_t));
}

// What stands in front of the payload.
void put_packet_start(block_bytes &to, const captured_packet &packet) {
    to.put(packet_block);
    to.put(block_length(packet));
    to.put(uint32_t{0});  // the section's only interface
    to.put(static_cast<uint32_t>(packet.nanoseconds >> 32));
    to.put(static_cast<uint32_t>(packet.nanoseconds));
    to.put(packet_length(packet));  // captured, and of the packet
    to.put(packet_length(packet));
    to.put_bytes(packet.header.data(), packet.header.size());
}

void put_packet_end(block_bytes &to, const captured_packet &packet) {
    const auto direction = static_cast<uint32_t>(packet.direction);
    to.pad(packet_length(packet));
    to.put_option(option_packet_flags, &direction, sizeof direction);
    to.put(option_end);
    to.put(uint16_t{0});
    to.put(block_length(packet));
}

int set_lock(int fd, short type) {
    struct flock whole_file {};
    whole_file.l_type = type;
    whole_file.l_whence = SEEK_SET;
    return fcntl(fd, F_SETLK, &whole_file) == 0 ? 0 : errno;
}

// Takes as long as others write, but not much more than a second: a process that was stopped is not waited for.
int take_write_lock(int fd) {
    constexpr timespec while_another_writes{0, 100'000};
    constexpr int most_tries = 10'000;
    for (int tries = 0; tries < most_tries; ++tries) {
        const int error = set_lock(fd, F_WRLCK);
        if (error != EAGAIN && error != EACCES) return error;
        nanosleep(&while_another_writes, nullptr);
    }
    return ETIMEDOUT;
}

// Keeps other processes away from the file while it lasts, threads of this one not.
class file_lock {
  public:
    explicit file_lock(int fd) : fd_(fd), error_(take_write_lock(fd)) {}
    file_lock(const file_lock &) = delete;
    file_lock &operator=(const file_lock &) = delete;
    ~file_lock() { set_lock(fd_, F_UNLCK); }

    [[nodiscard]] int error() const { return error_; }

  private:
    int fd_;
    int error_;
};

// Whether a file is empty or begins as one of this form does, in either byte order.
bool is_capture(int fd) {
    struct {
        uint32_t type;
        uint32_t length;
        uint32_t mark;
    } start{};
    const ssize_t size = pread(fd, &start, sizeof start, 0);
    if (size == 0) return true;
    return size == sizeof start && start.type == section_block &&
           (start.mark == byte_order_mark || start.mark == __builtin_bswap32(byte_order_mark));
}

}  // namespace

int pcapng_file::open(const char *path) {
    unique_fd file = open_own_file(path);
    struct stat status {};
    if (!file || fstat(file.get(), &status) != 0) return errno;
    if (!is_capture(file.get())) return EBADMSG;
    if (fcntl(file.get(), F_SETFL, O_APPEND) != 0) return errno;
    fd_ = file.release();
    device_ = status.st_dev;
    inode_ = status.st_ino;
    return 0;
}

int pcapng_file::append(const captured_packet &packet) {
    if (!is_still_open()) return EBADF;
    const file_lock lock(fd_);
    struct stat status {};
    if (lock.error() != 0) return lock.error();
    if (fstat(fd_, &status) != 0) return errno;
    block_bytes start;
    block_bytes end;
    if (status.st_size != end_) put_section(start);
    put_packet_start(start, packet);
    put_packet_end(end, packet);
    const std::array parts{start.part(), iovec{const_cast<uint8_t *>(packet.payload.data()), packet.payload.size()},
                           end.part()};
    const size_t size = parts[0].iov_len + parts[1].iov_len + parts[2].iov_len;
    const ssize_t written = writev(fd_, parts.data(), parts.size());
    if (written < 0) return errno;
    if (static_cast<size_t>(written) == size) {
        end_ = status.st_size + written;
        return 0;
    }
    return ftruncate(fd_, status.st_size) != 0 ? errno : ENOSPC;
}

// Programs that become daemons close all descriptors, and open others that get the same numbers.
bool pcapng_file::is_still_open() const {
    struct stat status {};
    return fstat(fd_, &status) == 0 && status.st_dev == device_ && status.st_ino == inode_;
}

}  // namespace platform_dev
