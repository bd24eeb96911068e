#include "thr_ThreadId.h"

template class thr_ThreadSingletonBase<thr_ThreadId>;
