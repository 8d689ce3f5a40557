// SPDX-License-Identifier: Apache-2.0
// received_message.h: looks at a received message without stumbling over a null one, which counts as a message
// without payload.
#ifndef PM_API_COMMON_RECEIVED_MESSAGE_H
#define PM_API_COMMON_RECEIVED_MESSAGE_H

#include "platform/mts.h"

namespace pm {

class received_message {
  public:
    explicit received_message(const mts_msg_t *message) : message_(message) {}

    [[nodiscard]] bool exists() const { return message_ != nullptr; }
    [[nodiscard]] bool is_response() const { return exists() && mts_is_response(message_) != 0; }
    [[nodiscard]] bool has_opcode(uint32_t opcode) const { return exists() && mts_opc_get(message_) == opcode; }

    [[nodiscard]] const uint8_t *payload() const {
        return exists() ? static_cast<const uint8_t *>(mts_payload_get(message_)) : nullptr;
    }
    [[nodiscard]] uint32_t size() const { return exists() ? mts_payload_size(message_) : 0; }

  private:
    const mts_msg_t *message_;
};

}  // namespace pm

#endif
