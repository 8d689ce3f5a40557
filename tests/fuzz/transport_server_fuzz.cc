// SPDX-License-Identifier: Apache-2.0
// What a hostile client sends to a service.
#include <sys/eventfd.h>

#include <cstring>

#include "platform_dev/mts_dev.h"
#include "platform_dev/mts_service.h"
#include "support/peer.h"

namespace {

// Answers every request with its payload.
void echo(void *, const mts_request_t *request, mts_reply_t *reply) {
    const auto *const payload = static_cast<const uint8_t *>(request->payload);
    FUZZ_REQUIRE((payload == nullptr) == (request->payload_size == 0));
    for (size_t i = 0; payload != nullptr && i < platform_dev::payload_tail; ++i)
        FUZZ_REQUIRE(payload[request->payload_size + i] == 0);
    void *const to = mts_reply_payload(reply, request->payload_size);
    FUZZ_REQUIRE(to != nullptr);
    if (payload != nullptr) std::memcpy(to, payload, request->payload_size);
}

// A server that runs for a number of rounds of events: a bell that is always rung takes part in each.
class served_rounds {
  public:
    served_rounds() : server_(mts_server_create()), bell_(eventfd(0, EFD_CLOEXEC | EFD_SEMAPHORE)) {
        FUZZ_REQUIRE(server_ != nullptr);
        FUZZ_REQUIRE(mts_server_add_service(server_, MTS_NODE_SUPERVISOR, 43, echo, nullptr) == 0);
        FUZZ_REQUIRE(mts_server_add_fd(server_, bell_, count_round, this) == 0);
    }

    void serve(eventfd_t rounds) {
        rest_ = rounds;
        eventfd_write(bell_, rounds);
        FUZZ_REQUIRE(mts_server_run(server_) == 0);
    }

  private:
    static void count_round(void *self, int bell) {
        auto *const served = static_cast<served_rounds *>(self);
        eventfd_t one = 0;
        eventfd_read(bell, &one);
        if (--served->rest_ == 0) mts_server_stop(served->server_);
    }

    mts_server_t *server_;
    int bell_;
    eventfd_t rest_ = 0;
};

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static served_rounds &server = *(fuzz::make_runtime_dir(), new served_rounds);
    const auto packets = fuzz::packets_in({data, size}, platform_dev::frame_kind::message_request, 1);
    {
        const platform_dev::unique_fd client(fuzz::connect_in_runtime_dir("fe000000-43"));
        for (const fuzz::packet &packet : packets) fuzz::send(client.get(), packet);
        server.serve(packets.size() + 2);
    }
    server.serve(2);
    return 0;
}
