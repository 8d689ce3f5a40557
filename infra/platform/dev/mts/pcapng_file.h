// SPDX-License-Identifier: Apache-2.0
// pcapng_file.h: a capture file that Wireshark reads, and that several processes may append to at once.
//
// A packet belongs to the section in front of it. So each process begins a section of its own, and again whenever
// another one wrote since.
#ifndef PLATFORM_DEV_MTS_PCAPNG_FILE_H
#define PLATFORM_DEV_MTS_PCAPNG_FILE_H

#include <cstdint>
#include <span>

namespace platform_dev {

enum class packet_direction : uint32_t { inbound = 1, outbound = 2 };

struct captured_packet {
    uint64_t nanoseconds;  // since 1970
    packet_direction direction;
    std::span<const uint8_t> header;   // a few bytes in front of the payload
    std::span<const uint8_t> payload;  // as much as makes the packet max_captured_packet at most
};

// What readers of such files take.
inline constexpr size_t max_captured_packet = 262144;

// One thread at a time. Functions return 0 or a system error number. Never closed: it lasts as long as the process.
class pcapng_file {
  public:
    // Opens a file of our own, or makes it with mode 0600. EPERM and ELOOP: as open_own_file; EBADMSG: it holds
    // something else.
    [[nodiscard]] int open(const char *path);

    // Appends a packet with one write. After a failure the file is as it was. ETIMEDOUT: another process keeps it
    // locked; EBADF: the program closed its descriptor.
    [[nodiscard]] int append(const captured_packet &packet);

    // The next packet begins a section, as this is another process now.
    void begin_section() { end_ = nothing_written; }

  private:
    static constexpr int64_t nothing_written = -1;

    [[nodiscard]] bool is_still_open() const;

    int fd_ = -1;
    uint64_t device_ = 0;  // with the inode it tells the file from another one that has its descriptor
    uint64_t inode_ = 0;
    int64_t end_ = nothing_written;  // of the file, behind what this process wrote last
};

}  // namespace platform_dev

#endif
