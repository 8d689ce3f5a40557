// SPDX-License-Identifier: Apache-2.0
#include "bench/decode/protobuf_ports.h"

#include <algorithm>
#include <type_traits>

#include "bench/decode/port_members.h"
#include "bench/support/measure.h"

namespace bench {

namespace {

void write(const pm_port_info_t &port, proto::port &message) {
    message.set_description(port.description);
    message.set_fifth_bb_credit(port.bb_credit[4]);
#define WRITE(name) message.set_##name(port.name);
    PORT_NUMBERS(WRITE)
#undef WRITE
#define WRITE(name, count) \
    for (int i = 0; i < (count); ++i) message.add_##name(port.name[i]);
    PORT_LISTS(WRITE)
#undef WRITE
}

void read(const proto::port &message, pm_port_info_t &port) {
    std::ranges::copy(message.description(), port.description);
    port.bb_credit[4] = message.fifth_bb_credit();
#define READ(name) port.name = static_cast<decltype(port.name)>(message.name());
    PORT_NUMBERS(READ)
#undef READ
#define READ(name, count) \
    for (int i = 0; i < (count); ++i) port.name[i] = static_cast<std::decay_t<decltype(port.name[i])>>(message.name(i));
    PORT_LISTS(READ)
#undef READ
}

}  // namespace

protobuf_ports::protobuf_ports(const port_list &ports) {
    proto::port_list message;
    for (const pm_port_info_t &port : ports) write(port, *message.add_ports());
    encoded_ = message.SerializeAsString();
}

void protobuf_ports::decode() {
    message_ = std::make_unique<proto::port_list>();
    message_->ParseFromString(encoded_);
}

void protobuf_ports::decode_on_arena() {
    google::protobuf::Arena arena;
    auto *const message = google::protobuf::Arena::CreateMessage<proto::port_list>(&arena);
    message->ParseFromString(encoded_);
    touch(message);
}

void protobuf_ports::decode_again() { used_again_.ParseFromString(encoded_); }

port_list protobuf_ports::ports() const {
    port_list ports(static_cast<size_t>(message_->ports_size()));
    for (size_t i = 0; i < ports.size(); ++i) read(message_->ports(static_cast<int>(i)), ports[i]);
    return ports;
}

}  // namespace bench
