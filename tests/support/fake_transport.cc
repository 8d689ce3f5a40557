// SPDX-License-Identifier: Apache-2.0
#include "fake_transport.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "call_log.h"
#include "platform/cmi.h"

namespace support {
namespace {

fake_transport *active = nullptr;

constexpr uint32_t message_mark = 0x4d534721;
constexpr int32_t failure = -1;

// The error number of a failure before the test, which no success clears.
constexpr uint32_t stale_error = 4242;

mts_msg_t named(uint32_t id) {
    mts_msg_t message{};
    message.word[0] = message_mark;
    message.word[1] = id;
    return message;
}

bool is_zeroed(const mts_msg_t &message) {
    return std::ranges::all_of(message.word, [](uint32_t word) { return word == 0; });
}

std::string name_of(const mts_msg_t *message) {
    if (message == nullptr) return "null";
    if (is_zeroed(*message)) return "zeroed message";
    return message->word[0] == message_mark ? fmt::format("message {:#x}", message->word[1]) : "no message";
}

std::string shown(const void *content, uint32_t size) {
    return content == nullptr ? "null" : fmt::format("<{}>", hex(content, size));
}

}  // namespace

fake_transport::fake_transport(fake_heap &heap) : heap_(heap), error_(stale_error) { active = this; }

fake_transport::~fake_transport() { active = nullptr; }

void fake_transport::will_send(int32_t result, uint32_t error) {
    script_.push_back({transport_step::call::send, result, error});
}

void fake_transport::will_receive(int32_t result, uint32_t error) {
    script_.push_back({transport_step::call::receive, result, error});
}

void fake_transport::will_receive_answer(std::optional<bytes> answer) {
    script_.push_back({transport_step::call::receive, 0, 0, std::move(answer)});
}

void fake_transport::will_receive_answer_to(uint32_t token, std::optional<bytes> answer) {
    script_.push_back({transport_step::call::receive, 0, 0, std::move(answer), {}, token});
}

void fake_transport::will_drop(int32_t result, uint32_t error) {
    script_.push_back({transport_step::call::drop, result, error});
}

void fake_transport::will_answer_query(uint32_t result, std::optional<bytes> answer, std::optional<uint32_t> length) {
    script_.push_back(
        {transport_step::call::query, static_cast<int32_t>(result), 0, std::move(answer), std::move(length)});
}

void fake_transport::free_answer() { std::free(std::exchange(answer_, nullptr)); }

mts_msg_t fake_transport::message(uint32_t opcode, const std::optional<bytes> &content, bool is_response) {
    const uint32_t id = next_id_++;
    messages_[id] = {opcode, is_response, content ? std::make_unique<guarded_bytes>(*content) : nullptr, id};
    return named(id);
}

mts_msg_t fake_transport::latest() const { return named(next_id_ - 1); }

void fake_transport::drop(const mts_msg_t &message) {
    if (find(&message) != nullptr) messages_.erase(message.word[1]);
}

const uint8_t *fake_transport::payload_of(const mts_msg_t &message) const { return find(&message)->content->data(); }

void fake_transport::verify() const {
    EXPECT_EQ(script_.size(), 0U) << "steps of the transport's script that were not taken";
    EXPECT_EQ(messages_.size(), 0U) << "messages that were not dropped";
}

transport_step fake_transport::take(transport_step::call call, const char *name) {
    if (script_.empty() || script_.front().expected != call) {
        ADD_FAILURE() << "unexpected " << name;
        return {call, failure};
    }
    const transport_step step = script_.front();
    script_.pop_front();
    if (step.result == failure) error_ = step.error;
    return step;
}

int32_t fake_transport::send(uint32_t opcode, mts_msg_t *request) {
    const int32_t result = take(transport_step::call::send, "mts_send").result;
    if (result == failure) return result;
    const uint32_t token = next_id_++;
    messages_[token] = {opcode, false, nullptr, token};
    *request = named(token);
    return result;
}

// An answer carries the token and the opcode of its request.
mts_msg_t fake_transport::answer_to(uint32_t token, const std::optional<bytes> &content) {
    const auto request = messages_.find(token);
    const mts_msg_t answer = message(request != messages_.end() ? request->second.opcode : 0, content);
    messages_[answer.word[1]].token = token;
    return answer;
}

int32_t fake_transport::receive(const mts_recv_options_t &options, mts_msg_t *response) {
    const transport_step step = take(transport_step::call::receive, "mts_recv");
    if (step.result != failure) *response = answer_to(step.token.value_or(options.word[3]), step.answer);
    return step.result;
}

int32_t fake_transport::release(mts_msg_t *message) {
    const int32_t result = take(transport_step::call::drop, "mts_drop").result;
    // The transport takes a record that never held a message.
    if (!is_zeroed(*message)) drop(*message);
    return result;
}

uint32_t fake_transport::query(const void *request, void **response, uint32_t *length) {
    query_places_.push_back(request);
    const transport_step step = take(transport_step::call::query, "cmi_req_resp");
    if (step.answer) {
        *response = answer_ = std::malloc(step.answer->size());
        std::ranges::copy(*step.answer, static_cast<uint8_t *>(*response));
        *length = step.length.value_or(static_cast<uint32_t>(step.answer->size()));
        heap_.follow(*response, "answer");
    }
    return static_cast<uint32_t>(step.result);
}

const fake_transport::live_message *fake_transport::find(const mts_msg_t *message) const {
    const bool is_message = message != nullptr && message->word[0] == message_mark;
    const auto found = is_message ? messages_.find(message->word[1]) : messages_.end();
    if (found != messages_.end()) return &found->second;
    ADD_FAILURE() << "not a live message: " << name_of(message);
    return nullptr;
}

}  // namespace support

