// The process's class registers: three cls_ClassRegistrar sets and the registration
// functions remembered for replay. Packages register their class families at start:
//
//   cls_MetadataRegistrar::Instance().initClassMetadata(Shape_InitializeMetadata, 2);
//
// The mask is a bit set, taken in this order: 1 remembers the function in the first list and
// runs it on the stored set; 2 runs it on the working set and remembers nothing; 4 remembers
// it in the second list and runs it on the auxiliary set. initMetadata replays the lists
// onto a registrar that the caller owns.
//
// A plain singleton: made at the first Instance, from start-up code on one thread, and
// destroyed at the stop of package cls.
#ifndef CLS_METADATAREGISTRAR_H
#define CLS_METADATAREGISTRAR_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cls_ClassRegistrar.h"
#include "omi_Singleton.h"

class cls_MetadataRegistrar;
extern template class VRKLNU_EXPORT omi_SingletonBase<cls_MetadataRegistrar>;

// Declares one class family to a registrar.
typedef void (*cls_MetadataFunction)(cls_ClassRegistrar& registrar);

class VRKLNU_EXPORT cls_MetadataRegistrar : public omi_Singleton<cls_MetadataRegistrar> {
 public:
  enum Mask : unsigned { kStored = 1, kWorking = 2, kAuxiliary = 4 };

  void initClassMetadata(cls_MetadataFunction function, unsigned mask);
  // Runs the first list (bit 1) and then the second (bit 4) on `target`, each in order.
  void initMetadata(cls_ClassRegistrar* target, unsigned mask) const;

  const cls_ClassRegistrar& GetStoredSet() const { return m_Stored; }
  const cls_ClassRegistrar& GetAuxiliarySet() const { return m_Auxiliary; }
  const cls_ClassRegistrar& GetWorkingSet() const { return m_Working; }

 private:
  friend class omi_SingletonBase<cls_MetadataRegistrar>;
  cls_MetadataRegistrar();
  ~cls_MetadataRegistrar();

  cls_ClassRegistrar m_Stored;
  cls_ClassRegistrar m_Auxiliary;
  cls_ClassRegistrar m_Working;
  cow_List<cls_MetadataFunction> m_StoredFunctions;
  cow_List<cls_MetadataFunction> m_AuxiliaryFunctions;
};

#endif  // CLS_METADATAREGISTRAR_H
