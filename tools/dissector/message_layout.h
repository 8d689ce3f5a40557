// SPDX-License-Identifier: Apache-2.0
// message_layout.h: what the requests and the answers hold, piece by piece.
#ifndef DISSECTOR_MESSAGE_LAYOUT_H
#define DISSECTOR_MESSAGE_LAYOUT_H

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace dissector {

enum class piece_kind : uint8_t {
    record,            // one record
    records,           // as many as a field in front of them counts
    elements,          // an array of elements, if there is something left
    aligned_elements,  // the same in its aligned form
    attribute          // one attribute that is configured
};

struct message_piece {
    piece_kind kind;
    std::string_view name;  // of the record, or of the elements' table
    std::string_view count = {};
    std::string_view only_with = {};  // a field that must have this value for the piece to be there
    uint32_t value = 0;
};

struct message_layout {
    uint32_t opcode;
    std::string_view name;
    std::vector<message_piece> request;
    std::vector<message_piece> answer;
};

std::vector<message_layout> message_layouts();

}  // namespace dissector

#endif
