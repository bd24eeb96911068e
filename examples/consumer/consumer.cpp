// A client of the installed library: it needs only the umbrella headers, the library's and
// the store's.
#include <VRKLnuBasicUtils/VRKLnuBasicUtils.h>
#include <VRKLnuBasicUtils/VRKLnuStore.h>

int main() {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);

  cow_String greeting("installed");
  cow_String copy = greeting;
  copy += " and working";
  atr_translate message("%s: %d layers up");
  atr_SubstituteFormat(message, 1, copy);
  atr_SubstituteFormat(message, 2, tally);
  aio_cout << message.Result() << aio_endl;

  // An error raised inside the library is caught here by its exact class and by its root.
  bool caught = false;
  try {
    cls_MetadataRegistrar::Instance().GetWorkingSet().ConstGet(0x1F00AA);
  } catch (const nex_TextException& error) {
    try {
      error.Propagate();
    } catch (const nex_Exception& again) {
      caught = again.DynTypeId() == nex_TextException::TypeId();
    }
  }

  // The same error through the store: its bytes, and raised again from them.
  bool stored = false;
  try {
    sto_RaiseStored(sto_Encode<nex_Exception>(nex_TextException(message.Result())));
  } catch (const nex_TextException& error) {
    stored = cow_String(error.AsString()) == cow_String(message.Result());
  }

  const bool ok = tally == 15 && greeting == "installed" && caught && stored;
  VRKLnuBasicUtils_finalize(tally);
  return ok && tally == 0 ? 0 : 1;
}
