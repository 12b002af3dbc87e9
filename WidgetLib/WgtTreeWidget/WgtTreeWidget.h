#pragma once
// Everything the library offers to a page, in one include.

#include "ConstDefine.h"
#include "DevStructDefine.h"
#include "TreeStructDefine.h"

#include "CLS_IApp.h"
#include "CLS_PresenterBasic.h"
#include "CLS_ViewBasic.h"
#include "ColorManage.h"
#include "FunctionUtil.h"
#include "I_AppSignals.h"
#include "Logger.h"
#include "LxAppManager.h"
#include "Param.h"
#include "TaskPool.h"
#include "Util.h"

#include "CLS_DevManage.h"
#include "CLS_IDevFactory.h"
#include "CLS_IResourceTree.h"
#include "I_CustomTreeManage.h"
#include "STRCT_DevResult.h"

#include "CLS_DeviceTreeBGThread.h"
#include "CLS_LineEdit.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtItemToolBar.h"
#include "CLS_WgtToolBtnStack.h"
#include "CLS_WgtTreeWidget.h"
#include "CLS_WgtTreeWidgetItem.h"
#include "Ui_CLS_WgtTreeWidget.h"
