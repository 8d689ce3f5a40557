// SPDX-License-Identifier: Apache-2.0
// frame.h: what travels over a connection: the payload and, behind it, a header of fixed size, in one packet. So a
// payload lies at the start of the block that its packet is received into.
//
// Both ends run on one host, so the header is in its byte order. A payload that does not fit a packet travels in a
// sealed memory file: a packet with the header alone announces it, and the next packet carries its descriptor. So all
// other packets are received without looking for descriptors, which costs more than the rest of a receive.
#ifndef PLATFORM_DEV_MTS_FRAME_H
#define PLATFORM_DEV_MTS_FRAME_H

#include <cstddef>
#include <cstdint>
#include <optional>

#include "common/unique_fd.h"
#include "platform_dev/tlv_builder.h"

namespace platform_dev {

enum class frame_kind : uint16_t { message_request = 1, message_answer, cmi_request, cmi_answer };

enum class payload_place : uint16_t { in_packet, in_memory_file };

// The same 28 bytes for 32-bit and 64-bit programs.
struct frame_header {
    uint32_t magic;
    frame_kind kind;
    payload_place place;
    uint32_t opcode;
    uint32_t token;
    uint32_t message_id;
    uint32_t payload_size;
    uint32_t cmi_word;  // the request kind of a CMI request, the status of a CMI answer, else 0
};
static_assert(sizeof(frame_header) == 28);

// The largest payload that travels in the packet. A socket's default send buffer holds that much.
inline constexpr size_t max_packet_payload = 212992 - 32 - sizeof(frame_header);

// The zeroed bytes behind every received payload: no walk of a TLV array in it leaves them.
inline constexpr size_t payload_tail = TLV_ZEROED_TAIL_SIZE;

// Sends one frame without waiting; fills in the header's magic and place. `payload` has header.payload_size bytes.
// Returns 0 or a system error number: EAGAIN when the socket's buffer is full, EPIPE or ECONNRESET when the peer ended.
[[nodiscard]] int send_frame(int socket, frame_header header, const void *payload);

// The receiving half of a connection.
class frame_receiver {
  public:
    // Receives one frame; `buffer` has room for max_packet_payload bytes and a header. `flags` are those of recv:
    // without MSG_DONTWAIT it waits as long as the socket's SO_RCVTIMEO says. A payload in a memory file is left
    // there, for read_memory_file. Returns 0 or a system error number: EAGAIN when there was none, or its memory file
    // is still to come; ECONNRESET when the peer ended, EPROTO when what came is no frame.
    [[nodiscard]] int receive(int socket, int flags, frame_header &header, void *buffer, unique_fd &memory_file);

  private:
    std::optional<frame_header> announced_;  // its memory file is still to come
};

// Copies `size` bytes out of a memory file that a peer sent. Returns 0, or EPROTO when it is none, is not sealed or
// has another size.
[[nodiscard]] int read_memory_file(const unique_fd &memory_file, void *buffer, size_t size);

}  // namespace platform_dev

#endif
