// SPDX-License-Identifier: Apache-2.0
#include "mts/capture.h"

#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <mutex>

#include "mts/pcapng_file.h"

namespace platform_dev {

namespace {

using detail::capture_state;
using detail::current_capture_state;

constexpr size_t process_name_size = 20;
constexpr size_t record_size = 44 + process_name_size;
constexpr uint8_t record_version = 1;
constexpr uint8_t little_endian_host = 1;

// A longer payload takes several packets.
constexpr size_t max_piece = max_captured_packet - record_size;

struct capture {
    std::mutex mutex;
    const char *path = nullptr;  // for what there is to tell about it
    pcapng_file file;
};

constinit capture current;

const char *reason_of(int error) {
    switch (error) {
        case EBADMSG:
            return "it is no pcapng file";
        case EPERM:
            return "it is no regular file of this user's with one name";
        case ELOOP:
            return "it is a symbolic link";
        case EBADF:
            return "the program closed it";
        case ETIMEDOUT:
            return "another process keeps it locked";
        default:
            return std::strerror(error);
    }
}

// From here on messages are not recorded.
void give_up(const char *path, int error) {
    current_capture_state = capture_state::off;
    std::fprintf(stderr, "mts: MTS_CAPTURE: cannot record messages in %s: %s\n", path, reason_of(error));
}

void lock_for_fork() { current.mutex.lock(); }
void unlock_parent() { current.mutex.unlock(); }
void unlock_child() {
    current.file.begin_section();
    current.mutex.unlock();
}

void begin_capture() {
    const char *const path = secure_getenv("MTS_CAPTURE");
    if (path == nullptr || *path == '\0') {
        current_capture_state = capture_state::off;
        return;
    }
    current.path = strdup(path);  // the environment may change
    int error = current.path == nullptr ? ENOMEM : current.file.open(path);
    if (error == 0) error = pthread_atfork(lock_for_fork, unlock_parent, unlock_child);
    if (error != 0) return give_up(path, error);
    current_capture_state = capture_state::on;
}

uint64_t now() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return static_cast<uint64_t>(time.tv_sec) * 1'000'000'000 + static_cast<uint64_t>(time.tv_nsec);
}

uint32_t to_network(uint32_t word) { return std::endian::native == std::endian::big ? word : __builtin_bswap32(word); }

// One message on its way.
struct passing_message {
    uint64_t time;
    packet_direction direction;
    capture_point at;
    int socket;  // its number tells the connections of a process apart
    const frame_header &header;
    const void *payload;
};

using record_bytes = std::array<uint8_t, record_size>;

record_bytes record_of(const passing_message &message, size_t offset) {
    const frame_header &header = message.header;
    constexpr uint8_t flags = std::endian::native == std::endian::little ? little_endian_host : 0;
    const uint32_t words[] = {message.at.node,
                              message.at.sap,
                              header.opcode,
                              header.token,
                              header.message_id,
                              header.cmi_word,
                              header.payload_size,
                              static_cast<uint32_t>(offset),
                              static_cast<uint32_t>(message.socket),
                              static_cast<uint32_t>(getpid())};
    record_bytes record{record_version, static_cast<uint8_t>(header.kind), flags, record_size};
    uint8_t *to = &record[4];
    for (const uint32_t word : words) {
        const uint32_t wire = to_network(word);
        std::memcpy(to, &wire, sizeof wire);
        to += sizeof wire;
    }
    const char *const name = program_invocation_short_name;
    std::memcpy(to, name, strnlen(name, process_name_size));
    return record;
}

int append(const passing_message &message) {
    const std::span payload(static_cast<const uint8_t *>(message.payload), message.header.payload_size);
    size_t offset = 0;
    do {
        const record_bytes record = record_of(message, offset);
        const auto piece = payload.subspan(offset, std::min(max_piece, payload.size() - offset));
        if (const int error = current.file.append({message.time, message.direction, record, piece})) return error;
        offset += piece.size();
    } while (offset < payload.size());
    return 0;
}

// The mutex is not touched before forks take it, too: a child would inherit it locked. A fork during the first call has
// it made again in the child.
void record(const passing_message &message) {
    static pthread_once_t once = PTHREAD_ONCE_INIT;
    pthread_once(&once, begin_capture);
    if (!may_capture()) return;
    const std::lock_guard lock(current.mutex);
    if (!may_capture()) return;
    if (const int error = append(message)) give_up(current.path, error);
}

}  // namespace

// The time is taken first, so that no message is received before it was sent.
int detail::send_and_record(const capture_point &at, int socket, const frame_header &header, const void *payload) {
    const uint64_t time = now();
    const int error = send_frame(socket, header, payload);
    if (error == 0) record({time, packet_direction::outbound, at, socket, header, payload});
    return error;
}

void detail::record_received(const capture_point &at, int socket, const received_frame &frame) {
    record({now(), packet_direction::inbound, at, socket, frame.header, frame.payload.get()});
}

}  // namespace platform_dev
