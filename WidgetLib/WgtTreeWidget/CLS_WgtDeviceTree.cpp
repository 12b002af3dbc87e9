#include "CLS_WgtDeviceTree.h"
