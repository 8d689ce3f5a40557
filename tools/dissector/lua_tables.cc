// SPDX-License-Identifier: Apache-2.0
#include "lua_tables.h"

#include "if_index_kinds.h"
#include "message_layout.h"
#include "tlv_array_format.h"
#include "value_texts.h"
#include "wire_element.h"

namespace dissector {
namespace {

// No text here has a quote or a backslash.
struct quoted {
    std::string_view text;
};
std::ostream &operator<<(std::ostream &to, const quoted &what) { return to << '"' << what.text << '"'; }

void write(std::ostream &to, const wire_field &field) {
    to << "{name = " << quoted{field.name} << ", at = " << field.at << ", width = " << field.width;
    if (field.count != 1) to << ", count = " << field.count;
    to << ", kind = " << quoted{field.kind};
    if (!field.texts.empty()) to << ", texts = " << quoted{field.texts};
    to << '}';
}

void write_value_tables(std::ostream &to) {
    to << "  texts = {\n";
    for (const value_table &table : value_tables()) {
        to << "    " << table.name << " = {\n";
        for (const value_row &row : table.rows) to << "      [" << row.value << "] = " << quoted{row.text} << ",\n";
        to << "    },\n";
    }
    to << "  },\n";
}

void write_records(std::ostream &to) {
    to << "  records = {\n";
    for (const wire_record &record : wire_records()) {
        to << "    " << record.name << " = {size = " << record.size << ", fields = {\n";
        for (const wire_field &field : record.fields) {
            to << "      ";
            write(to, field);
            to << ",\n";
        }
        to << "    }},\n";
    }
    to << "  },\n";
}

void write_elements(std::ostream &to, std::string_view name, const std::vector<wire_element> &elements) {
    to << "    " << name << " = {\n";
    for (const wire_element &element : elements) {
        to << "      [" << element.type << "] = {record = " << quoted{element.record} << ", fields = {";
        for (const wire_field &field : element.fields) {
            if (&field != element.fields.data()) to << ", ";
            write(to, field);
        }
        to << "}},\n";
    }
    to << "    },\n";
}

void write_attributes(std::ostream &to) {
    to << "  attributes = {\n";
    for (const config_attribute &attribute : config_attributes()) {
        to << "    [" << unsigned{attribute.number} << "] = {title = " << quoted{attribute.title} << ", value = ";
        write(to, attribute.value);
        to << "},\n";
    }
    to << "  },\n";
}

std::string_view word_of(piece_kind kind) {
    switch (kind) {
        case piece_kind::record:
            return "record";
        case piece_kind::records:
            return "records";
        case piece_kind::elements:
            return "elements";
        case piece_kind::aligned_elements:
            return "aligned_elements";
        case piece_kind::attribute:
            break;
    }
    return "attribute";
}

void write_pieces(std::ostream &to, std::string_view name, const std::vector<message_piece> &pieces) {
    to << "      " << name << " = {\n";
    for (const message_piece &piece : pieces) {
        to << "        {kind = " << quoted{word_of(piece.kind)} << ", name = " << quoted{piece.name};
        if (!piece.count.empty()) to << ", count = " << quoted{piece.count};
        if (!piece.only_with.empty()) to << ", only_with = " << quoted{piece.only_with} << ", value = " << piece.value;
        to << "},\n";
    }
    to << "      },\n";
}

void write_messages(std::ostream &to) {
    to << "  messages = {\n";
    for (const message_layout &message : message_layouts()) {
        to << "    [" << message.opcode << "] = {\n      name = " << quoted{message.name} << ",\n";
        write_pieces(to, "request", message.request);
        write_pieces(to, "answer", message.answer);
        to << "    },\n";
    }
    to << "  },\n";
}

void write_bits(std::ostream &to, std::string_view name, const platform_dev::bit_field &field) {
    to << ", " << name << " = {shift = " << unsigned{field.shift} << ", bits = " << unsigned{field.bits} << '}';
}

// How interfaces are named. Slots, and ports in them, count from 1.
void write_interface_kinds(std::ostream &to) {
    to << "  interface_kinds = {\n";
    for (const auto &[type, name, layout] : platform_dev::interface_kinds) {
        const bool has_slot = layout.unit_is == platform_dev::unit_kind::slot;
        to << "    [" << unsigned{type} << "] = {name = " << quoted{name} << ", base = " << (has_slot ? 1 : 0);
        write_bits(to, "unit", layout.unit);
        write_bits(to, "number", layout.number);
        write_bits(to, "sub_intf", layout.sub_intf);
        to << "},\n";
    }
    to << "  },\n";
}

void write_element_array(std::ostream &to) {
    to << "  element_array = {mark = " << platform_dev::tlv_array_mark
       << ", header_size = " << platform_dev::tlv_array_header_size
       << ", count_at = " << platform_dev::tlv_array_count_offset
       << ", bytes_at = " << platform_dev::tlv_array_bytes_offset
       << ", element_header_size = " << platform_dev::tlv_element_header_size
       << ", alignment = " << platform_dev::tlv_array_alignment << "},\n";
}

}  // namespace

void write_tables(std::ostream &to) {
    to << "-- SPDX-License-Identifier: Apache-2.0\n"
          "-- A dissector for captures of the port manager's messages. Made by the build: do not edit.\n"
          "local protocol = {\n";
    write_value_tables(to);
    write_records(to);
    to << "  elements = {\n";
    write_elements(to, "port_attributes", port_attribute_elements());
    write_elements(to, "sfp_elements", sfp_elements());
    to << "  },\n";
    write_attributes(to);
    write_messages(to);
    write_interface_kinds(to);
    write_element_array(to);
    to << "}\n\n";
}

}  // namespace dissector
