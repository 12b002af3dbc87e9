// A gateway asked with an empty folder opens its library by the bare file name and leaves the
// search to the dynamic loader (LD_LIBRARY_PATH points at the stand-in siblings).

#include "BinderLines.h"
#include "CLS_StdCapture.h"
#include "ColorManage.h"

#include <QtTest>

#include <dlfcn.h>

class tst_BinderEmptyPath : public QObject
{
    Q_OBJECT

private slots:
    void shouldOpenBareFileNameForEmptyPath();
    void shouldAnswerFromTableAfterFirstBind();
};

void tst_BinderEmptyPath::shouldOpenBareFileNameForEmptyPath()
{
    CLS_StdCapture clsCapture;
    void* pFun = ColorManage::GetModuleFun("GetNamedColor", "");
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), FirstBindLines("libLxColorManage.so", {"GetNamedColor"}));
    QCOMPARE(clsCapture.ErrLines(), QStringList());

    void* pHandle = dlopen("libLxColorManage.so", RTLD_NOW | RTLD_NOLOAD);
    QVERIFY(nullptr != pHandle);
    QVERIFY(nullptr != pFun);
    QCOMPARE(pFun, dlsym(pHandle, "GetNamedColor"));
}

void tst_BinderEmptyPath::shouldAnswerFromTableAfterFirstBind()
{
    void* pFirst = ColorManage::GetModuleFun("GetNamedColor", "");

    CLS_StdCapture clsCapture;
    void* pSecond = ColorManage::GetModuleFun("GetNamedColor", "");
    clsCapture.Stop();

    QVERIFY(nullptr != pSecond);
    QCOMPARE(pSecond, pFirst);
    QCOMPARE(clsCapture.OutLines(), QStringList());
    QCOMPARE(clsCapture.ErrLines(), QStringList());
}

QTEST_GUILESS_MAIN(tst_BinderEmptyPath)
#include "tst_binder_emptypath.moc"
