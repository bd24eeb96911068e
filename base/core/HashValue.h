// Hashes of keys for hash tables: the result lies in [0, buckets) (0 when there are no
// buckets). Numbers and addresses are spread by a multiplicative hash, so that keys with
// a common stride (aligned addresses, multiples of a block size) don't share buckets.
#ifndef HASHVALUE_H
#define HASHVALUE_H

#include "VRKBasExport.h"

VRKLNU_EXPORT unsigned HashValue(const unsigned& key, unsigned buckets);
VRKLNU_EXPORT unsigned HashValue(void* const& key, unsigned buckets);

#endif  // HASHVALUE_H
