// SPDX-License-Identifier: Apache-2.0
// What decoding an answer costs, beside two floors over the same bytes: memcpy, and a plain byte-swap loop.
#include <cstdlib>
#include <cstring>
#include <string>

#include "bench/support/report.h"
#include "platform_dev/if_index_dev.h"
#include "platform_dev/tlv_builder.h"
#include "port_mgr/port_mgr_common.h"
#include "protocol/port_info_layout.h"

namespace {

// Elements that each port of an answer has.
constexpr uint16_t attributes_of_a_port[] = {4, 22, 23, 24, 30, 31, 32, 37, 42, 43, 74, 98};

using bytes = std::vector<uint8_t>;

uint32_t wire_index(uint32_t port) {
    if_index_t if_index = 0;
    if_index_slot_port_init(&if_index, IF_TYPE_FC, static_cast<uint8_t>(port / 48), static_cast<uint8_t>(port % 48));
    return hton_if_index(if_index);
}

bytes base_record(uint32_t port) {
    bytes record(pm::base_record_size);
    for (size_t i = 0; i < record.size(); ++i) record[i] = static_cast<uint8_t>(i);
    pm::store(record.data(), wire_index(port));
    return record;
}

void add_attributes(tlv_builder_t *builder, uint32_t port, size_t count) {
    uint8_t value[pm::attribute_value_size] = {0, 0, 0, 0, 1, 2, 3, 4};
    pm::store(value, wire_index(port));
    for (size_t i = 0; i < count; ++i) {
        tlv_builder_add(builder, attributes_of_a_port[i % std::size(attributes_of_a_port)], value, sizeof value);
    }
}

// The array with the zeroed bytes that the transport leaves behind a payload.
bytes finish(tlv_builder_t *builder) {
    const auto *const data = static_cast<const uint8_t *>(tlv_builder_data(builder));
    bytes array(data, data + tlv_builder_size(builder));
    array.resize(array.size() + TLV_ZEROED_TAIL_SIZE);
    tlv_builder_destroy(builder);
    return array;
}

bytes answer(uint32_t ports) {
    bytes payload(pm::answer_header_size);
    pm::store_be32(&payload[pm::answer_status_size], ports);
    tlv_builder_t *const builder = tlv_builder_create(0);
    for (uint32_t port = 0; port < ports; ++port) {
        const bytes record = base_record(port);
        payload.insert(payload.end(), record.begin(), record.end());
        add_attributes(builder, port, std::size(attributes_of_a_port));
    }
    const bytes attributes = finish(builder);
    payload.insert(payload.end(), attributes.begin(), attributes.end());
    return payload;
}

// What is compared: the same bytes copied, and the same bytes swapped word by word.
auto copying(const bytes &from, bytes &to) {
    return [&from, &to] {
        std::memcpy(to.data(), from.data(), to.size());
        bench::touch(to.data());
    };
}

auto swapping(const bytes &from, bytes &to) {
    return [&from, &to] {
        for (size_t i = 0; i + 4 <= to.size(); i += 4) pm::store(&to[i], pm::load_be32(&from[i]));
        bench::touch(to.data());
    };
}

auto parsing(const bytes &base, const void *attributes, pm_port_info_t &record) {
    return [&base, attributes, &record] {
        pm_parse_port_info(base.data(), attributes, &record);
        bench::touch(&record);
    };
}

void measure_one_record(bench::report &report) {
    const bytes base = base_record(0);
    const bytes record_bytes(sizeof(pm_port_info_t));
    bytes copy(record_bytes.size());
    pm_port_info_t record{};
    bench::contest contest;
    contest.add("base record without elements", parsing(base, nullptr, record));
    contest.add("memcpy of 388 bytes", copying(record_bytes, copy));
    const auto rows = contest.run();
    report.table("one record", "ns", rows);
    report.at_most("base record, beyond 2 x memcpy, ns", rows[0].took.median - 2 * rows[1].took.median, 15);
}

void measure_foreign_elements(bench::report &report) {
    constexpr size_t elements = 4000;
    tlv_builder_t *const builder = tlv_builder_create(0);
    add_attributes(builder, 1, elements);
    const bytes attributes = finish(builder);
    const bytes base = base_record(0);
    bytes copy(attributes.size());
    pm_port_info_t record{};
    bench::contest contest;
    contest.add("visit of another port's element", parsing(base, attributes.data(), record), elements);
    contest.add("memcpy of its 12 bytes", copying(attributes, copy), elements);
    const auto rows = contest.run();
    report.table("walk", "ns", rows);
    report.at_most("visit of another port's element, ns", rows[0].took.median, sizeof(void *) == 8 ? 3.0 : 3.5);
}

void measure_answer(bench::report &report, uint32_t ports) {
    const bytes payload = answer(ports);
    bytes copy(payload.size() - TLV_ZEROED_TAIL_SIZE);
    const auto parse = [&] {
        uint32_t count = 0;
        pm_port_info_t *records = nullptr;
        pm_parse_get_port_info_res_payload(payload.data(), static_cast<uint32_t>(copy.size()), &count, &records);
        bench::touch(records);
        std::free(records);
    };
    bench::contest contest;
    contest.add("our answer", parse, ports);
    contest.add("memcpy", copying(payload, copy), ports);
    contest.add("byte swap", swapping(payload, copy), ports);
    report.table(std::to_string(ports) + " ports with 12 elements each", "ns a port", contest.run());
}

}  // namespace

int main(int argc, char **argv) {
    bench::report report(argc, argv, "decoding");
    measure_one_record(report);
    measure_foreign_elements(report);
    for (const uint32_t ports : {1u, 16u, 48u, 528u}) measure_answer(report, ports);
    report.write();
    return 0;
}
