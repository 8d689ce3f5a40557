// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_WATCH_CHANGE_MARKS_H
#define PMCTL_WATCH_CHANGE_MARKS_H

#include "output/view.h"

namespace pmctl {

// Marks every cell of `now` whose text is another one in `before`. A cell is known by the title of its sheet, its row's
// heading and first cell, and its column; of several such rows the first is compared with the first. All cells of a
// row that is new are marked.
void mark_changes(view &now, const view &before);

}  // namespace pmctl

#endif
