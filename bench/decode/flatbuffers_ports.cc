// SPDX-License-Identifier: Apache-2.0
#include "bench/decode/flatbuffers_ports.h"

#include <algorithm>
#include <cstring>

#include "bench/decode/port_members.h"
#include "bench/support/measure.h"

namespace bench {

namespace {

flatbuffers::Offset<flat::port> write(flatbuffers::FlatBufferBuilder &builder, const pm_port_info_t &port) {
    const auto description = builder.CreateString(port.description);
    flat::portBuilder table(builder);
    table.add_description(description);
    table.add_fifth_bb_credit(port.bb_credit[4]);
#define WRITE(name) table.add_##name(port.name);
    PORT_NUMBERS(WRITE)
#undef WRITE
#define WRITE(name, count)                       \
    flat::name##_list name;                      \
    std::memcpy(&name, port.name, sizeof(name)); \
    table.add_##name(&name);
    PORT_LISTS(WRITE)
#undef WRITE
    return table.Finish();
}

void read(const flat::port &table, pm_port_info_t &port) {
    const flatbuffers::String &description = *table.description();
    std::memcpy(port.description, description.data(), std::min<size_t>(description.size(), sizeof port.description));
    port.bb_credit[4] = table.fifth_bb_credit();
#define READ(name) port.name = table.name();
    PORT_NUMBERS(READ)
#undef READ
#define READ(name, count) std::memcpy(port.name, table.name(), sizeof *table.name());
    PORT_LISTS(READ)
#undef READ
}

}  // namespace

flatbuffers_ports::flatbuffers_ports(const port_list &ports) : records_(ports.size()) {
    flatbuffers::FlatBufferBuilder builder;
    std::vector<flatbuffers::Offset<flat::port>> tables;
    for (const pm_port_info_t &port : ports) tables.push_back(write(builder, port));
    builder.Finish(flat::Createport_listDirect(builder, &tables));
    encoded_ = builder.Release();
}

void flatbuffers_ports::decode() {
    flatbuffers::Verifier verifier(encoded_.data(), encoded_.size());
    require(flat::Verifyport_listBuffer(verifier), "flatbuffers verification");
    const auto &tables = *flat::Getport_list(encoded_.data())->ports();
    for (flatbuffers::uoffset_t i = 0; i < records_.size(); ++i) read(*tables.Get(i), records_[i]);
}

}  // namespace bench
