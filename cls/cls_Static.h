// Per-thread constants for callers that need one to pass: a shared int value and a shared
// identity. A thread singleton at destruct level 4, so it goes before the thread's
// cls_UidCatalog, which its uid comes from.
//
//   const cls_Uid& uid = cls_Static::Instance().ConstUid();
#ifndef CLS_STATIC_H
#define CLS_STATIC_H

#include "VRKBasExport.h"
#include "cls_Uid.h"
#include "cow_COW.h"
#include "thr_ThreadSingleton.h"

class cls_Static;
extern template class VRKLNU_EXPORT thr_ThreadSingletonBase<cls_Static>;

class VRKLNU_EXPORT cls_Static : public thr_ThreadSingleton<cls_Static> {
 public:
  static constexpr thr_ThreadObjectDestructLevel kDestructLevel = 4;

  const cow_COW<int, cow_Direct<int>>& ConstIntCOW() const { return m_IntCOW; }
  const cls_Uid& ConstUid() const { return m_Uid; }

 private:
  friend class thr_ThreadSingletonBase<cls_Static>;
  cls_Static();
  ~cls_Static() = default;

  cow_COW<int, cow_Direct<int>> m_IntCOW;
  cls_Uid m_Uid;
};

#endif  // CLS_STATIC_H
