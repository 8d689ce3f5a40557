// SPDX-License-Identifier: Apache-2.0
// process_lock.h: std::shared_mutex for code that needs no C++ run-time library.
#ifndef PLATFORM_DEV_CHASSIS_DB_PROCESS_LOCK_H
#define PLATFORM_DEV_CHASSIS_DB_PROCESS_LOCK_H

#include <pthread.h>

namespace platform_dev {

// Locking fails only for a thread that holds it already.
class process_lock {
  public:
    void lock() { pthread_rwlock_wrlock(&lock_); }
    void unlock() { pthread_rwlock_unlock(&lock_); }
    void lock_shared() { pthread_rwlock_rdlock(&lock_); }
    void unlock_shared() { pthread_rwlock_unlock(&lock_); }

  private:
    pthread_rwlock_t lock_ = PTHREAD_RWLOCK_INITIALIZER;
};

}  // namespace platform_dev

#endif
