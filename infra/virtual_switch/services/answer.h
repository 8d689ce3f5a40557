// SPDX-License-Identifier: Apache-2.0
// answer.h: the answers of the services.
#ifndef VIRTUAL_SWITCH_SERVICES_ANSWER_H
#define VIRTUAL_SWITCH_SERVICES_ANSWER_H

#include <span>
#include <vector>

#include "chassis/model.h"
#include "platform_dev/mts_service.h"
#include "port_mgr/port_info_response.h"

namespace virtual_switch {

using port_list = std::vector<const port *>;

// A status alone, as every refusal is answered.
void answer_status(mts_reply_t *reply, uint32_t status);

// Starts an answer of records that has room for `size` bytes behind its header. Returns where they go, zeroed, or null
// after having answered that it is too large.
uint8_t *start_answer(mts_reply_t *reply, size_t records, size_t size);

// Full records with the attribute elements of their ports; owners travel only with a single record.
void answer_ports(mts_reply_t *reply, const port_list &ports);

// The same, with the bandwidth that is configured: 0 where it follows from the speed.
void answer_configured_ports(mts_reply_t *reply, const port_list &ports);

void answer_ports_brief(mts_reply_t *reply, const port_list &ports);

// How many records an answer has room for.
size_t most_records();

// What became of one interface of a set request.
struct set_result {
    if_index_t if_index;
    uint32_t status;
};

// The status is the first of the results that is no success.
void answer_set(mts_reply_t *reply, const std::vector<set_result> &results);

// To a set request that is refused as a whole.
void refuse_set(mts_reply_t *reply, uint32_t status);

inline constexpr size_t most_set_results = (MTS_MAX_PAYLOAD - pm::answer_header_size) / sizeof(pm_set_port_result_t);

void answer_sub_interfaces(mts_reply_t *reply, uint32_t status);

}  // namespace virtual_switch

#endif
