// SPDX-License-Identifier: Apache-2.0
#include "mts/frame.h"

#include <fcntl.h>
#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "platform_dev/mts_dev.h"

namespace platform_dev {

namespace {

// The last byte counts the versions of the header.
constexpr uint32_t frame_magic = 0x4d545302;

// Without these a peer could change the content, or its size, while it is read.
constexpr int required_seals = F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE;

union control_buffer {
    cmsghdr header;
    char bytes[CMSG_SPACE(sizeof(int))];
};

int send_packet(int socket, const msghdr &packet) {
    return sendmsg(socket, &packet, MSG_DONTWAIT | MSG_NOSIGNAL) < 0 ? errno : 0;
}

// Up to here, gathering a frame in one buffer costs less than having the kernel gather it.
constexpr size_t max_gathered_payload = 1024;

int send_gathered(int socket, const frame_header &header, const void *payload) {
    char frame[max_gathered_payload + sizeof header];
    if (header.payload_size > 0) std::memcpy(frame, payload, header.payload_size);
    std::memcpy(frame + header.payload_size, &header, sizeof header);
    return send(socket, frame, header.payload_size + sizeof header, MSG_DONTWAIT | MSG_NOSIGNAL) < 0 ? errno : 0;
}

int send_in_packet(int socket, frame_header &header, const void *payload) {
    header.place = payload_place::in_packet;
    if (header.payload_size <= max_gathered_payload) return send_gathered(socket, header, payload);
    iovec parts[] = {{const_cast<void *>(payload), header.payload_size}, {&header, sizeof header}};
    msghdr packet{};
    packet.msg_iov = parts;
    packet.msg_iovlen = 2;
    return send_packet(socket, packet);
}

int write_all(int fd, const char *bytes, size_t size) {
    while (size > 0) {
        const ssize_t written = write(fd, bytes, size);
        if (written < 0 && errno != EINTR) return errno;
        if (written > 0) {
            bytes += written;
            size -= static_cast<size_t>(written);
        }
    }
    return 0;
}

int make_memory_file(const void *payload, size_t size, unique_fd &memory_file) {
    memory_file = unique_fd(memfd_create("mts_payload", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!memory_file) return errno;
    if (const int error = write_all(memory_file.get(), static_cast<const char *>(payload), size)) return error;
    return fcntl(memory_file.get(), F_ADD_SEALS, required_seals | F_SEAL_SEAL) < 0 ? errno : 0;
}

int send_descriptor(int socket, const unique_fd &descriptor) {
    char byte = 0;
    iovec part = {&byte, sizeof byte};
    control_buffer control{};
    msghdr packet{};
    packet.msg_iov = &part;
    packet.msg_iovlen = 1;
    packet.msg_control = &control;
    packet.msg_controllen = sizeof control;
    cmsghdr *rights = CMSG_FIRSTHDR(&packet);
    rights->cmsg_level = SOL_SOCKET;
    rights->cmsg_type = SCM_RIGHTS;
    rights->cmsg_len = CMSG_LEN(sizeof(int));
    const int fd = descriptor.get();
    std::memcpy(CMSG_DATA(rights), &fd, sizeof fd);
    return send_packet(socket, packet);
}

// Whether two packets of next to no size can be sent now. The buffer takes a packet as long as it is not full.
bool has_room_for_two(int socket) {
    constexpr int cost_of_a_small_packet = 2048;
    int unread = 0;
    int room = 0;
    socklen_t length = sizeof room;
    return ioctl(socket, SIOCOUTQ, &unread) == 0 && getsockopt(socket, SOL_SOCKET, SO_SNDBUF, &room, &length) == 0 &&
           unread + cost_of_a_small_packet <= room;
}

// A frame whose second packet fails cannot be taken back: the connection ends with it.
int send_in_memory_file(int socket, frame_header &header, const void *payload) {
    unique_fd memory_file;
    if (const int error = make_memory_file(payload, header.payload_size, memory_file)) return error;
    if (!has_room_for_two(socket)) return EAGAIN;
    header.place = payload_place::in_memory_file;
    if (send(socket, &header, sizeof header, MSG_DONTWAIT | MSG_NOSIGNAL) < 0) return errno;
    const int error = send_descriptor(socket, memory_file);
    if (error != 0) shutdown(socket, SHUT_RDWR);
    return error;
}

unique_fd take_descriptor(msghdr &packet) {
    const cmsghdr *rights = CMSG_FIRSTHDR(&packet);
    if (!rights || rights->cmsg_level != SOL_SOCKET || rights->cmsg_type != SCM_RIGHTS) return {};
    int fd = -1;
    std::memcpy(&fd, CMSG_DATA(rights), sizeof fd);
    return unique_fd(fd);
}

bool is_frame(const frame_header &header, size_t payload_in_packet) {
    if (header.magic != frame_magic || header.kind < frame_kind::message_request ||
        header.kind > frame_kind::cmi_answer)
        return false;
    if (header.place == payload_place::in_packet) return payload_in_packet == header.payload_size;
    return header.place == payload_place::in_memory_file && payload_in_packet == 0 &&
           header.payload_size <= MTS_MAX_PAYLOAD;
}

// Calls `receive`, and once more after the error that comes first when the peer closed without reading all: what it
// had sent before can still be received.
ssize_t receive_past_reset(auto receive) {
    const ssize_t received = receive();
    return received < 0 && errno == ECONNRESET ? receive() : received;
}

int receive_header(int socket, int flags, frame_header &header, void *buffer) {
    constexpr size_t room = max_packet_payload + sizeof header;
    // With MSG_TRUNC the length of a packet is told that has more.
    const ssize_t received = receive_past_reset([&] { return recv(socket, buffer, room, flags | MSG_TRUNC); });
    if (received < 0) return errno;
    if (received == 0) return ECONNRESET;
    const auto size = static_cast<size_t>(received);
    if (size < sizeof header || size > room) return EPROTO;
    std::memcpy(&header, static_cast<char *>(buffer) + size - sizeof header, sizeof header);
    return is_frame(header, size - sizeof header) ? 0 : EPROTO;
}

int receive_descriptor(int socket, unique_fd &descriptor) {
    char byte = 0;
    iovec part = {&byte, sizeof byte};
    control_buffer control;
    msghdr packet{};
    packet.msg_iov = &part;
    packet.msg_iovlen = 1;
    packet.msg_control = &control;
    packet.msg_controllen = CMSG_LEN(sizeof(int));  // without the padding, where a second descriptor would fit
    const ssize_t received =
        receive_past_reset([&] { return recvmsg(socket, &packet, MSG_DONTWAIT | MSG_CMSG_CLOEXEC); });
    if (received < 0) return errno;
    descriptor = take_descriptor(packet);
    if (received == 0) return ECONNRESET;
    return descriptor && (packet.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) == 0 ? 0 : EPROTO;
}

}  // namespace

int send_frame(int socket, frame_header header, const void *payload) {
    header.magic = frame_magic;
    if (header.payload_size <= max_packet_payload) {
        const int error = send_in_packet(socket, header, payload);
        if (error != EMSGSIZE) return error;
    }
    return send_in_memory_file(socket, header, payload);
}

int frame_receiver::receive(int socket, int flags, frame_header &header, void *buffer, unique_fd &memory_file) {
    if (!announced_) {
        const int error = receive_header(socket, flags, header, buffer);
        if (error != 0 || header.place == payload_place::in_packet) return error;
        announced_ = header;
    }
    if (const int error = receive_descriptor(socket, memory_file)) return error;
    header = *announced_;
    announced_.reset();
    return 0;
}

int read_memory_file(const unique_fd &memory_file, void *buffer, size_t size) {
    const int seals = fcntl(memory_file.get(), F_GET_SEALS);
    struct stat status {};
    if (seals < 0 || (seals & required_seals) != required_seals || fstat(memory_file.get(), &status) != 0)
        return EPROTO;
    if (status.st_size < 0 || static_cast<uintmax_t>(status.st_size) != size) return EPROTO;
    char *bytes = static_cast<char *>(buffer);
    for (size_t done = 0; done < size;) {
        const ssize_t got = pread(memory_file.get(), bytes + done, size - done, static_cast<off_t>(done));
        if (got <= 0 && !(got < 0 && errno == EINTR)) return EPROTO;
        done += got > 0 ? static_cast<size_t>(got) : 0;
    }
    return 0;
}

}  // namespace platform_dev
