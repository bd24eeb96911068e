// Checked casts between classes of the type tables (typ_ArchCompTable):
//
//   if (!nex_canDynamicCastPtr(object->DynTypeId(), Shape::TypeId())) return nullptr;
//   nex_canDynamicCastRef(object.DynTypeId(), Shape::TypeId(), __FILE__, __LINE__);  // raises
//
// The check answers whether the target class `to` is `from` or descends from it, on the
// tables' parent links. Tables are written only at start, so the checks may run on any
// thread afterwards.
#ifndef NEX_TYPETABLE_H
#define NEX_TYPETABLE_H

#include "VRKBasExport.h"

// True for equal ids without a look-up, otherwise whether `to` descends from `from`.
VRKLNU_EXPORT bool nex_canDynamicCastPtr(unsigned int from, unsigned int to);
// True where nex_canDynamicCastPtr is; otherwise raises nex_BadCastException ("Bad Cast:
// From `<to>' To '<from>'.", the quotes as they are) at the caller's file and line.
VRKLNU_EXPORT bool nex_canDynamicCastRef(unsigned int from, unsigned int to, const char* file,
                                         int line);

#endif  // NEX_TYPETABLE_H
