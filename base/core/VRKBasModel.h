// A model: the static holder of one behaviour object, the factory through which the lower
// layers reach the library above them. The three models derive from it:
//
//   class VRKBasExceptionModel : public VRKBasModel<VRKBasExceptionFactory> { ... };
//   VRKBasExceptionModel::setBehavior(factory);   // null withdraws it
//
// The model does not own the factory: whoever installs one keeps it valid until it is
// replaced. Installing and reading are safe from any thread.
#ifndef VRKBASMODEL_H
#define VRKBASMODEL_H

#include <atomic>

template <class Factory>
class VRKBasModel {
 public:
  // Stores the factory; null withdraws it. Returns true.
  static bool setBehavior(Factory* factory) {
    s_Factory.store(factory);
    return true;
  }
  // The factory installed, null while there is none.
  static Factory* getBehavior() { return s_Factory.load(); }
  // Withdraws `factory` if it is the one installed; another one stays.
  static void withdrawBehavior(Factory* factory) {
    s_Factory.compare_exchange_strong(factory, nullptr);
  }

 private:
  // Defined once, in the library of the model that uses it.
  static std::atomic<Factory*> s_Factory;
};

// The factory that a package installs at its start and removes at its stop, under one rule
// for all: every start installs a fresh one; the stop withdraws it, if it is still the one
// installed, and deletes it, and never touches a factory that a client put in its place.
// Meant as a file-level static of the package: it has no constructor to run.
template <class Model, class Factory>
class VRKBasInstalledFactory {
 public:
  void Install() {
    m_Installed = new Factory;
    Model::setBehavior(m_Installed);
  }
  void Remove() {
    Model::withdrawBehavior(m_Installed);
    delete m_Installed;
    m_Installed = nullptr;
  }

 private:
  Factory* m_Installed = nullptr;
};

#endif  // VRKBASMODEL_H
