// Typed writing of binary data. bio_Ofilter is the writing side of the filters: one virtual
// operation per scalar type and per array type, with the stream operators forwarding to them.
// What varies is the encoding: bio_OinternalFilter (below) writes values as they stand in
// memory to a device (bio_Odevice.h), bio_OexternalMemFilter the fixed external form into
// memory, and bio_IOmemFilter into its own growing block.
//
//   bio_OmemoryDevice out(buffer);
//   bio_OinternalFilter writer(out);
//   writer << 12 << 3.5;
//   writer.putString("name");
//
// The virtual operations keep a fixed order (the layout of the class's table of virtual
// functions), which clients built against the library rely on: putString, put, the three raw
// movers and then putArray. This is not the mirror image of bio_Ifilter, on purpose.
//
// Failure: a full device raises its own error (bio_OmemoryDevice: omi_FatalError); allocation
// failure raises through the memory layer. A filter belongs to one thread, isn't copied and
// keeps its device (not owned) for life.
#ifndef BIO_OFILTER_H
#define BIO_OFILTER_H

#include "HashTable.h"
#include "VRKBasExport.h"
#include "bio_Scalars.h"
#include "mem_Alloc.h"

class bio_Odevice;
class omi_complex;

class VRKLNU_EXPORT bio_Ofilter : public mem_AllocationOperators {
 public:
  virtual ~bio_Ofilter();

  // Writes the string's length (strlen) as an int, then its bytes without the terminator.
  // Null is written as the empty string.
  virtual void putString(const char* s);

  virtual void put(const double& value) = 0;
  virtual void put(const float& value) = 0;
  virtual void put(const unsigned& value) = 0;
  virtual void put(const int& value) = 0;
  virtual void put(const unsigned short& value) = 0;
  virtual void put(const short& value) = 0;
  virtual void put(const unsigned char& value) = 0;
  virtual void put(const char& value) = 0;
  virtual void put(const bool& value) = 0;

 protected:
  // The raw movers. Here they write through the device: longMove copies span by span,
  // shortMove, the path of every scalar, byte by byte; shortSwap is shortMove taking the bytes
  // of `src` from its last one downward.
  virtual void longMove(const char* src, unsigned n);
  virtual void shortMove(const char* src, unsigned n);
  virtual void shortSwap(const char* src, unsigned n);

 public:
  virtual void putArray(const double* values, unsigned n) = 0;
  virtual void putArray(const float* values, unsigned n) = 0;
  virtual void putArray(const unsigned* values, unsigned n) = 0;
  virtual void putArray(const int* values, unsigned n) = 0;
  virtual void putArray(const unsigned short* values, unsigned n) = 0;
  virtual void putArray(const short* values, unsigned n) = 0;
  virtual void putArray(const unsigned char* values, unsigned n) = 0;
  virtual void putArray(const char* values, unsigned n) = 0;
  virtual void putArray(const bool* values, unsigned n) = 0;

  bio_Ofilter& operator<<(const double& value) { return Write(value); }
  bio_Ofilter& operator<<(const float& value) { return Write(value); }
  bio_Ofilter& operator<<(const unsigned& value) { return Write(value); }
  bio_Ofilter& operator<<(const int& value) { return Write(value); }
  bio_Ofilter& operator<<(const unsigned short& value) { return Write(value); }
  bio_Ofilter& operator<<(const short& value) { return Write(value); }
  bio_Ofilter& operator<<(const unsigned char& value) { return Write(value); }
  bio_Ofilter& operator<<(const char& value) { return Write(value); }
  bio_Ofilter& operator<<(const bool& value) { return Write(value); }
  // A pointer would be written as a bool; strings go through putString.
  template <class T>
  bio_Ofilter& operator<<(T* pointer) = delete;

  // Objects numbered for a client that sends a shared object once and refers to it by
  // number afterwards: 2047 buckets, object to number, with the next number to give. The
  // filter only holds them.
  HashTable<void*, unsigned> objectTable;
  int nextObject;

 protected:
  // `device` is not owned; null for filters that write memory of their own.
  explicit bio_Ofilter(bio_Odevice* device);

  bio_Odevice* device;

  // The host form, which bio_OfilterOf takes unless a filter has its own: a value as its
  // bytes through shortMove, an array as its bytes through longMove.
  void PutValue(const void* value, bio_Element element);
  void PutValues(const void* values, unsigned n, bio_Element element);

 private:
  template <class T>
  bio_Ofilter& Write(const T& value) {
    put(value);
    return *this;
  }
};

// Gives a writing filter its put and putArray of each scalar type, each a call of the
// filter's own PutValue(const void* value, bio_Element) or PutValues(const void* values,
// unsigned n, bio_Element), which bio_Ofilter gives in the host form: a filter writes its
// encoding once, for any element. The filter derives from bio_OfilterOf<itself> and names
// the template a friend (`template <class, class> friend class bio_OfilterOf;`).
template <class Derived, class Types = bio_Scalars>
class bio_OfilterOf;

template <class Derived>
class bio_OfilterOf<Derived, bio_TypeList<>> : public bio_Ofilter {
 protected:
  using bio_Ofilter::bio_Ofilter;
};

template <class Derived, class T, class... Rest>
class bio_OfilterOf<Derived, bio_TypeList<T, Rest...>>
    : public bio_OfilterOf<Derived, bio_TypeList<Rest...>> {
  using Next = bio_OfilterOf<Derived, bio_TypeList<Rest...>>;

 public:
  using Next::put;
  using Next::putArray;
  void put(const T& value) override {
    static_cast<Derived&>(*this).PutValue(&value, bio_elementOf<T>());
  }
  void putArray(const T* values, unsigned n) override {
    static_cast<Derived&>(*this).PutValues(values, n, bio_elementOf<T>());
  }

 protected:
  using Next::Next;
};

// Writes a complex number as its tag (int) and two doubles: the stored real and imaginary
// parts for tag 0, the stored modulus and argument for tag 1, and for any other tag the
// modulus and the argument in radians as converted. The tag goes out as it is, so a reader
// takes those two numbers in the form the tag names; this is intended.
VRKLNU_EXPORT bio_Ofilter& operator<<(bio_Ofilter& out, const omi_complex& value);

// Writes values in the host's form to a device: each scalar at its size in memory, in the
// host's byte order, an array as its bytes with no count. For two ends of the same kind.
class VRKLNU_EXPORT bio_OinternalFilter : public bio_OfilterOf<bio_OinternalFilter> {
 public:
  explicit bio_OinternalFilter(bio_Odevice& device) : bio_OfilterOf(&device) {}
  ~bio_OinternalFilter() override;
};

#endif  // BIO_OFILTER_H
