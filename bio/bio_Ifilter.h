// Typed reading of binary data. bio_Ifilter is the reading side of the filters: one virtual
// operation per scalar type and per array type, with the stream operators forwarding to them.
// What varies is the encoding: bio_IinternalFilter (below) reads values as they stand in
// memory from a device (bio_Idevice.h), bio_IexternalMemFilter the fixed external form from a
// memory buffer, and bio_IOmemFilter its own growing block.
//
//   bio_ImemoryDevice in(buffer);
//   bio_IinternalFilter reader(in);
//   int count;
//   char* name;                 // the caller's: give it back with mem_Free
//   reader >> count >> name;
//
// The virtual operations keep a fixed order (the layout of the class's table of virtual
// functions), which clients built against the library rely on: getChars, get, getArray and
// then the three raw movers. bio_Ofilter orders its own differently, on purpose.
//
// Failure: a read from a device with nothing left raises omi_FatalError with the text
// "The other side of the connection exited breaking the socket connection" and the errno of
// the moment; allocation failure raises through the memory layer. A filter belongs to one
// thread, isn't copied and keeps its device (not owned) for life.
#ifndef BIO_IFILTER_H
#define BIO_IFILTER_H

#include "HashTable.h"
#include "VRKBasExport.h"
#include "bio_Scalars.h"
#include "mem_Alloc.h"

class bio_Idevice;
class omi_complex;

class VRKLNU_EXPORT bio_Ifilter : public mem_AllocationOperators {
 public:
  virtual ~bio_Ifilter();

  // Reads `n` raw bytes to `dst`; the pointer itself is left as it is.
  virtual void getChars(char*& dst, unsigned n);

  virtual void get(double& value) = 0;
  virtual void get(float& value) = 0;
  virtual void get(unsigned& value) = 0;
  virtual void get(int& value) = 0;
  virtual void get(unsigned short& value) = 0;
  virtual void get(short& value) = 0;
  virtual void get(unsigned char& value) = 0;
  virtual void get(char& value) = 0;
  virtual void get(bool& value) = 0;

  virtual void getArray(double* values, unsigned n) = 0;
  virtual void getArray(float* values, unsigned n) = 0;
  virtual void getArray(unsigned* values, unsigned n) = 0;
  virtual void getArray(int* values, unsigned n) = 0;
  virtual void getArray(unsigned short* values, unsigned n) = 0;
  virtual void getArray(short* values, unsigned n) = 0;
  virtual void getArray(unsigned char* values, unsigned n) = 0;
  virtual void getArray(char* values, unsigned n) = 0;
  virtual void getArray(bool* values, unsigned n) = 0;

  bio_Ifilter& operator>>(double& value) { return Read(value); }
  bio_Ifilter& operator>>(float& value) { return Read(value); }
  bio_Ifilter& operator>>(unsigned& value) { return Read(value); }
  bio_Ifilter& operator>>(int& value) { return Read(value); }
  bio_Ifilter& operator>>(unsigned short& value) { return Read(value); }
  bio_Ifilter& operator>>(short& value) { return Read(value); }
  bio_Ifilter& operator>>(unsigned char& value) { return Read(value); }
  bio_Ifilter& operator>>(char& value) { return Read(value); }
  bio_Ifilter& operator>>(bool& value) { return Read(value); }
  // Reads a string written by bio_Ofilter::putString: an int length, then the bytes. `s`
  // becomes a new block of length + 1 bytes from the memory layer, zero-terminated, which
  // the caller owns (mem_Free) even if reading the bytes fails. A negative length raises
  // omi_FatalError, and so does, on an external reader, a length past the bytes left; `s`
  // is then left as it was.
  bio_Ifilter& operator>>(char*& s);

  // Objects numbered for a client that sends a shared object once and refers to it by
  // number afterwards: 2047 buckets, number to object. The filter only holds the table.
  HashTable<unsigned, void*> objectTable;

