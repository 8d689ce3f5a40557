/* SPDX-License-Identifier: Apache-2.0 */
/** @file
 * Interfaces by the names that people read. */
#ifndef PORT_MGR_CPP_NAMES_HPP
#define PORT_MGR_CPP_NAMES_HPP

#include <array>
#include <string>

#include "platform/if_index.h"

namespace port_mgr {

/** The display name of an interface, as sprintf_if_index() writes it. Thread-safe.
 *  @param index  the interface, in host order
 *  @return its name, such as "fc1/4" */
inline std::string interface_name(if_index_t index) {
    std::array<char, 256> text{};  // what sprintf_if_index may use
    sprintf_if_index(text.data(), index);
    return text.data();
}

}  // namespace port_mgr

#endif
