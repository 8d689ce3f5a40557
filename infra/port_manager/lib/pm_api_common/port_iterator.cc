// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_iterator.h"

#include <cstring>

#include "pm_api_common/assertion.h"
#include "pm_api_common/heap.h"
#include "port_mgr/status.h"

namespace {

constexpr uint32_t valid_mark = 1;

}  // namespace

uint32_t pm_iterator_create(pm_iterator_t **iterator, const mts_msg_t *message) {
    const bool valid = iterator != nullptr && message != nullptr;
    PM_ASSERT(valid);
    if (!valid) return PM_ERR_INVALID_PARAM;

    *iterator = nullptr;
    auto *const made = static_cast<pm_iterator_t *>(PM_ALLOCATE(sizeof(pm_iterator_t), pm::largest_array));
    if (made == nullptr) return pm::out_of_memory;
    *made = {valid_mark, mts_msg_id_get(message), {}, {}};
    std::memcpy(made->message_words, message->word, sizeof made->message_words);
    *iterator = made;
    return 0;
}

uint32_t pm_iterator_destroy(pm_iterator_t **iterator) {
    PM_ASSERT(iterator != nullptr);
    if (iterator == nullptr) return PM_ERR_INVALID_PARAM;
    const bool valid = *iterator != nullptr && (*iterator)->mark == valid_mark;
    PM_ASSERT(valid);
    if (!valid) return PM_ERR_INVALID_PARAM;

    std::free(*iterator);
    *iterator = nullptr;
    return 0;
}
