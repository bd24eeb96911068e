#include "thr_ThreadSingleton.h"

#include <pthread.h>

#include <cerrno>

#include "omi_FatalError.h"
#include "thr_GlobalLock.h"

// Win32's TLS index is a pthread key here; -1 stands for none, as TLS_OUT_OF_INDEXES did.
void* thr_ThreadLocalSlot::Get() const {
  if (LiveCount() < 1) return nullptr;
  return pthread_getspecific(static_cast<pthread_key_t>(Index()));
}

void thr_ThreadLocalSlot::Attach(void* object) {
  {
    thr_Hold<thr_GlobalLock> hold(thr_GlobalLock::Instance());
    if (m_Live.load(std::memory_order_relaxed) == 0) {
      pthread_key_t key;
      const int error = pthread_key_create(&key, nullptr);
      if (error != 0) throw omi_FatalError("no thread-local slot is left", error);
      m_Index.store(static_cast<int>(key), std::memory_order_relaxed);
    }
    m_Live.fetch_add(1, std::memory_order_release);
  }
  pthread_setspecific(static_cast<pthread_key_t>(Index()), object);
}

void thr_ThreadLocalSlot::Detach() {
  pthread_setspecific(static_cast<pthread_key_t>(Index()), nullptr);
  thr_Hold<thr_GlobalLock> hold(thr_GlobalLock::Instance());
  if (m_Live.fetch_sub(1, std::memory_order_release) != 1) return;
  pthread_key_delete(static_cast<pthread_key_t>(Index()));
  m_Index.store(-1, std::memory_order_relaxed);
}
