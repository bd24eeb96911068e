// The root of every error that the library raises. Errors travel as C++ exceptions, by value
// and of their exact class, raised through Throw with the source file and line of the raise:
//
//   nex_TextException error(nex_Translate("cannot open %s", name));
//   NEX_THROW(error);                       // file name without directories, and the line
//   ...
//   catch (const nex_Exception& e) { aio_cerr << e.DeveloperReport() << aio_endl; }
//
// An exception is also a persistent object: it has an identity (cls_Uid), writes itself
// with DBWrite and is rebuilt through its class's read constructor, so that an error can be
// stored or sent and raised again. Copy gives a heap copy of the exact class and Propagate
// raises a copy of the exact class: together they carry an error to another thread, where
// Propagate raises it again with its location. Objects are not shared between threads: one
// thread at a time uses an exception and its copies. The library must be up.
#ifndef NEX_EXCEPTION_H
#define NEX_EXCEPTION_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "atr_translate.h"
#include "cls_Uid.h"
#include "cls_WriteVisitor.h"
#include "cow_COW.h"
#include "cow_CountedHld.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;

// Raises the exception object with the raise site's source name and line.
#define NEX_THROW(exception) (exception).Throw(nex_SourceName(__FILE__).c_str(), __LINE__)

// The name of a source file as the raise sites give it: without directories and extension.
VRKLNU_EXPORT cow_String nex_SourceName(const char* path);

// A user message: the format, translated, with the values substituted at indices 1, 2, ...
inline void nex_SubstituteFrom(atr_translate&, int) {}
template <class Value, class... Rest>
void nex_SubstituteFrom(atr_translate& format, int index, const Value& value, const Rest&... rest) {
  atr_SubstituteFormat(format, index, value);
  nex_SubstituteFrom(format, index + 1, rest...);
}
template <class... Values>
atr_String nex_Translate(const char* format, const Values&... values) {
  atr_translate message(format);
  nex_SubstituteFrom(message, 1, values...);
  return message.Result();
}

class VRKLNU_EXPORT nex_Exception : public mem_AllocationOperators {
 public:
  nex_Exception(const nex_Exception& other);
  nex_Exception& operator=(const nex_Exception&) = delete;
  virtual ~nex_Exception();

  // "Exception: <user report> in file <file> at line <line>".
  virtual atr_String DeveloperReport() const;
  // The message proper, AsString().
  virtual atr_String UserReport() const;
  virtual atr_String AsString() const = 0;
  // Raises a copy of this object's exact class.
  [[noreturn]] virtual void Propagate() const = 0;
  // A heap copy of the exact class; the caller owns it.
  virtual nex_Exception* Copy() const = 0;
  virtual unsigned DynTypeId() const;
  // Writes this level: "m_FromFile", then "m_FromLine".
  virtual void DBWrite(const cls_WriteVisitor& visitor) const;

  // Records the raise site and raises (Propagate). Library code raises only through this,
  // normally by NEX_THROW. Calling it again overwrites the location.
  [[noreturn]] void Throw(const char* file, int line);

  static unsigned TypeId() { return 0x1F0001; }
  // Declares the class (abstract, version 800, no base class) with its fields.
  static void InitializeMetadata(cls_ClassRegistrar& registrar);

  const cow_String& FromFile() const { return m_FromFile; }
  int FromLine() const { return m_FromLine; }
  const cls_Uid& Uid() const { return m_Uid; }

 protected:
  nex_Exception();
  // Reads "m_FromFile" (default "0", the string of the number 0, as stored records expect)
  // and "m_FromLine" (default 0), then the identity.
  explicit nex_Exception(const cls_ReadVisitor& visitor);

  // Opens the record of one level of a derived class and writes the parent's level in its
  // base scope. False when the store declines the record or has it already: the caller then
  // writes nothing.
  template <class Parent>
  static bool StartLevel(const Parent& self, const cls_WriteVisitor& visitor, unsigned typeId,
                         const cls_Uid& uid) {
    if (!visitor.StartWrite(typeId, uid)) return false;
    cls_WriteVisitor base(visitor, Parent::TypeId());
    self.Parent::DBWrite(base);
    return true;
  }

 private:
  cow_String m_FromFile;
  int m_FromLine = 0;
  cls_Uid m_Uid;
};

// What the concrete classes' Propagate and Copy do: raise a stack copy of the exact class,
// and make a heap copy of it.
template <class T>
[[noreturn]] void nex_RaiseCopy(const T& error) {
  T copy(error);
  throw copy;
}
template <class T>
nex_Exception* nex_HeapCopy(const T& error) {
  return new T(error);
}

// What every concrete exception class defines for itself so that a raise, a copy and a
// stored record keep its exact class: it derives from this template with itself as `Self`
// and its type id, below its parent class `Parent`.
template <class Self, unsigned kTypeId, class Parent = nex_Exception>
class nex_ConcreteException : public Parent {
 public:
  using Parent::Parent;

  [[noreturn]] void Propagate() const override { nex_RaiseCopy(static_cast<const Self&>(*this)); }
  nex_Exception* Copy() const override { return nex_HeapCopy(static_cast<const Self&>(*this)); }
  unsigned DynTypeId() const override { return kTypeId; }
  static unsigned TypeId() { return kTypeId; }
};

// Exceptions of any class held with shared-until-written semantics.
extern template class VRKLNU_EXPORT cow_CountedHld<nex_Exception>;
extern template class VRKLNU_EXPORT cow_COW<nex_Exception, cow_Virtual<nex_Exception>>;

#endif  // NEX_EXCEPTION_H
