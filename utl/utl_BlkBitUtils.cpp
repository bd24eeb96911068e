#include "utl_BlkBitUtils.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int kItemsPerLine = 7;
// Words of a vector of 32-bit bit numbers.
constexpr unsigned long long kWordLimit = 1ull << 27;

// The hexadecimal word that `text` begins with; false when it has none.
bool ReadWord(const char* text, unsigned& word) {
  char* end;
  const unsigned long long value = std::strtoull(text, &end, 16);
  word = value > UINT_MAX ? UINT_MAX : static_cast<unsigned>(value);
  return end != text;
}

// The run length of the item at `text`: the number after a ':' that comes before the next
// blank, else 1.
unsigned long long ReadRun(const char* text) {
  const char* colon = text + std::strcspn(text, ": ");
  if (*colon != ':') return 1;
  char* end;
  const long long run = std::strtoll(colon + 1, &end, 10);
  if (end == colon + 1) return 1;
  return run < 0 ? 0 : static_cast<unsigned long long>(run);
}

}  // namespace

cow_List<cow_String> utl_BlkBitUtils::GetMaskString(const omi_BlkBitVect& mask) {
  unsigned last = 0;
  const unsigned words = omi_BlkBitVectTrav(&mask).Last(last) ? (last >> 5) + 1 : 0;
  cow_List<cow_String> lines;
  cow_String line("[");
  int items = 0;
  for (unsigned i = 0; i < words;) {
    const unsigned word = mask.GetWord(i);
    unsigned run = 1;
    while (i + run < words && mask.GetWord(i + run) == word)
      ++run;
    i += run;
    char item[32];
    if (run > 1) {
      std::snprintf(item, sizeof item, "#%x:%u ", word, run);
    } else {
      std::snprintf(item, sizeof item, "#%x ", word);
    }
    line += item;
    if (++items == kItemsPerLine) {
      lines.Append(line);
      line = "";
      items = 0;
    }
  }
  line += "]";
  lines.Append(line);
  return lines;
}

void utl_BlkBitUtils::GetMaskFromString(const cow_List<cow_String>& lines, omi_BlkBitVect& mask) {
  unsigned long long position = 0;
  for (int l = 0; l < lines.Count(); ++l) {
    const cow_String& line = lines.ConstGet(l);
    for (const char* hash = std::strchr(line.c_str(), '#'); hash != nullptr;
         hash = std::strchr(hash + 1, '#')) {
      unsigned word;
      if (!ReadWord(hash + 1, word)) continue;
      const unsigned long long run = ReadRun(hash + 1);
      const unsigned long long end = position + run < kWordLimit ? position + run : kWordLimit;
      for (; word != 0 && position < end; ++position)
        mask.SetWord(static_cast<unsigned>(position), word);
      position = end;
    }
  }
}
