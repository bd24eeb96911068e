// A client of the installed library: it needs only the umbrella header.
#include <VRKLnuBasicUtils/VRKLnuBasicUtils.h>

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

  const bool ok = tally == 15 && greeting == "installed";
  VRKLnuBasicUtils_finalize(tally);
  return ok && tally == 0 ? 0 : 1;
}
