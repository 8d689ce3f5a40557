// SPDX-License-Identifier: Apache-2.0
// json_ports.h: ports as JSON.
//
// What is measured is the parse and that each member is taken by its name, into records whose memory is kept.
#ifndef BENCH_DECODE_JSON_PORTS_H
#define BENCH_DECODE_JSON_PORTS_H

#include <string>

#include "bench/decode/port_list.h"

namespace bench {

class json_ports {
  public:
    explicit json_ports(const port_list &ports);

    void decode();
    [[nodiscard]] const port_list &ports() const { return records_; }
    [[nodiscard]] size_t size() const { return encoded_.size(); }

  private:
    std::string encoded_;
    port_list records_;
};

}  // namespace bench

#endif
