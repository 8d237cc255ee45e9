// A lock that nothing sets up or takes down, so that it works before and after all other static
// data.
#pragma once

#include <pthread.h>

// NOLINTBEGIN(readability-identifier-naming): the names are Windows'.
struct SRWLOCK {
  pthread_mutex_t mutex;
};

inline constexpr SRWLOCK SRWLOCK_INIT{PTHREAD_MUTEX_INITIALIZER};

inline void AcquireSRWLockExclusive(SRWLOCK* lock) {
  pthread_mutex_lock(&lock->mutex);
}

inline void ReleaseSRWLockExclusive(SRWLOCK* lock) {
  pthread_mutex_unlock(&lock->mutex);
}
// NOLINTEND(readability-identifier-naming)
