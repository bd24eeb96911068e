// A text form of a bit vector by its 32-bit words, for printing masks and reading them back:
// runs of equal words are one item, "#" and the word in hexadecimal, with ":" and the run's
// length when it is above 1; items are followed by a blank, the text opens with "[" and
// closes with "]", and a new line begins after every seventh item:
//
//   omi_BlkBitVect mask;  // words 0xff, 0xff, 0xff, 0, 0xa
//   utl_BlkBitUtils::GetMaskString(mask);  // {"[#ff:3 #0 #a ]"}; an empty vector "[]"
//
// Threads: one thread at a time for a vector.
#ifndef UTL_BLKBITUTILS_H
#define UTL_BLKBITUTILS_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "omi_BlkBitVect.h"

class VRKLNU_EXPORT utl_BlkBitUtils {
 public:
  // The words up to the one that holds the highest set bit, as lines of text.
  static cow_List<cow_String> GetMaskString(const omi_BlkBitVect& mask);
  // Reads the items of all lines, as one text, into `mask` from word 0 on. At each "#": a
  // hexadecimal word (past 32 bits it is 0xffffffff), and a decimal run length after a ":"
  // that comes before the next blank, else 1. A non-zero word is stored at each position of
  // its run; a zero word only moves the position on, leaving what the vector held there
  // (intended: clear the vector first to read a mask afresh). A "#" without a word, and
  // every other character, is passed over; a run below 0 counts as 0, and positions past the
  // last word of the bit range are dropped.
  static void GetMaskFromString(const cow_List<cow_String>& lines, omi_BlkBitVect& mask);
};

#endif  // UTL_BLKBITUTILS_H
