// Compiles CLS_IResourceTree.h on its own: it must include what it uses.
#include "CLS_IResourceTree.h"
#include "CLS_IResourceTree.h" // and twice, behind its guard
