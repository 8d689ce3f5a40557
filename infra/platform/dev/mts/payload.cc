// SPDX-License-Identifier: Apache-2.0
#include "mts/payload.h"

#include <cerrno>
#include <cstring>

namespace platform_dev {

namespace {

// Payloads up to here are copied into a block of their size, so that a small one does not hold a whole buffer.
constexpr size_t max_copied_payload = size_t{16} * 1024;

heap_block allocate_payload(size_t size) { return heap_block(std::malloc(size + payload_tail)); }

void clear_tail(const heap_block &payload, size_t size) {
    std::memset(static_cast<char *>(payload.get()) + size, 0, payload_tail);
}

int copy_payload(const heap_block &buffer, received_frame &frame) {
    frame.payload = allocate_payload(frame.header.payload_size);
    if (!frame.payload) return ENOMEM;
    std::memcpy(frame.payload.get(), buffer.get(), frame.header.payload_size);
    return 0;
}

int load_payload(const unique_fd &memory_file, received_frame &frame) {
    frame.payload = allocate_payload(frame.header.payload_size);
    if (!frame.payload) return ENOMEM;
    return read_memory_file(memory_file, frame.payload.get(), frame.header.payload_size);
}

int take_payload(heap_block &buffer, const unique_fd &memory_file, stays_in_buffer stays, received_frame &frame) {
    if (memory_file) return load_payload(memory_file, frame);
    if (stays == stays_in_buffer::large && frame.header.payload_size <= max_copied_payload)
        return copy_payload(buffer, frame);
    frame.payload = std::move(buffer);
    frame.is_packet_buffer = true;
    return 0;
}

}  // namespace

heap_block packet_buffers::take() {
    if (count_ > 0) return std::move(spare_[--count_]);
    return heap_block(std::malloc(max_packet_payload + payload_tail));
}

void packet_buffers::give_back(heap_block buffer) {
    if (buffer && count_ < spare_.size()) spare_[count_++] = std::move(buffer);
}

int receive(frame_receiver &receiver, int socket, int flags, stays_in_buffer stays, packet_buffers &buffers,
            received_frame &frame) {
    frame = {};
    heap_block buffer = buffers.take();
    if (!buffer) return ENOMEM;
    unique_fd memory_file;
    int error = receiver.receive(socket, flags, frame.header, buffer.get(), memory_file);
    if (error == 0 && frame.header.payload_size > 0) error = take_payload(buffer, memory_file, stays, frame);
    if (!frame.is_packet_buffer) buffers.give_back(std::move(buffer));
    if (error == 0 && frame.payload) clear_tail(frame.payload, frame.header.payload_size);
    return error;
}

}  // namespace platform_dev
