// SPDX-License-Identifier: Apache-2.0
// naive_port_record.h: one port record, from its base record and the elements of its answer.
#ifndef MODEL_NAIVE_PORT_RECORD_H
#define MODEL_NAIVE_PORT_RECORD_H

#include <string>
#include <vector>

#include "answer.h"
#include "port_mgr/port_mgr_common.h"

namespace model {

// What is printed is added to `printed`.
pm_port_info_t port_record(const uint8_t *base, const std::vector<element> &elements, std::string &printed);

}  // namespace model

#endif
