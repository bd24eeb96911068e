// Names of the cursors and agents through which collections pass the store boundary. The
// stores define them; the mementos only hand them out.
#ifndef CLS_COLLECTIONFWD_H
#define CLS_COLLECTIONFWD_H

class cls_WriteListObj;
class cls_WriteMapInt2Obj;
class cls_WriteIntTableInt;
class cls_WriteMapString2Obj;
template <class T>
class cls_WriteListPrim;
template <class T>
class cls_WriteMapInt2Prim;
template <class T>
class cls_WriteMapString2Prim;

class cls_ReadListObj;
class cls_ReadMapInt2Obj;
class cls_ReadIntTableInt;
class cls_ReadMapString2Obj;
template <class T>
class cls_ReadListPrim;
template <class T>
class cls_ReadMapInt2Prim;
template <class T>
class cls_ReadMapString2Prim;

template <class T>
class cls_AgentListPrim;
class cls_AgentListObj;
template <class K>
class cls_AgentMapKey2Obj;
class cls_AgentBlob;

#endif  // CLS_COLLECTIONFWD_H