using support::active;
using support::call_log::add;

int32_t mts_send(mts_handle_t handle, uint32_t node, uint32_t sap, uint32_t opcode, const void *payload,
                 uint32_t payload_size, mts_msg_t *request, uint32_t eighth, uint32_t ninth) {
    add(fmt::format("mts_send({:#x}, {:#x}, {}, {}, {}, {}, {}, {})", handle, node, sap, opcode,
                    support::shown(payload, payload_size), payload_size, eighth, ninth));
    return active->send(opcode, request);
}

int32_t mts_recv(mts_handle_t handle, mts_msg_t *response, const mts_recv_options_t *options) {
    add(fmt::format("mts_recv({:#x}, {:#x})", handle, fmt::join(options->word, " ")));
    return active->receive(*options, response);
}

int32_t mts_drop(mts_handle_t handle, mts_msg_t *message) {
    add(fmt::format("mts_drop({:#x}, {})", handle, support::name_of(message)));
    return active->release(message);
}

uint32_t mts_rr_token_get(const mts_msg_t *request) {
    add(fmt::format("mts_rr_token_get({})", support::name_of(request)));
    const auto *const found = active->find(request);
    return found != nullptr ? found->token : 0;
}

uint32_t mts_errno_get(mts_handle_t handle) {
    add(fmt::format("mts_errno_get({:#x})", handle));
    return active->error();
}

void *mts_payload_get(const mts_msg_t *message) {
    add(fmt::format("mts_payload_get({})", support::name_of(message)));
    const auto *const found = active->find(message);
    return found != nullptr && found->content != nullptr ? found->content->data() : nullptr;
}

uint32_t mts_payload_size(const mts_msg_t *message) {
    add(fmt::format("mts_payload_size({})", support::name_of(message)));
    const auto *const found = active->find(message);
    return found != nullptr && found->content != nullptr ? found->content->size() : 0;
}

uint32_t mts_opc_get(const mts_msg_t *message) {
    add(fmt::format("mts_opc_get({})", support::name_of(message)));
    const auto *const found = active->find(message);
    return found != nullptr ? found->opcode : 0;
}

int32_t mts_is_response(const mts_msg_t *message) {
    add(fmt::format("mts_is_response({})", support::name_of(message)));
    const auto *const found = active->find(message);
    // A flag that is not 1, since any number but 0 means yes.
    return found != nullptr && found->is_response ? 2 : 0;
}

uint32_t mts_msg_id_get(const mts_msg_t *message) {
    add(fmt::format("mts_msg_id_get({})", support::name_of(message)));
    return active->find(message) != nullptr ? support::fake_transport::identifier_mark | message->word[1] : 0;
}

uint32_t cmi_req_resp(uint32_t opcode, uint32_t kind, const void *request, void **response, uint32_t *length,
                      uint32_t sixth, uint32_t seventh, uint32_t sap, mts_handle_t handle, uint32_t last) {
    EXPECT_EQ(*response, nullptr);
    add(fmt::format("cmi_req_resp({}, {}, {}, {}, {}, {}, {}, {:#x}, {})", opcode, kind,
                    support::shown(request, *length), *length, sixth, seventh, sap, handle, last));
    return active->query(request, response, length);
}
