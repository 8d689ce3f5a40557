// SPDX-License-Identifier: Apache-2.0
#include "services/channel_member_service.h"

#include "chassis/switch_state.h"
#include "platform/if_index.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/cursor.h"

namespace virtual_switch {

void channel_member_service(void *state, const mts_request_t *request, mts_reply_t *reply) {
    if (request->opcode != CMI_OPC_GET_CHANNEL_MEMBER) return mts_reply_fail(reply, PM_ERR_FAILURE);
    pm::byte_reader query({static_cast<const uint8_t *>(request->payload), request->payload_size});
    const if_index_t channel = ntoh_if_index(query.get_wire32());
    if (!query.ok()) return mts_reply_fail(reply, PM_ERR_INVALID_PARAM);
    const if_index_t member = static_cast<const switch_state *>(state)->model().first_member(channel);
    void *const answer = member == 0 ? nullptr : mts_reply_payload(reply, sizeof member);
    if (answer == nullptr) return mts_reply_fail(reply, PM_ERR_INVALID_RANGE);
    pm::store(answer, hton_if_index(member));
}

}  // namespace virtual_switch
