// SPDX-License-Identifier: Apache-2.0
// payload.h: received payloads and the buffers that packets are received into.
#ifndef PLATFORM_DEV_MTS_PAYLOAD_H
#define PLATFORM_DEV_MTS_PAYLOAD_H

#include <array>
#include <cstdlib>
#include <memory>

#include "mts/frame.h"

namespace platform_dev {

struct free_block {
    void operator()(void *block) const { std::free(block); }
};

// One malloc block.
using heap_block = std::unique_ptr<void, free_block>;

// A few buffers with room for the largest packet, ready for use: a fresh one costs page faults.
class packet_buffers {
  public:
    // Returns a buffer of max_packet_payload + payload_tail bytes, or null when memory ran out.
    [[nodiscard]] heap_block take();
    void give_back(heap_block buffer);

  private:
    std::array<heap_block, 4> spare_;
    size_t count_ = 0;
};

// One frame that came in, with its payload.
struct received_frame {
    frame_header header{};
    heap_block payload;             // null when there is none; payload_tail zeroed bytes follow it
    bool is_packet_buffer = false;  // `payload` can go back to packet_buffers
};

// Which payloads stay in the buffer that their packet was received into: those of which a copy would cost more than
// what a buffer holds for nothing, or all, for who is done with one before the next.
enum class stays_in_buffer : uint8_t { large, all };

// Receives one frame with its payload. Results and `flags` are those of frame_receiver::receive, and ENOMEM.
[[nodiscard]] int receive(frame_receiver &receiver, int socket, int flags, stays_in_buffer stays,
                          packet_buffers &buffers, received_frame &frame);

}  // namespace platform_dev

#endif
