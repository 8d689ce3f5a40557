// SPDX-License-Identifier: Apache-2.0
// answer.h: the answers of the services.
#ifndef VIRTUAL_SWITCH_SERVICES_ANSWER_H
#define VIRTUAL_SWITCH_SERVICES_ANSWER_H

#include <span>
#include <vector>

#include "chassis/model.h"
#include "platform_dev/mts_service.h"

namespace virtual_switch {

using port_list = std::vector<const port *>;

// A status alone, as every refusal is answered.
void answer_status(mts_reply_t *reply, uint32_t status);

// Full records with the attribute elements of their ports; owners travel only with a single record.
void answer_ports(mts_reply_t *reply, const port_list &ports);

void answer_ports_brief(mts_reply_t *reply, const port_list &ports);

// How many records an answer has room for.
size_t most_records();

}  // namespace virtual_switch

#endif
