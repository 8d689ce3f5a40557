// SPDX-License-Identifier: Apache-2.0
// wire_element.h: what travels as a type and a value.
#ifndef DISSECTOR_WIRE_ELEMENT_H
#define DISSECTOR_WIRE_ELEMENT_H

#include "wire_record.h"

namespace dissector {

// An element of an array of elements: a type, and the fields of its value.
struct wire_element {
    uint16_t type;
    std::string_view record;  // where the fields have their names from
    std::vector<wire_field> fields;
};

// Attributes of a port, and what a line card adds to the readings of a transceiver.
std::vector<wire_element> port_attribute_elements();
std::vector<wire_element> sfp_elements();

// An attribute that can be configured.
struct config_attribute {
    uint8_t number;
    std::string title;
    wire_field value;
};
std::vector<config_attribute> config_attributes();

}  // namespace dissector

#endif
