// SPDX-License-Identifier: Apache-2.0
// ours.h: the library over its transport, and a service that answers what it has ready.
#ifndef BENCH_EXCHANGE_OURS_H
#define BENCH_EXCHANGE_OURS_H

#include "bench/exchange/workload.h"
#include "platform/types.h"

namespace bench {

// Answers all workloads, as messages and over CMI.
void serve_ports(const readiness &ready);

// Ways to ask for one of them.
void query(mts_handle_t handle, const workload &asked);             // blocking; the answer is not looked at
void query_and_parse(mts_handle_t handle, const workload &asked);   // the same, and the answer parsed
void send_and_receive(mts_handle_t handle, const workload &asked);  // send-only, the answer received later, and parsed
void get_over_cmi(mts_handle_t handle, const workload &asked);      // the configuration, parsed
void transport_alone(mts_handle_t handle, const workload &asked);   // the same bytes, without the library
void query_and_parse_brief(mts_handle_t handle, const workload &asked);

using way_to_ask = void (*)(mts_handle_t handle, const workload &asked);

// A client of a service that runs already.
rival our_client(std::string name, way_to_ask way, const workload &asked);

// The same with the service, of which there is one at a time.
rival our_rival(std::string name, way_to_ask way, const workload &asked);

}  // namespace bench

#endif
