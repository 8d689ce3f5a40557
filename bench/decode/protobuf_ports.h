// SPDX-License-Identifier: Apache-2.0
// protobuf_ports.h: ports as protobuf messages.
//
// What is measured is the parse: its message is what a program works with. A fresh message is what a program that asks
// for ports gets, as it gets an array of its own from us; beside it stand a message on an arena of its own, and one
// whose memory for texts and lists is used again, as protobuf advises where messages follow each other.
#ifndef BENCH_DECODE_PROTOBUF_PORTS_H
#define BENCH_DECODE_PROTOBUF_PORTS_H

#include <memory>
#include <string>

#include "bench/decode/port_list.h"
#include "ports.pb.h"

namespace bench {

class protobuf_ports {
  public:
    explicit protobuf_ports(const port_list &ports);

    void decode();
    void decode_on_arena();
    void decode_again();
    [[nodiscard]] port_list ports() const;
    [[nodiscard]] size_t size() const { return encoded_.size(); }

  private:
    std::string encoded_;
    std::unique_ptr<proto::port_list> message_;
    proto::port_list used_again_;
};

}  // namespace bench

#endif
