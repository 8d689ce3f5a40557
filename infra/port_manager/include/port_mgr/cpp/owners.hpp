/* SPDX-License-Identifier: Apache-2.0 */
/** @file
 * Owners of what the C interface hands to its caller. */
#ifndef PORT_MGR_CPP_OWNERS_HPP
#define PORT_MGR_CPP_OWNERS_HPP

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <span>
#include <utility>

#include "platform/mts.h"

namespace port_mgr {

/** A message of the transport, sent or received: mts_drop when it ends. Belongs to the thread of its handle. */
class message {
  public:
    /** Takes over a message.
     *  @param handle  the queue that it was sent or received with
     *  @param words   the message as the C interface filled it in */
    message(mts_handle_t handle, const mts_msg_t &words) : handle_(handle), words_(words) {}
    /** Takes over a message.
     *  @param other  its owner so far, which is left without one */
    message(message &&other) noexcept : handle_(std::exchange(other.handle_, 0)), words_(other.words_) {}
    /** Releases what it holds, and takes over a message.
     *  @param other  its owner so far
     *  @return this */
    message &operator=(message other) noexcept {
        std::swap(handle_, other.handle_);
        std::swap(words_, other.words_);
        return *this;
    }
    ~message() {
        if (handle_ != 0) mts_drop(handle_, &words_);
    }

    /** @return the message for functions of the C interface. */
    [[nodiscard]] const mts_msg_t *get() const { return &words_; }

    /** @return the bytes of a received message; they stay the message's. */
    [[nodiscard]] std::span<const std::byte> payload() const {
        const auto *bytes = static_cast<const std::byte *>(mts_payload_get(&words_));
        return {bytes, bytes ? mts_payload_size(&words_) : 0};
    }

    /** @return what correlates a request with its answer. */
    [[nodiscard]] uint32_t token() const { return mts_rr_token_get(&words_); }

  private:
    mts_handle_t handle_;
    mts_msg_t words_;
};

/** An array of records in one malloc block, freed once. A range of `const Record`; the records are those of C. */
template <typename Record>
class records {
  public:
    /** No records. */
    records() = default;

    /** Takes over an array.
     *  @param block  what the C interface allocated, or null
     *  @param count  how many records it holds; of no meaning when `block` is null */
    records(Record *block, uint32_t count) : block_(block), count_(count) {}

    /** @return all records; they live as long as this. */
    [[nodiscard]] std::span<const Record> all() const & { return {block_.get(), size()}; }
    /** @return all records. */
    operator std::span<const Record>() const & { return all(); }
    std::span<const Record> all() const && = delete;
    operator std::span<const Record>() const && = delete;

    /** @return the first record. */
    [[nodiscard]] const Record *begin() const { return block_.get(); }
    /** @return the end of the last record. */
    [[nodiscard]] const Record *end() const { return begin() + size(); }
    /** @return how many records there are. */
    [[nodiscard]] size_t size() const { return block_ ? count_ : 0; }
    /** @return whether there are none. */
    [[nodiscard]] bool empty() const { return size() == 0; }
    /** @param position  below size()
     *  @return the record there */
    [[nodiscard]] const Record &operator[](size_t position) const { return block_[position]; }

    /** @return the block, which is the caller's to free from now on. */
    [[nodiscard]] Record *release() { return block_.release(); }

  private:
    struct free_block {
        void operator()(Record *block) const { std::free(block); }
    };

    std::unique_ptr<Record[], free_block> block_;
    uint32_t count_ = 0;
};

}  // namespace port_mgr

#endif
