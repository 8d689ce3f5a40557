// SPDX-License-Identifier: Apache-2.0
// flatbuffers_ports.h: ports as a flatbuffer.
//
// What is measured is the verification, as for any bytes that come from elsewhere, and that each member is read once,
// into records whose memory is kept.
#ifndef BENCH_DECODE_FLATBUFFERS_PORTS_H
#define BENCH_DECODE_FLATBUFFERS_PORTS_H

#include "bench/decode/port_list.h"
#include "ports_generated.h"

namespace bench {

class flatbuffers_ports {
  public:
    explicit flatbuffers_ports(const port_list &ports);

    void decode();
    [[nodiscard]] const port_list &ports() const { return records_; }
    [[nodiscard]] size_t size() const { return encoded_.size(); }

  private:
    flatbuffers::DetachedBuffer encoded_;
    port_list records_;
};

}  // namespace bench

#endif
