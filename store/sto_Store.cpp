#include "sto_Store.h"

#include <unistd.h>

#include "cls_MetadataRegistrar.h"
#include "internal/sto_Reader.h"
#include "internal/sto_Writer.h"
#include "nex_Exception.h"
#include "nex_TextException.h"
#include "utl_MultisectionFile.h"

namespace {

const cls_ClassRegistrar* Resolve(const cls_ClassRegistrar* registrar) {
  return registrar != nullptr ? registrar : &cls_MetadataRegistrar::Instance().GetWorkingSet();
}

// The graph's object hangs in this field of the root.
const cls_FieldHandle kRoot(-1, "root");
// The file's sections: the list of names, and one section a graph.
const char* const kIndexSection = "sto:index";
cow_String GraphSection(const cow_String& name) {
  return cow_String("sto:graph:") += name;
}

// A section's body, its checksum tested.
cow_String ReadSection(utl_MultisectionFile& file, const cow_String& section) {
  const int length = file.getSectionLength(section);
  char* bytes = static_cast<char*>(mem_OperatorNewThrow(static_cast<size_t>(length) + 1));
  bytes[length] = 0;
  cow_String body(bytes, length, cow_String::Adopt);
  file.getSectionData(section, bytes);
  return body;
}

}  // namespace

cow_String sto_EncodeWith(sto_WriteFunction write, const void* object,
                          const cls_ClassRegistrar* registrar) {
  sto_WriteSession session(Resolve(registrar));
  {
    cls_WriteVisitor root(session.NewRoot());
    write(object, cls_WriteVisitor(root, kRoot, nullptr, object));
  }
  return session.Finish();
}

void sto_DecodeWith(const cow_String& bytes, sto_BuildFunction build, void* result,
                    const cls_ClassRegistrar* registrar) {
  sto_ReadSession session(bytes, Resolve(registrar));
  cls_ReadVisitor root(session.NewRoot());
  cls_ReadVisitor object(root, kRoot);
  if (object.Memento() == nullptr) session.Fail(0, nex_Translate("no object"));
  build(object, result);
}

sto_Object sto_Decode(const cow_String& bytes, const cls_ClassRegistrar* registrar) {
  registrar = Resolve(registrar);
  sto_ReadSession session(bytes, registrar);
  const cls_ClassMetadata* metadata = nullptr;
  void* object = session.Build(metadata);
  return sto_Object(object, metadata, registrar);
}

sto_Object::~sto_Object() {
  if (m_Object != nullptr) m_Metadata->Delete(m_Object);
}

unsigned sto_Object::ClassId() const {
  return m_Metadata->ClassId();
}

sto_Store::sto_Store(const cls_ClassRegistrar* registrar) : m_Registrar(Resolve(registrar)) {}

sto_Store::sto_Store(const cow_String& path, const cls_ClassRegistrar* registrar)
    : m_Registrar(Resolve(registrar)) {
  if (access(path.c_str(), F_OK) != 0) utl_MultisectionFile(path, utl_AccessWrite).saveChanges();
  m_File = new utl_MultisectionFile(path, utl_AccessUpdate);
  if (!m_File->hasSection(kIndexSection)) return;
  const cow_String names = ReadSection(*m_File, kIndexSection);
  const sto_Input in(names.c_str(), static_cast<size_t>(names.Length()));
  size_t at = 4;
  for (uint32_t i = 0, count = in.U32(0, "name count"); i < count; ++i)
    m_Names.Append(in.String(at, at, "name"));
}

sto_Store::~sto_Store() {
  delete m_File;
}

bool sto_Store::Has(const cow_String& name) const {
  return Find(name) >= 0;
}

cow_String sto_Store::Get(const cow_String& name) const {
  const int at = Find(name);
  if (at < 0) {
    nex_TextException error(nex_Translate("The store holds no graph named \"%s\"", name));
    NEX_THROW(error);
  }
  if (m_File == nullptr) return m_Graphs.ConstGet(at);
  return ReadSection(*m_File, GraphSection(name));
}

void sto_Store::Put(const cow_String& name, const cow_String& bytes) {
  const int at = Find(name);
  if (at < 0) m_Names.Append(name);
  if (m_File == nullptr) {
    if (at < 0)
      m_Graphs.Append(bytes);
    else
      m_Graphs.Get(at) = bytes;
    return;
  }
  sto_Output index;
  index.PutU32(static_cast<uint32_t>(m_Names.Count()));
  for (int i = 0; i < m_Names.Count(); ++i)
    index.PutString(m_Names.ConstGet(i));
  const cow_String indexBytes = index.Take();
  m_File->setSectionData(GraphSection(name), bytes.c_str(), bytes.Length());
  m_File->setSectionData(kIndexSection, indexBytes.c_str(), indexBytes.Length());
  m_File->saveChanges();
}

int sto_Store::Find(const cow_String& name) const {
  for (int i = 0; i < m_Names.Count(); ++i)
    if (m_Names.ConstGet(i) == name) return i;
  return -1;
}
