#include "cls_Static.h"

template class thr_ThreadSingletonBase<cls_Static>;

cls_Static::cls_Static() : thr_ThreadSingleton<cls_Static>(kDestructLevel), m_IntCOW(0) {}
