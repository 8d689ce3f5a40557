// SPDX-License-Identifier: Apache-2.0
// element_builder.h: the owner of an array of elements under construction.
#ifndef VIRTUAL_SWITCH_SERVICES_ELEMENT_BUILDER_H
#define VIRTUAL_SWITCH_SERVICES_ELEMENT_BUILDER_H

#include <memory>

#include "platform_dev/tlv_builder.h"

namespace virtual_switch {

struct tlv_builder_deleter {
    void operator()(tlv_builder_t *builder) const { tlv_builder_destroy(builder); }
};
using element_builder = std::unique_ptr<tlv_builder_t, tlv_builder_deleter>;

}  // namespace virtual_switch

#endif
