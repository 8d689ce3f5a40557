// SPDX-License-Identifier: Apache-2.0
// port_list.h: the ports that every decoder of the benchmark yields, and what all of them take and give.
#ifndef BENCH_DECODE_PORT_LIST_H
#define BENCH_DECODE_PORT_LIST_H

#include <cstdint>
#include <vector>

#include "port_mgr/port_info_record.h"

namespace bench {

using bytes = std::vector<uint8_t>;
using port_list = std::vector<pm_port_info_t>;

// Ports as a switch has them: every member of the base record and 12 attributes have a value.
port_list make_ports(uint32_t count);

}  // namespace bench

#endif
