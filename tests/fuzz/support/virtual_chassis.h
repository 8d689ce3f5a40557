// SPDX-License-Identifier: Apache-2.0
// virtual_chassis.h: the services of the virtual switch in this process, for the chassis of an example. Their clock
// stands still, so that an answer depends on the requests before it only.
#ifndef FUZZ_SUPPORT_VIRTUAL_CHASSIS_H
#define FUZZ_SUPPORT_VIRTUAL_CHASSIS_H

#include <vector>

#include "chassis/switch_state.h"
#include "services/line_card.h"
#include "services/port_service.h"
#include "support/fuzz.h"

namespace fuzz {

// Whom a request is for and what it asks, in a byte each; there is no byte without a meaning.
struct request_code {
    uint8_t service;
    uint8_t opcode;  // the highest bit: a message, no CMI request
};

request_code code_of(uint32_t sap, uint32_t opcode, bool is_cmi);

// A chassis of examples/chassis, and the slot, counted from 0, of the line card in it that is asked: the Ethernet one.
struct example {
    const char *file;
    uint8_t slot;
};
inline constexpr example director{"director.toml", 3};
inline constexpr example fixed_switch{"fixed.toml", 1};

class virtual_chassis {
  public:
    explicit virtual_chassis(const example &chosen);
    virtual_chassis(const virtual_chassis &) = delete;
    virtual_chassis &operator=(const virtual_chassis &) = delete;

    // Returns the payload of the answer.
    std::vector<uint8_t> ask(request_code code, bytes payload);

  private:
    virtual_switch::switch_state state_;
    virtual_switch::line_card_context card_;
    virtual_switch::port_service_context ports_;
};

}  // namespace fuzz

#endif
