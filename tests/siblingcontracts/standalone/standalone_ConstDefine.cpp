// Compiles ConstDefine.h on its own: it must include what it uses.
#include "ConstDefine.h"
#include "ConstDefine.h" // and twice, behind its guard
