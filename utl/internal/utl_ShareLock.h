// Share modes between the openings of one file, in this process and in others: each
// opening marks what it does and what it refuses to others with locks on bytes reserved far
// past any data, so the marks go away with the descriptor, even when its process is killed.
// Advisory only: a plain open elsewhere is not stopped.
#ifndef UTL_SHARELOCK_H
#define UTL_SHARELOCK_H

// Claims the sharing of an opening on descriptor `fd`: `writes` says whether it may write,
// `deniesWrite` whether it refuses writers to others. Every opening reads and lets others
// read, so only writing needs marks. Checking the other openings and marking this one are
// one step. Returns 0, EBUSY when an opening refuses this one or this one refuses an
// opening, or the system's error number. `fd` must be readable, and writable if `writes`.
int utl_ClaimSharing(int fd, bool writes, bool deniesWrite);

#endif  // UTL_SHARELOCK_H
