// SPDX-License-Identifier: Apache-2.0
// fake_transport.h: the message transport and CMI. A test scripts the steps that it expects, in order; each call is
// logged and takes the next step. A call without a step, a step without a call, and a message that is not dropped
// fail the test.
#ifndef SUPPORT_FAKE_TRANSPORT_H
#define SUPPORT_FAKE_TRANSPORT_H

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "fake_heap.h"
#include "guarded_bytes.h"
#include "platform/mts.h"

namespace support {

// What a step of the script does.
struct transport_step {
    enum class call { send, receive, drop, query } expected;
    int32_t result = 0;
    uint32_t error = 0;                   // what mts_errno_get tells when the call failed
    std::optional<bytes> answer = {};     // of a query or a receive
    std::optional<uint32_t> length = {};  // of the answer, when it is not the answer's size
    std::optional<uint32_t> token = {};   // of the request that a received message answers
};

class fake_transport {
  public:
    // Requests are named by their tokens, which count from here; the identifiers of messages have a mark besides.
    static constexpr uint32_t first_token = 0x7001;
    static constexpr uint32_t identifier_mark = 0x1d000000;

    explicit fake_transport(fake_heap &heap);
    ~fake_transport();
    fake_transport(const fake_transport &) = delete;
    fake_transport &operator=(const fake_transport &) = delete;

    void will_send(int32_t result = 0, uint32_t error = 0);
    void will_receive(int32_t result = 0, uint32_t error = 0);
    void will_receive_answer(std::optional<bytes> answer);
    // To another request than the call asks for.
    void will_receive_answer_to(uint32_t token, std::optional<bytes> answer);
    void will_drop(int32_t result = 0, uint32_t error = 0);
    void will_answer_query(uint32_t result, std::optional<bytes> answer, std::optional<uint32_t> length = {});

    // Where the requests of the queries lay, in order.
    [[nodiscard]] const std::vector<const void *> &query_places() const { return query_places_; }

    // Frees the latest answer to a query, which the library left alone.
    void free_answer();

    // A received message, alive until drop is called.
    mts_msg_t message(uint32_t opcode, const std::optional<bytes> &content, bool is_response = true);

    // The message made last.
    [[nodiscard]] mts_msg_t latest() const;

    // Releases a message as the caller of the library does, outside script and log.
    void drop(const mts_msg_t &message);

    // Where the payload of a message lies.
    [[nodiscard]] const uint8_t *payload_of(const mts_msg_t &message) const;

    // Fails the test when something is left over.
    void verify() const;

    // What the platform's functions do.
    int32_t send(uint32_t opcode, mts_msg_t *request);
    int32_t receive(const mts_recv_options_t &options, mts_msg_t *response);
    int32_t release(mts_msg_t *message);
    uint32_t query(const void *request, void **response, uint32_t *length);
    [[nodiscard]] uint32_t error() const { return error_; }

    struct live_message {
        uint32_t opcode;
        bool is_response;
        std::unique_ptr<guarded_bytes> content;
        uint32_t token;
    };
    // The message, or null with a failure of the test.
    const live_message *find(const mts_msg_t *message) const;

  private:
    transport_step take(transport_step::call call, const char *name);
    mts_msg_t answer_to(uint32_t token, const std::optional<bytes> &content);

    fake_heap &heap_;
    std::deque<transport_step> script_;
    std::map<uint32_t, live_message> messages_;
    uint32_t next_id_ = first_token;
    uint32_t error_ = 0;
    void *answer_ = nullptr;
    std::vector<const void *> query_places_;
};

}  // namespace support

#endif
