// Compiles CLS_IDevFactory.h on its own: it must include what it uses.
#include "CLS_IDevFactory.h"
#include "CLS_IDevFactory.h" // and twice, behind its guard
