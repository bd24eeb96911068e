#include "thr_ThreadId.h"

template class thr_ThreadSingletonBase<thr_ThreadId>;
template class thr_ThreadSingleton<thr_ThreadId>;
