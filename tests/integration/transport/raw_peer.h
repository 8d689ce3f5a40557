// SPDX-License-Identifier: Apache-2.0
// raw_peer.h: the other side of the transport played by hand, to send what the transport itself never would.
#ifndef TESTS_TRANSPORT_RAW_PEER_H
#define TESTS_TRANSPORT_RAW_PEER_H

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace transport_test {

// The header of a frame as it lies on the wire.
struct raw_header {
    uint32_t magic = 0x4d545302;
    uint16_t kind = 1;   // 1 request, 2 answer, 3 CMI request, 4 CMI answer
    uint16_t place = 0;  // 0 in the packet, 1 in a memory file, whose descriptor comes in the next packet
    uint32_t opcode = 1000;
    uint32_t token = 1;
    uint32_t message_id = 1;
    uint32_t payload_size = 0;
    uint32_t cmi_word = 0;
};

inline std::string bytes_of(const raw_header &header, const std::string &payload = {}) {
    return payload + std::string(reinterpret_cast<const char *>(&header), sizeof header);
}

// The header of a packet that has one.
inline raw_header header_of(const std::string &packet) {
    raw_header header;
    EXPECT_GE(packet.size(), sizeof header);
    packet.copy(reinterpret_cast<char *>(&header), sizeof header, packet.size() - sizeof header);
    return header;
}

inline sockaddr_un raw_address(const std::string &path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

class raw_socket {
  public:
    explicit raw_socket(int fd) : fd_(fd) { EXPECT_GE(fd, 0); }
    raw_socket(raw_socket &&other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    ~raw_socket() {
        if (fd_ >= 0) close(fd_);
    }
    int get() const { return fd_; }

    void send(const std::string &packet, const std::vector<int> &descriptors = {}) const {
        EXPECT_TRUE(is_sent(packet, descriptors));
    }

    // Sends the packet, unless the other side has closed. Returns whether it went out.
    bool is_sent(const std::string &packet, const std::vector<int> &descriptors) const {
        iovec part = {const_cast<char *>(packet.data()), packet.size()};
        std::vector<char> control(CMSG_SPACE(sizeof(int) * descriptors.size()));
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        if (!descriptors.empty()) {
            message.msg_control = control.data();
            message.msg_controllen = control.size();
            cmsghdr *rights = CMSG_FIRSTHDR(&message);
            rights->cmsg_level = SOL_SOCKET;
            rights->cmsg_type = SCM_RIGHTS;
            rights->cmsg_len = CMSG_LEN(sizeof(int) * descriptors.size());
            std::memcpy(CMSG_DATA(rights), descriptors.data(), sizeof(int) * descriptors.size());
        }
        return sendmsg(fd_, &message, MSG_NOSIGNAL) == static_cast<ssize_t>(packet.size());
    }

    // The next packet; empty when the other side closed.
    std::string receive() const {
        std::string packet(size_t{256} * 1024, '\0');
        const ssize_t size = recv(fd_, packet.data(), packet.size(), 0);
        packet.resize(size > 0 ? static_cast<size_t>(size) : 0);
        return packet;
    }

    // The descriptor that comes with the next packet; -1 when none does.
    int receive_descriptor() const {
        char byte = 0;
        iovec part = {&byte, sizeof byte};
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))];
        msghdr packet{};
        packet.msg_iov = &part;
        packet.msg_iovlen = 1;
        packet.msg_control = control;
        packet.msg_controllen = sizeof control;
        EXPECT_EQ(recvmsg(fd_, &packet, MSG_CMSG_CLOEXEC), 1);
        int descriptor = -1;
        if (const cmsghdr *const rights = CMSG_FIRSTHDR(&packet); rights != nullptr && rights->cmsg_type == SCM_RIGHTS)
            std::memcpy(&descriptor, CMSG_DATA(rights), sizeof descriptor);
        return descriptor;
    }

  private:
    int fd_;
};

// The packet that carries the descriptor of a memory file, which another announced.
inline constexpr const char *descriptor_packet = "x";

inline void send_in_memory_file(const raw_socket &peer, raw_header header, int file) {
    header.place = 1;
    peer.send(bytes_of(header));
    peer.send(descriptor_packet, {file});
}

