// SPDX-License-Identifier: Apache-2.0
// document_sections.h: the sections of a file.
#ifndef VIRTUAL_SWITCH_CHASSIS_DOCUMENT_SECTIONS_H
#define VIRTUAL_SWITCH_CHASSIS_DOCUMENT_SECTIONS_H

#include <span>

#include "chassis/document.h"

namespace virtual_switch {

// Throws chassis_error for a section whose name is not among those known.
void check_section_names(const document_table &document, std::span<const std::string_view> known);

// Null when there is no such section.
const document_value *find_section(const document_table &document, std::string_view name);

// The tables of a section that may repeat, none when it is not there. Throws chassis_error for a section of another
// form.
const document_array &repeated_section(const document_table &document, std::string_view name);

}  // namespace virtual_switch

#endif
