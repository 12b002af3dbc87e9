// Compiles I_CustomTreeManage.h on its own: it must include what it uses.
#include "I_CustomTreeManage.h"
#include "I_CustomTreeManage.h" // and twice, behind its guard