// Plays a client.
inline raw_socket raw_connect(const std::string &path) {
    raw_socket client(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    const sockaddr_un address = raw_address(path);
    EXPECT_EQ(connect(client.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    return client;
}

// Plays a service.
class raw_service {
  public:
    explicit raw_service(const std::string &path) : listener_(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0)) {
        const sockaddr_un address = raw_address(path);
        EXPECT_EQ(bind(listener_.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        EXPECT_EQ(listen(listener_.get(), 8), 0);
    }
    int get() const { return listener_.get(); }
    raw_socket accept() const { return raw_socket(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC)); }

  private:
    raw_socket listener_;
};

// A memory file of `size` bytes with these seals.
class raw_memory_file {
  public:
    raw_memory_file(off_t size, int seals) : fd_(memfd_create("raw", MFD_CLOEXEC | MFD_ALLOW_SEALING)) {
        EXPECT_EQ(ftruncate(fd_, size), 0);
        EXPECT_EQ(fcntl(fd_, F_ADD_SEALS, seals), 0);
    }
    raw_memory_file(const raw_memory_file &) = delete;
    raw_memory_file &operator=(const raw_memory_file &) = delete;
    ~raw_memory_file() { close(fd_); }
    int get() const { return fd_; }

  private:
    int fd_;
};

inline constexpr int all_seals = F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE;

// What a default send buffer takes. Peers receive no more.
inline constexpr uint32_t largest_packet = 212992 - 32;

// A frame that no peer may accept.
struct hostile_frame {
    const char *name;
    std::string (*packet)(raw_header header);
    off_t file_size = -1;  // of the memory file whose descriptor is in the next packet; -1: there is no such packet
    int seals = all_seals;
    int copies = 1;  // how many descriptors of the file are there
    const char *second_packet = descriptor_packet;
};

inline const std::vector<hostile_frame> hostile_frames = {
    {"one_byte", [](raw_header) -> std::string { return "x"; }},
    {"truncated_header", [](raw_header h) { return bytes_of(h).substr(0, 27); }},
    {"wrong_magic",
     [](raw_header h) {
         h.magic ^= 1u << 31;
         return bytes_of(h);
     }},
    {"other_version",
     [](raw_header h) {
         ++h.magic;
         return bytes_of(h);
     }},
    {"kind_zero",
     [](raw_header h) {
         h.kind = 0;
         return bytes_of(h);
     }},
    {"kind_unknown",
     [](raw_header h) {
         h.kind = 5;
         return bytes_of(h);
     }},
    {"kind_of_the_other_side",
     [](raw_header h) {
         h.kind = static_cast<uint16_t>(h.kind % 2 + 1);
         return bytes_of(h);
     }},
    {"place_unknown",
     [](raw_header h) {
         h.place = 2;
         return bytes_of(h);
     }},
    {"size_larger_than_packet",
     [](raw_header h) {
         h.payload_size = 5;
         return bytes_of(h, "1234");
     }},
    {"size_smaller_than_packet",
     [](raw_header h) {
         h.payload_size = 3;
         return bytes_of(h, "1234");
     }},
    {"size_all_ones",
     [](raw_header h) {
         h.payload_size = 0xffffffff;
         return bytes_of(h, "1234");
     }},
    {"frame_and_one_byte",
     [](raw_header h) {
         h.payload_size = largest_packet - sizeof h;
         return bytes_of(h, std::string(h.payload_size, 'x')) + "x";
     }},
    {"memory_file_missing",
     [](raw_header h) {
         h.place = 1;
         h.payload_size = 4096;
         return bytes_of(h);
     },
     4096, all_seals, 0},
    {"memory_file_and_payload",
     [](raw_header h) {
         h.place = 1;
         h.payload_size = 4;
         return bytes_of(h, "1234");
     },
     4},
    {"memory_file_unsealed",
     [](raw_header h) {
         h.place = 1;
         h.payload_size = 4096;
         return bytes_of(h);
     },
     4096, 0},
    {"memory_file_half_sealed",
     [](raw_header h) {
         h.place = 1;
         h.payload_size = 4096;
         return bytes_of(h);
     },
     4096, F_SEAL_GROW | F_SEAL_WRITE},
    {"memory_file_short",
     [](raw_header h) {
         h.place = 1;
         h.payload_size = 4096;
         return bytes_of(h);
     },
     4095},
    {"memory_file_long",
     [](raw_header h) {
         h.place = 1;
         h.payload_size = 4096;
         return bytes_of(h);
     },
     4097},
    {"memory_file_over_the_limit",
     [](raw_header h) {
         h.place = 1;
         h.payload_size = 16 * 1024 * 1024 + 1;
         return bytes_of(h);
     },
     16 * 1024 * 1024 + 1},
    {"two_memory_files",
     [](raw_header h) {
         h.place = 1;
         h.payload_size = 4096;
         return bytes_of(h);
     },
     4096, all_seals, 2},
    {"memory_file_in_a_longer_packet",
     [](raw_header h) {
         h.place = 1;
         h.payload_size = 4096;
         return bytes_of(h);
     },
     4096, all_seals, 1, "xx"},
};

// The peer may hang up at the first packet.
inline void send_hostile(const raw_socket &peer, const hostile_frame &frame, const raw_header &header) {
    constexpr int room = 2 * largest_packet;
    EXPECT_EQ(setsockopt(peer.get(), SOL_SOCKET, SO_SNDBUF, &room, sizeof room), 0);
    peer.send(frame.packet(header));
    if (frame.file_size < 0) return;
    const raw_memory_file file(frame.file_size, frame.seals);
    peer.is_sent(frame.second_packet, std::vector<int>(static_cast<size_t>(frame.copies), file.get()));
}

inline std::string name_of(const testing::TestParamInfo<hostile_frame> &info) { return info.param.name; }

inline void PrintTo(const hostile_frame &frame, std::ostream *out) { *out << frame.name; }

}  // namespace transport_test

#endif
