#include "CLS_DeviceTreeBGThread.h"
