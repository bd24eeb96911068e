// What the pool's threads still touch after the thread package has stopped, when the pool
// left them running (a task handed over with noJoin, or every thread once the error
// condition is set): the registry of thread objects, the lock pool and the global lock. The
// package, while it is up, and each such thread hold them; the last to let go destroys them.
// So a thread that finishes its task after the stop still finds them whole, and a start
// before it has left takes them over as they are.
#ifndef THR_SHAREDHOLD_H
#define THR_SHAREDHOLD_H

void thr_HoldShared();
// Destroys the registry, the lock pool and the global lock when the last hold goes.
void thr_ReleaseShared();

#endif  // THR_SHAREDHOLD_H
