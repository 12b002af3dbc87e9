// A view's style sheet: read through the style loader once, under the view's module and class
// code, and reused from the view's own copy afterwards. The settings library of this test answers an
// empty skin, so the loader itself caches nothing: a second read would show a changed file.

#include "CLS_FrameDoubles.h"
#include "CLS_FrameKit.h"
#include "FunctionUtil.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QtTest>

#include <dlfcn.h>

namespace {

// A view of its own name, so that its sheet lies in a folder no other test uses.
class CLS_StyleProbeView : public CLS_ProbeView
{
    Q_OBJECT
};

typedef int (*PFun_FrameParam_TakeCallCount)();

int TakeParamCalls()
{
    void* pHandle = dlopen("libLxParam.so", RTLD_NOW | RTLD_NOLOAD);
    auto pFun =
        nullptr == pHandle
            ? nullptr
            : reinterpret_cast<PFun_FrameParam_TakeCallCount>(dlsym(pHandle, "FrameParam_TakeCallCount"));
    return nullptr == pFun ? -1 : pFun();
}

} // namespace

class tst_CLS_ViewBasic_style : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void shouldApplySheetOfModuleAndClassAtFirstShow();
    void shouldReuseSheetWithoutReadingAgain();

private:
    bool WriteSheet(const QString& _qstrText);

    QString m_qstrModuleDir; // <bin>/resource/skin/dark/ModuleCLS_StyleProbeView
};

void tst_CLS_ViewBasic_style::initTestCase()
{
    CLS_FrameKit::PrimeGateways();
    // An empty skin reads as "dark"; a module name without a known prefix gets "Module" in front.
    m_qstrModuleDir = FunctionUtil::GetBinPath() + "/resource/skin/dark/ModuleCLS_StyleProbeView";
    QDir(m_qstrModuleDir).removeRecursively();
    QVERIFY(QDir().mkpath(m_qstrModuleDir + "/qss"));
}

void tst_CLS_ViewBasic_style::cleanupTestCase()
{
    QDir(m_qstrModuleDir).removeRecursively();
}

bool tst_CLS_ViewBasic_style::WriteSheet(const QString& _qstrText)
{
    QFile clsFile(m_qstrModuleDir + "/qss/CLS_StyleProbeView.qss");
    if (!clsFile.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        return false;
    }
    return clsFile.write(_qstrText.toUtf8()) == _qstrText.toUtf8().size();
}

void tst_CLS_ViewBasic_style::shouldApplySheetOfModuleAndClassAtFirstShow()
{
    QVERIFY(WriteSheet("CLS_StyleProbeView { color: red; }"));
    CLS_StyleProbeView clsView;

    clsView.show();

    QCOMPARE(clsView.objectName(), QString("CLS_StyleProbeView"));
    QVERIFY2(clsView.m_qstrStyleSheet.contains("CLS_StyleProbeView { color: red; }"),
             qPrintable(clsView.m_qstrStyleSheet));
    QCOMPARE(clsView.styleSheet(), clsView.m_qstrStyleSheet);
    QCOMPARE(clsView.m_blStyleDirty.load(), false);
}

void tst_CLS_ViewBasic_style::shouldReuseSheetWithoutReadingAgain()
{
    QVERIFY(WriteSheet("CLS_StyleProbeView { color: red; }"));
    CLS_StyleProbeView clsView;
    TakeParamCalls();
    clsView.LoadStyle();
    // The loader asks for the skin on every call.
    QVERIFY(TakeParamCalls() > 0);
    const QString qstrFirst = clsView.styleSheet();
    QVERIFY2(qstrFirst.contains("color: red;"), qPrintable(qstrFirst));

    QVERIFY(WriteSheet("CLS_StyleProbeView { color: blue; }"));
    clsView.setStyleSheet(QString());
    clsView.LoadStyle();

    // Not asked again, and the first text set again.
    QCOMPARE(TakeParamCalls(), 0);
    QCOMPARE(clsView.styleSheet(), qstrFirst);
    QCOMPARE(clsView.m_blStyleDirty.load(), false);
    // The loader itself would have read the new text.
    QVERIFY(FunctionUtil::LoadStyle("CLS_StyleProbeView", nullptr, "CLS_StyleProbeView")
                .contains("color: blue;"));
}

QTEST_MAIN(tst_CLS_ViewBasic_style)
#include "tst_CLS_ViewBasic_style.moc"
