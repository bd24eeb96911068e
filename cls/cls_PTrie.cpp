#include "cls_PTrie.h"

CLS_PTRIE_INSTANTIATE(int, cls_Uid, 1);
