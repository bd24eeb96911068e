// Set-up and tear-down of the package's tables, called by its start and stop.
#ifndef TYP_SETUP_H
#define TYP_SETUP_H

// The architecture compatibility table: `size` facilities, all without a table.
void typ_ArchCompTableSetUp(unsigned size);
void typ_ArchCompTableTearDown();

// Fills the debug-facility names from the package's list.
void typ_DebugFlagsSetUp();

#endif  // TYP_SETUP_H
