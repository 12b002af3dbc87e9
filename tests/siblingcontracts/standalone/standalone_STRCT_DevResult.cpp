// Compiles STRCT_DevResult.h on its own: it must include what it uses.
#include "STRCT_DevResult.h"
#include "STRCT_DevResult.h" // and twice, behind its guard
