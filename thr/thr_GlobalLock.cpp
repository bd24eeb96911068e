#include "thr_GlobalLock.h"

template class omi_SingletonBase<thr_GlobalLock>;

thr_GlobalLock::thr_GlobalLock() : m_Mutex(VRKBasAtiThreadingModel::getBehavior()->NewMutex()) {}

thr_GlobalLock::~thr_GlobalLock() {
  delete m_Mutex;
}
