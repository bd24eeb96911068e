#include "thr_AtomicType.h"

template class thr_AtomicType<int>;
template class thr_AtomicType<double>;
template class thr_AtomicType<unsigned long long>;
