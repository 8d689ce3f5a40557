// SPDX-License-Identifier: Apache-2.0
#include "platform_dev/mts_service.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include "mts/server.h"
#include "platform_dev/mts_dev.h"

using namespace platform_dev;

struct mts_server final : server {};

namespace {

// The least that a reply's block holds, so that small answers do not replace it.
constexpr size_t min_reply_capacity = 4096;

// Turns the error number of `operation`, or the lack of memory, into a result with errno.
template <typename operation_t>
int32_t with_errno(operation_t operation) {
    int error = ENOMEM;
    try {
        error = operation();
    } catch (const std::bad_alloc &) {
    }
    if (error == 0) return 0;
    errno = error;
    return -1;
}

bool reserve(mts_reply &reply, size_t size) {
    const size_t capacity = std::max(size, min_reply_capacity);
    // A block that only the largest answers need is not kept.
    if (capacity <= reply.capacity && reply.capacity <= std::max(capacity, max_packet_payload)) return true;
    reply.block.reset(std::malloc(capacity));
    reply.capacity = reply.block ? capacity : 0;
    return reply.capacity > 0;
}

void give(mts_reply &reply, const void *payload, uint32_t size) {
    reply.payload = payload;
    reply.payload_size = size;
    reply.status = 0;
    reply.is_given = true;
}

}  // namespace

void *mts_reply_payload(mts_reply_t *reply, uint32_t size) {
    if (size > MTS_MAX_PAYLOAD || !reserve(*reply, size)) {
        mts_reply_fail(reply, size > MTS_MAX_PAYLOAD ? EMSGSIZE : ENOMEM);
        return nullptr;
    }
    std::memset(reply->block.get(), 0, size);
    give(*reply, reply->block.get(), size);
    return reply->block.get();
}

void mts_reply_lend_payload(mts_reply_t *reply, const void *payload, uint32_t size) {
    if (size > MTS_MAX_PAYLOAD) return mts_reply_fail(reply, EMSGSIZE);
    give(*reply, payload, size);
}

void mts_reply_fail(mts_reply_t *reply, uint32_t status) {
    reply->payload_size = 0;
    reply->status = status;
    reply->is_given = true;
}

mts_server_t *mts_server_create(void) {
    std::unique_ptr<mts_server> created(new (std::nothrow) mts_server);
    const int32_t result = with_errno([&] { return created ? created->open() : ENOMEM; });
    return result == 0 ? created.release() : nullptr;
}

void mts_server_destroy(mts_server_t *server) { delete server; }

int32_t mts_server_add_service(mts_server_t *server, uint32_t node, uint32_t sap, mts_service_t service,
                               void *context) {
    return with_errno([&] { return server->add_service({node, sap, service, context}); });
}

int32_t mts_server_remove_service(mts_server_t *server, uint32_t node, uint32_t sap) {
    return with_errno([&] { return server->remove_service(node, sap); });
}

int32_t mts_server_add_fd(mts_server_t *server, int fd, mts_fd_handler_t handler, void *context) {
    return with_errno([&] { return server->add_fd(fd, handler, context); });
}

int32_t mts_server_run(mts_server_t *server) {
    return with_errno([&] { return server->run(); });
}

void mts_server_stop(mts_server_t *server) { server->stop(); }
