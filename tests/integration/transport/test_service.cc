// SPDX-License-Identifier: Apache-2.0
#include "test_service.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <span>

#include "platform_dev/tlv_builder.h"

namespace transport_test {

namespace {

void answer(mts_reply_t *reply, std::string_view payload) {
    void *room = mts_reply_payload(reply, static_cast<uint32_t>(payload.size()));
    if (room != nullptr) std::copy(payload.begin(), payload.end(), static_cast<char *>(room));
}

std::string_view payload_of(const mts_request_t *request) {
    return {static_cast<const char *>(request->payload), request->payload_size};
}

uint32_t wanted_size(const mts_request_t *request) {
    uint32_t size = 0;
    std::memcpy(&size, request->payload, sizeof size);
    return size;
}

void lend_wanted_size(const mts_request_t *request, mts_reply_t *reply) {
    static std::string lent;
    std::ranges::fill(lent, '\xff');
    lent = pattern(wanted_size(request));
    mts_reply_lend_payload(reply, lent.data(), static_cast<uint32_t>(lent.size()));
}

void answer_report(const mts_request_t *request, mts_reply_t *reply) {
    answer(reply, word(request->node) + word(request->sap) + word(request->opcode) + word(request->is_cmi) +
                      word(request->kind) + word(request->payload_size));
}

void answer_client(const mts_client_t &client, mts_reply_t *reply) {
    std::string words = word(client.uid);
    for (const uint32_t group : std::span(client.groups, client.group_count)) words += word(group);
    answer(reply, words);
}

void serve(void *, const mts_request_t *request, mts_reply_t *reply) {
    switch (request->opcode) {
        case echo:
            return answer(reply, payload_of(request));
        case answer_nothing:
            return answer(reply, {});
        case answer_size:
            return answer(reply, pattern(wanted_size(request)));
        case lend_size:
            return lend_wanted_size(request, reply);
        case refuse:
            return mts_reply_fail(reply, fail_status);
        case report_tail:
            return answer(reply, has_zeroed_tail(request->payload, request->payload_size) ? "\1" : "\2");
        case report_request:
            return answer_report(request, reply);
        case report_sap:
            return answer(reply, word(request->sap));
        case report_client:
            return answer_client(request->client, reply);
        case die:
            raise(SIGKILL);
            return;
        default:
            return;
    }
}

}  // namespace

transport::transport() : directory_("/tmp/mts-test-XXXXXX") {
    EXPECT_NE(mkdtemp(directory_.data()), nullptr);
    setenv("MTS_RUNTIME_DIR", directory_.c_str(), 1);
}

transport::~transport() { std::filesystem::remove_all(directory_); }

test_server::test_server(const std::vector<uint32_t> &saps) : server_(mts_server_create()) {
    EXPECT_NE(server_, nullptr);
    for (const uint32_t served : saps)
        EXPECT_EQ(mts_server_add_service(server_, node, served, serve, nullptr), 0) << std::strerror(errno);
}

service_thread::service_thread(const std::vector<uint32_t> &saps)
    : server_(saps), thread_([this] { EXPECT_EQ(mts_server_run(server_.get()), 0); }) {}

service_thread::~service_thread() {
    mts_server_stop(server_.get());
    thread_.join();
}

service_process::service_process(const support::other_user *user) {
    int ready[2];
    EXPECT_EQ(pipe(ready), 0);
    pid_ = fork();
    if (pid_ == 0) {
        EXPECT_TRUE(user == nullptr || support::become(*user));
        const test_server server;
        EXPECT_EQ(write(ready[1], "", 1), 1);
        mts_server_run(server.get());
        _exit(EXIT_SUCCESS);
    }
    close(ready[1]);
    char byte = 0;
    EXPECT_EQ(read(ready[0], &byte, 1), 1);
    close(ready[0]);
}

void service_process::kill_now() {
    if (pid_ > 0) kill(pid_, SIGKILL);
    wait_for_end();
}

void service_process::wait_for_end() {
    if (pid_ < 0) return;
    EXPECT_EQ(waitpid(pid_, nullptr, 0), pid_);
    pid_ = -1;
}

uint32_t send_request(mts_handle_t handle, uint32_t opcode, std::string_view payload, uint32_t to_sap) {
    mts_msg_t request;
    if (mts_send(handle, node, to_sap, opcode, payload.data(), static_cast<uint32_t>(payload.size()), &request, 0, 0))
        return 0;
    const uint32_t token = mts_rr_token_get(&request);
    EXPECT_EQ(mts_drop(handle, &request), 0);
    return token;
}

mts_recv_options_t answer_to(uint32_t token, uint32_t seconds) { return {{1, 0, seconds, token, 0, 0, 0, 0, 0}}; }

std::string receive_answer(mts_handle_t handle, uint32_t token, uint32_t seconds) {
    mts_msg_t message;
    const mts_recv_options_t options = answer_to(token, seconds);
    if (mts_recv(handle, &message, &options) == -1) {
        ADD_FAILURE() << "no answer: " << std::strerror(static_cast<int>(mts_errno_get(handle)));
        return {};
    }
    EXPECT_EQ(mts_rr_token_get(&message), token);
    std::string payload(static_cast<const char *>(mts_payload_get(&message)), mts_payload_size(&message));
    EXPECT_EQ(mts_drop(handle, &message), 0);
    return payload;
}

uint32_t receive_error(mts_handle_t handle, uint32_t token, uint32_t seconds) {
    mts_msg_t message;
    const mts_recv_options_t options = answer_to(token, seconds);
    if (mts_recv(handle, &message, &options) == -1) return mts_errno_get(handle);
    mts_drop(handle, &message);
    return 0;
}

std::string exchange(mts_handle_t handle, uint32_t opcode, std::string_view payload, uint32_t to_sap) {
    const uint32_t token = send_request(handle, opcode, payload, to_sap);
    EXPECT_NE(token, 0u) << std::strerror(static_cast<int>(mts_errno_get(handle)));
    return receive_answer(handle, token);
}

std::string pattern(size_t size) {
    std::string bytes(size, '\0');
    for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i);
    return bytes;
}

std::string word(uint32_t value) { return {reinterpret_cast<const char *>(&value), sizeof value}; }

bool has_zeroed_tail(const void *payload, uint32_t size) {
    const char *tail = static_cast<const char *>(payload) + size;
    return std::all_of(tail, tail + TLV_ZEROED_TAIL_SIZE, [](char byte) { return byte == 0; });
}

size_t count_open_descriptors() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return static_cast<size_t>(std::distance(begin(descriptors), end(descriptors)));
}

}  // namespace transport_test
