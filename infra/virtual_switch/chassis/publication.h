// SPDX-License-Identifier: Apache-2.0
// publication.h: what the chassis database shows of a chassis.
#ifndef VIRTUAL_SWITCH_CHASSIS_PUBLICATION_H
#define VIRTUAL_SWITCH_CHASSIS_PUBLICATION_H

#include "chassis/model.h"
#include "platform_dev/chassis_db.h"

namespace virtual_switch {

platform_dev::chassis publication_of(const chassis_model &model);

}  // namespace virtual_switch

#endif
