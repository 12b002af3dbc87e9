// Compiles DevStructDefine.h on its own: it must include what it uses.
#include "DevStructDefine.h"
#include "DevStructDefine.h" // and twice, behind its guard
