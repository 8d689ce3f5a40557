// SPDX-License-Identifier: Apache-2.0
// naive_attribute.h: how the value of an attribute travels.
#ifndef MODEL_NAIVE_ATTRIBUTE_H
#define MODEL_NAIVE_ATTRIBUTE_H

#include "bytes.h"

namespace model {

// The bytes of an attribute's value, 0 when it has none, as it is written and as it is read.
size_t written_width(uint8_t type);
size_t read_width(uint8_t type);

// The value as it travels, from a value in memory or the other way round: both are the same.
support::bytes travelling(uint8_t type, const support::bytes &value);

}  // namespace model

#endif
