#pragma once
// The application's data manager in the reference application library: opaque, only its being
// there matters to the tree widgets.

#include "CLS_IApp.h"

class CLS_RefDataManager : public CLS_IDataManager
{};
