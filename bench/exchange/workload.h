// SPDX-License-Identifier: Apache-2.0
// workload.h: what is asked for, and the answers to it as they travel.
#ifndef BENCH_EXCHANGE_WORKLOAD_H
#define BENCH_EXCHANGE_WORKLOAD_H

#include <cstdint>
#include <vector>

#include "bench/exchange/rival.h"
#include "port_mgr/opcodes.h"
#include "protocol/port_info_layout.h"

namespace bench {

// A request for one range of ports.
struct workload {
    uint32_t opcode;
    uint32_t ports;
    uint32_t elements;  // of each port
};

inline constexpr workload one_port{MTS_OPC_PM_GET_PORT_INFO, 1, 0};
inline constexpr workload brief_list{MTS_OPC_PM_GET_PORT_INFO_BRIEF, 48, 0};
inline constexpr workload full_list{MTS_OPC_PM_GET_PORT_INFO, 528, 12};
// As large as a packet can be.
inline constexpr workload large_list{MTS_OPC_PM_GET_PORT_INFO, 200 * 1024 / pm::base_record_size, 0};

inline constexpr workload workloads[] = {one_port, brief_list, full_list, large_list};

using bytes = std::vector<uint8_t>;

bytes answer_to(const workload &asked);

payload_sizes sizes_of(const workload &asked);

}  // namespace bench

#endif
