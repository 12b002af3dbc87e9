// The one function of the reference menu library that the tree panel binds: "CreateWgt".

#include "CLS_MenuView.h"

#include "Logger.h"

#include <QApplication>
#include <QMap>
#include <QString>
#include <QThread>
#include <QVariant>

#include <exception>

// Makes the menu view for "MenuType" "CLS_Menu"; null for any other type or none, and null where no
// widget can be made: without a QApplication or off its thread. The caller owns the view; views still
// alive when the application object goes are deleted by the library. Nothing is thrown.
extern "C" __attribute__((visibility("default"))) CLS_ViewBasic*
CreateWgt(const QMap<QString, QVariant>& _qmapParam)
{
    try {
        if (QStringLiteral("CLS_Menu") != _qmapParam.value(QStringLiteral("MenuType")).toString()) {
            return nullptr;
        }
        QCoreApplication* pApplication = QCoreApplication::instance();
        if (nullptr == qobject_cast<QApplication*>(pApplication) ||
            QThread::currentThread() != pApplication->thread()) {
            WGT_LOG("WgtMenu", 3) << "CreateWgt Fail: no widget application on this thread";
            return nullptr;
        }
        return new CLS_MenuView();
    } catch (const std::exception& e) {
        WGT_LOG("WgtMenu", 3) << "CreateWgt Fail" << e.what();
    } catch (...) {
        WGT_LOG("WgtMenu", 3) << "CreateWgt Fail";
    }
    return nullptr;
}