 protected:
  // `device` is not owned; null for filters that read memory of their own.
  explicit bio_Ifilter(bio_Idevice* device);

  // The raw movers. Here they read through the device, and raise when it has nothing left:
  // longMove copies span by span; shortMove, the path of every scalar, copies byte by byte;
  // shortSwap is shortMove filling `dst` from its last byte downward.
  virtual void longMove(char* dst, unsigned n);
  virtual void shortMove(char* dst, unsigned n);
  virtual void shortSwap(char* dst, unsigned n);

  bio_Idevice* device;

  // The host form, which bio_IfilterOf takes unless a filter has its own: a value as its
  // bytes through shortMove, an array as its bytes through longMove; a bool is true for any
  // non-zero byte, so that it never holds another value.
  void GetValue(void* value, bio_Element element);
  void GetValues(void* values, unsigned n, bio_Element element);

 private:
  template <class T>
  bio_Ifilter& Read(T& value) {
    get(value);
    return *this;
  }
};

// Gives a reading filter its get and getArray of each scalar type, each a call of the
// filter's own GetValue(void* value, bio_Element) or GetValues(void* values, unsigned n,
// bio_Element), which bio_Ifilter gives in the host form: a filter reads its encoding once,
// for any element. The filter derives from bio_IfilterOf<itself> and names the template a
// friend (`template <class, class> friend class bio_IfilterOf;`).
template <class Derived, class Types = bio_Scalars>
class bio_IfilterOf;

template <class Derived>
class bio_IfilterOf<Derived, bio_TypeList<>> : public bio_Ifilter {
 protected:
  using bio_Ifilter::bio_Ifilter;
};

template <class Derived, class T, class... Rest>
class bio_IfilterOf<Derived, bio_TypeList<T, Rest...>>
    : public bio_IfilterOf<Derived, bio_TypeList<Rest...>> {
  using Next = bio_IfilterOf<Derived, bio_TypeList<Rest...>>;

 public:
  using Next::get;
  using Next::getArray;
  void get(T& value) override { static_cast<Derived&>(*this).GetValue(&value, bio_elementOf<T>()); }
  void getArray(T* values, unsigned n) override {
    static_cast<Derived&>(*this).GetValues(values, n, bio_elementOf<T>());
  }

 protected:
  using Next::Next;
};

// Reads one value into a new block from the memory layer, which `p` receives before the read
// and the caller owns (mem_Free).
VRKLNU_EXPORT bio_Ifilter& operator>>(bio_Ifilter& in, bool*& p);
VRKLNU_EXPORT bio_Ifilter& operator>>(bio_Ifilter& in, short*& p);
VRKLNU_EXPORT bio_Ifilter& operator>>(bio_Ifilter& in, unsigned short*& p);
VRKLNU_EXPORT bio_Ifilter& operator>>(bio_Ifilter& in, int*& p);
VRKLNU_EXPORT bio_Ifilter& operator>>(bio_Ifilter& in, unsigned*& p);
VRKLNU_EXPORT bio_Ifilter& operator>>(bio_Ifilter& in, float*& p);
VRKLNU_EXPORT bio_Ifilter& operator>>(bio_Ifilter& in, double*& p);

// Reads a complex number as bio_Ofilter writes it: the tag and the two numbers, stored as
// they come.
VRKLNU_EXPORT bio_Ifilter& operator>>(bio_Ifilter& in, omi_complex& value);

// Reads values in the host's form from a device: each scalar at its size in memory, in the
// host's byte order, an array as its bytes. For two ends of the same kind, such as the two
// sides of a socket between processes of one job.
class VRKLNU_EXPORT bio_IinternalFilter : public bio_IfilterOf<bio_IinternalFilter> {
 public:
  explicit bio_IinternalFilter(bio_Idevice& device) : bio_IfilterOf(&device) {}
  ~bio_IinternalFilter() override;
};

#endif  // BIO_IFILTER_H
