// The one export macro of the library. Both shared libraries are built with hidden
// visibility; what carries VRKLNU_EXPORT is their public interface. Classes with virtual
// functions are exported whole, so that their vtables and type information are visible to
// clients (needed for dynamic_cast and for catching exceptions across the boundary).
#ifndef VRKBASEXPORT_H
#define VRKBASEXPORT_H

#define VRKLNU_EXPORT __attribute__((visibility("default")))

#endif  // VRKBASEXPORT_H
