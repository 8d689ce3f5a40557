// SPDX-License-Identifier: Apache-2.0
#include "mts/frame.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "platform_dev/mts_dev.h"

namespace platform_dev {

namespace {

// The last byte counts the versions of the header.
constexpr uint32_t frame_magic = 0x4d545301;

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
    char frame[sizeof header + max_gathered_payload];
    std::memcpy(frame, &header, sizeof header);
    if (header.payload_size > 0) std::memcpy(frame + sizeof header, payload, header.payload_size);
    return send(socket, frame, sizeof header + header.payload_size, MSG_DONTWAIT | MSG_NOSIGNAL) < 0 ? errno : 0;
}

int send_in_packet(int socket, frame_header &header, const void *payload) {
    header.place = payload_place::in_packet;
    if (header.payload_size <= max_gathered_payload) return send_gathered(socket, header, payload);
    iovec parts[] = {{&header, sizeof header}, {const_cast<void *>(payload), header.payload_size}};
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

int send_in_memory_file(int socket, frame_header &header, const void *payload) {
    unique_fd memory_file;
    if (const int error = make_memory_file(payload, header.payload_size, memory_file)) return error;
    header.place = payload_place::in_memory_file;
    iovec part = {&header, sizeof header};
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
    const int fd = memory_file.get();
    std::memcpy(CMSG_DATA(rights), &fd, sizeof fd);
    return send_packet(socket, packet);
}

unique_fd take_descriptor(msghdr &packet) {
    const cmsghdr *rights = CMSG_FIRSTHDR(&packet);
    if (!rights || rights->cmsg_level != SOL_SOCKET || rights->cmsg_type != SCM_RIGHTS) return {};
    int fd = -1;
    std::memcpy(&fd, CMSG_DATA(rights), sizeof fd);
    return unique_fd(fd);
}

bool is_frame(const frame_header &header, size_t received, int packet_flags, bool has_descriptor) {
    if (received < sizeof header || (packet_flags & (MSG_TRUNC | MSG_CTRUNC)) || header.magic != frame_magic)
        return false;
    if (header.kind < frame_kind::message_request || header.kind > frame_kind::cmi_answer) return false;
    const size_t in_packet = received - sizeof header;
    if (header.place == payload_place::in_packet) return !has_descriptor && in_packet == header.payload_size;
    return header.place == payload_place::in_memory_file && has_descriptor && in_packet == 0 &&
           header.payload_size <= MTS_MAX_PAYLOAD;
}

ssize_t receive_packet(int socket, msghdr &packet, int flags) {
    ssize_t received = recvmsg(socket, &packet, flags);
    // Reported when the peer closed without reading all; what it had sent before can still be received.
    if (received < 0 && errno == ECONNRESET) received = recvmsg(socket, &packet, flags);
    return received;
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

int receive_frame(int socket, int flags, frame_header &header, void *buffer, unique_fd &memory_file) {
    iovec parts[] = {{&header, sizeof header}, {buffer, max_packet_payload}};
    control_buffer control;
    msghdr packet{};
    packet.msg_iov = parts;
    packet.msg_iovlen = 2;
    packet.msg_control = &control;
    packet.msg_controllen = CMSG_LEN(sizeof(int));  // without the padding, where a second descriptor would fit
    const ssize_t received = receive_packet(socket, packet, flags | MSG_CMSG_CLOEXEC);
    if (received < 0) return errno;
    memory_file = take_descriptor(packet);
    if (received == 0) return ECONNRESET;
    return is_frame(header, static_cast<size_t>(received), packet.msg_flags, bool(memory_file)) ? 0 : EPROTO;
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
