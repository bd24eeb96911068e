// The starting subkeys and substitution boxes of the block cipher, taken from the digits of
// pi as the algorithm prescribes.
#ifndef UTI_BLOWFISHTABLES_H
#define UTI_BLOWFISHTABLES_H

#include <cstdint>

extern const uint32_t uti_kBlowfishSubkeys[18];
extern const uint32_t uti_kBlowfishBoxes[4][256];

#endif  // UTI_BLOWFISHTABLES_H
