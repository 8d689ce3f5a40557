// SPDX-License-Identifier: Apache-2.0
#include "answer_property.h"

namespace model {

void answer_property::set_elements(const std::vector<element> &all) {
    elements.clear();
    for (const element &each : all) {
        if (each.error != 0)
            elements.add_failure(each.error);
        else
            elements.add(each.type, each.value, each.length);
    }
}

}  // namespace model
