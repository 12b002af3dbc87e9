// Compiles CLS_IApp.h on its own: it must include what it uses.
#include "CLS_IApp.h"
#include "CLS_IApp.h" // and twice, behind its guard
