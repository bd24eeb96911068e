#include "sto_Transfer.h"

#include <gtest/gtest.h>

#include "VRKTestLibrary.h"
