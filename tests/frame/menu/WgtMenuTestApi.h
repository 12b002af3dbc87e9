#pragma once
// The test menu library "libWgtMenu.so": besides "CreateWgt", C functions through which a test sees
// what the menu was asked and drives a choice. Read them with dlopen("<lib dir>/libWgtMenu.so",
// RTLD_NOLOAD) once GetWgtView has loaded the library.

#include <QList>
#include <QPair>
#include <QString>
#include <QVariantMap>

class CLS_ViewBasic;

// One request the menu got: "CreateWgt" with its parameters, or a task key ("setInfo", "exec", any
// other) with its parameter map.
typedef QPair<QString, QVariantMap> STRCT_MenuRequest;

// Moves every request kept so far, oldest first, into *_pOut and forgets them.
typedef void (*PFun_WgtMenuTest_TakeRequests)(QList<STRCT_MenuRequest>* _pOut);
// The view made last by "CreateWgt", null once it is deleted.
typedef CLS_ViewBasic* (*PFun_WgtMenuTest_LastView)();
// Triggers the entry _qstrItemId of the last view's menu as a click would; false if there is none.
typedef bool (*PFun_WgtMenuTest_TriggerItem)(const QString& _qstrItemId);
// The last view's menu as text, entries by ",", sub-entries in "()": "id:text", then "!" when
// disabled, "[x]" / "[ ]" when checkable; "" for no menu.
typedef QString (*PFun_WgtMenuTest_MenuText)();
