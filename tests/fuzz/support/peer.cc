// SPDX-License-Identifier: Apache-2.0
#include "support/peer.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace fuzz {
namespace {

using platform_dev::frame_header;
using platform_dev::unique_fd;

constexpr uint32_t frame_magic = 0x4d545302;
constexpr int all_seals = F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE;
constexpr size_t largest_file = 1 << 20;

// A private run-time directory, removed when the process ends.
class runtime_directory {
  public:
    runtime_directory() {
        FUZZ_REQUIRE(mkdtemp(path_.data()) != nullptr);
        setenv("MTS_RUNTIME_DIR", path_.c_str(), 1);
    }
    ~runtime_directory() { std::filesystem::remove_all(path_); }

    [[nodiscard]] sockaddr_un address_of(const char *name) const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        (path_ + "/" + name).copy(address.sun_path, sizeof address.sun_path - 1);
        return address;
    }

  private:
    std::string path_ = std::filesystem::temp_directory_path() / "mts-fuzz-XXXXXX";
};

const runtime_directory &directory() {
    static const runtime_directory made;
    return made;
}

unique_fd file_for(const packet &sent) {
    unique_fd file(memfd_create("fuzz", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    FUZZ_REQUIRE(ftruncate(file.get(), static_cast<off_t>(sent.file_size)) == 0);
    if (sent.is_sealed) fcntl(file.get(), F_ADD_SEALS, all_seals);
    return file;
}

size_t size_of_file(const std::vector<uint8_t> &content, bool fits_header) {
    if (!fits_header || content.size() < sizeof(frame_header)) return content.size();
    frame_header header;
    std::memcpy(&header, content.data() + content.size() - sizeof header, sizeof header);
    return std::min<size_t>(header.payload_size, largest_file);
}

std::vector<uint8_t> with_header(bytes content, const packet &of, platform_dev::frame_kind kind, uint32_t token) {
    frame_header header{};
    header.magic = frame_magic;
    header.kind = kind;
    header.place = of.has_file ? platform_dev::payload_place::in_memory_file : platform_dev::payload_place::in_packet;
    header.opcode = 1;
    header.token = token;
    header.payload_size = static_cast<uint32_t>(content.size());
    std::vector<uint8_t> frame;
    if (!of.has_file) frame.assign(content.begin(), content.end());
    const auto *const header_bytes = reinterpret_cast<const uint8_t *>(&header);
    frame.insert(frame.end(), header_bytes, header_bytes + sizeof header);
    return frame;
}

// The file goes behind the packet that announced it.
packet split_off_file(packet &announcing) {
    packet carrying = announcing;
    carrying.content.assign(1, 0);
    announcing.has_file = false;
    return carrying;
}

}  // namespace

std::vector<packet> packets_in(bytes input, platform_dev::frame_kind kind, uint32_t token) {
    std::vector<packet> packets;
    while (input.size() >= 3 && packets.size() < 4) {
        const uint8_t flags = input[0];
        const size_t length = std::min<size_t>(input[1] * 256u + input[2], input.size() - 3);
        const bytes content = input.subspan(3, length);
        const bool has_good_header = (flags & 16) != 0;
        packet made{{}, (flags & 1) != 0, (flags & 2) != 0, (flags & 8) != 0, 0};
        if (has_good_header)
            made.content = with_header(content, made, kind, token);
        else
            made.content.assign(content.begin(), content.end());
        made.file_size = size_of_file(made.content, (flags & 4) != 0);
        packets.push_back(std::move(made));
        if (packets.back().has_file && has_good_header && (flags & 32) == 0)
            packets.push_back(split_off_file(packets.back()));
        input = input.subspan(3 + length);
    }
    return packets;
}

void send(int socket, const packet &sent) {
    iovec part{const_cast<uint8_t *>(sent.content.data()), sent.content.size()};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    const unique_fd file = sent.has_file ? file_for(sent) : unique_fd();
    alignas(cmsghdr) char control[CMSG_SPACE(2 * sizeof(int))]{};
    if (file) {
        const int files[2] = {file.get(), file.get()};
        const size_t size = sent.is_sent_twice ? sizeof files : sizeof files[0];
        message.msg_control = control;
        message.msg_controllen = CMSG_SPACE(size);
        cmsghdr *const rights = CMSG_FIRSTHDR(&message);
        rights->cmsg_level = SOL_SOCKET;
        rights->cmsg_type = SCM_RIGHTS;
        rights->cmsg_len = CMSG_LEN(size);
        std::memcpy(CMSG_DATA(rights), files, size);
    }
    sendmsg(socket, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
}

void make_runtime_dir() { directory(); }

int listen_in_runtime_dir(const char *name) {
    const sockaddr_un address = directory().address_of(name);
    const int listener = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    FUZZ_REQUIRE(bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0);
    FUZZ_REQUIRE(listen(listener, 8) == 0);
    return listener;
}

int connect_in_runtime_dir(const char *name) {
    const sockaddr_un address = directory().address_of(name);
    const int client = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    FUZZ_REQUIRE(connect(client, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0);
    return client;
}

}  // namespace fuzz
