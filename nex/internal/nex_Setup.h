// The parts of package nex's start and stop that live beside the classes they concern.
#ifndef NEX_SETUP_H
#define NEX_SETUP_H

// Makes the specific and then the generic out-of-memory message, and installs the memory
// layer's handler that raises nex_OutOfMemoryException.
void nex_OutOfMemorySetUp();
// Frees the specific and then the generic message, and puts back the handler it replaced.
void nex_OutOfMemoryTearDown();

// Installs the class registrar's failure hooks and inserts the package's type table.
void nex_TypeTableSetUp();
// Removes the failure hooks.
void nex_TypeTableTearDown();

#endif  // NEX_SETUP_H
