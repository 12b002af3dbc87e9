// Compiles I_AppSignals.h on its own: it must include what it uses.
#include "I_AppSignals.h"
#include "I_AppSignals.h" // and twice, behind its guard
