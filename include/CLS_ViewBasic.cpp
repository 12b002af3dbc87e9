#include "CLS_ViewBasic.h"

#include "FunctionUtil.h"
#include "Logger.h"
#include "TaskPool.h"
#include "Util.h"

#include <QShowEvent>
#include <QStringList>

#include <exception>
#include <functional>

namespace {

// Where a call into the pool comes from, for the pool's records. JSON in form only: concatenated,
// nothing escaped.
std::string ContextText(const char* _pFile, int _iLine, const char* _pFunction)
{
    return std::string("{\"file\": \"") + _pFile + "\",\"line\": \"" + std::to_string(_iLine) +
           "\", \"function\": \"" + _pFunction + "\"}";
}

// True while GetModuleCode makes the record of its own catch block on this thread: the record asks
// for the module once more, and that call must not catch and record again. A page whose module
// code always throws so gets no record, and no recursion.
thread_local bool s_blInModuleCodeRecord = false;

class CLS_ModuleCodeRecordGuard
{
public:
    CLS_ModuleCodeRecordGuard() : m_blWas(s_blInModuleCodeRecord) { s_blInModuleCodeRecord = true; }
    ~CLS_ModuleCodeRecordGuard() { s_blInModuleCodeRecord = m_blWas; }
    CLS_ModuleCodeRecordGuard(const CLS_ModuleCodeRecordGuard&) = delete;
    CLS_ModuleCodeRecordGuard& operator=(const CLS_ModuleCodeRecordGuard&) = delete;

private:
    const bool m_blWas;
};

const char* const CONST_OBJECT_KEY = "__object__";
const char* const CONST_RESULT_KEY = "__result__";

} // namespace

CLS_ViewBasic::CLS_ViewBasic(QWidget* _pParent) : QWidget(_pParent) {}

CLS_ViewBasic::~CLS_ViewBasic() = default;

const char* CLS_ViewBasic::GetModuleCode()
{
    if (s_blInModuleCodeRecord) {
        // Asked again for the module of the record below. Nothing is caught here: a throw goes back
        // to that record, which is dropped, instead of starting another record that asks again.
        CLS_PresenterBasic* pPresenter = GetPresenter();
        return nullptr != pPresenter ? pPresenter->GetModuleCode() : metaObject()->className();
    }
    try {
        CLS_PresenterBasic* pPresenter = GetPresenter();
        if (nullptr != pPresenter) {
            return pPresenter->GetModuleCode();
        }
        return metaObject()->className();
    } catch (const std::exception& e) {
        CLS_ModuleCodeRecordGuard clsGuard;
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << e.what(); });
    } catch (...) {
        CLS_ModuleCodeRecordGuard clsGuard;
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << "..."; });
    }
    return "default";
}

CLS_PresenterBasic* CLS_ViewBasic::GetPresenter()
{
    return nullptr;
}

bool CLS_ViewBasic::TaskRequestHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                                       const QString& _qstrBusinessUUID, QVariantMap& _qmapResult)
{
    Q_UNUSED(_qmapResult)
    SendPresenterRequest(_qstrBusinessKey, _qmapParam, _qstrBusinessUUID);
    return true;
}

void CLS_ViewBasic::showEvent(QShowEvent* _pEvent)
{
    // QWidget::showEvent is deliberately not called; it does nothing for us.
    Q_UNUSED(_pEvent)
    try {
        if (!m_blFirstShow) {
            return;
        }
        if (!m_blInited) {
            Init();
        }

        CLS_PresenterBasic* pPresenter = GetPresenter();
        if (nullptr == pPresenter) {
            // No presenter, no data: m_blFirstShow stays true and later shows stop here again.
            return;
        }

        // Read, then connect, without a lock: a presenter that finishes Init in between leaves this
        // view without data. Kept as it is.
        if (!pPresenter->m_blInited) {
            connect(pPresenter, &CLS_PresenterBasic::SignInitEd, this, &CLS_ViewBasic::SlotInitData,
                    Qt::UniqueConnection);
        } else {
            auto pFunAddTmpTask =
                reinterpret_cast<TaskPool::PFun_AddTmpTask>(TaskPool::GetModuleFun("AddTmpTask"));
            if (nullptr != pFunAddTmpTask) {
                // The view must outlive the task: the pool holds a plain pointer.
                pFunAddTmpTask([this]() { SlotInitData(); }, this,
                               ContextText(__FILE__, __LINE__, __FUNCTION__));
            }
        }
        m_blFirstShow = false;
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << e.what(); });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << "..."; });
    }
}

void CLS_ViewBasic::Init()
{
    try {
        setAttribute(Qt::WA_StyledBackground, true);
        InitView();
        LoadStyle();
        m_blInited = true;

        CLS_PresenterBasic* pPresenter = GetPresenter();
        if (nullptr == pPresenter) {
            // A view without a presenter is complete; this line is all that is said about it.
            WGT_LOG(GetModuleCode(), 3) << "nullptr == pPresenter Init Fail";
            return;
        }
        // Automatic: results emitted on a pool thread arrive queued on this view's thread.
        connect(pPresenter, &CLS_PresenterBasic::SignTaskResult, this, &CLS_ViewBasic::CallTaskHandler,
                Qt::UniqueConnection);
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << "Init Fail" << e.what(); });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << "Init Fail"; });
    }
}

void CLS_ViewBasic::SlotInitData()
{
    try {
        InitData();
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << "InitData Fail" << e.what(); });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << "InitData Fail"; });
    }
}

void CLS_ViewBasic::LoadStyle()
{
    try {
        setObjectName(GetClassCode());
        if (m_qstrStyleSheet.isEmpty()) {
            // No widget for the loader: the sheet is set here, from the view's own copy.
            m_qstrStyleSheet =
                FunctionUtil::LoadStyle(QString::fromUtf8(GetModuleCode()), nullptr, GetClassCode());
        }
        setStyleSheet(m_qstrStyleSheet);
        m_blStyleDirty = false;
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << "LoadStyle Fail" << e.what(); });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << "LoadStyle Fail"; });
    }
}

QString CLS_ViewBasic::GetClassCode()
{
    const QString qstrClassName = QString::fromUtf8(metaObject()->className());
    if (qstrClassName.contains(QStringLiteral("::"))) {
        const QStringList qlstParts = qstrClassName.split(QStringLiteral("::"));
        if (qlstParts.size() >= 2) {
            return qlstParts.last();
        }
    }
    return qstrClassName;
}

bool CLS_ViewBasic::TaskRequest(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                                QVariantMap& _qmapResult)
{
    try {
        WGT_LOG(GetModuleCode(), 0) << "run TaskRequest key:[" << _qstrBusinessKey.toStdString()
                                    << "] param:[" << QVariantMap2strString(_qmapParam) << "]";
        const bool blResult = TaskHandler(_qstrBusinessKey, _qmapParam, _qmapResult);
        WGT_LOG(GetModuleCode(), 1) << "handle " << blResult << " key:[" << _qstrBusinessKey.toStdString()
                                    << "] param:[" << QVariantMap2strString(_qmapParam) << "] result:["
                                    << QVariantMap2strString(_qmapResult) << "]";
        return blResult;
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
            _osText << "Request Fail" << e.what() << "key:[" << _qstrBusinessKey.toStdString() << "] param:["
                    << QVariantMap2strString(_qmapParam) << "]";
        });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
            _osText << "Request Fail key:[" << _qstrBusinessKey.toStdString() << "] param:["
                    << QVariantMap2strString(_qmapParam) << "]";
        });
    }
    return false;
}

void CLS_ViewBasic::SendPresenterRequest(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                                         QString _qstrUUID)
{
    try {
        CLS_PresenterBasic* pPresenter = GetPresenter();
        if (nullptr == pPresenter) {
            return;
        }
        // The caller's map stays as it is; the copy carries this view's address, which comes back
        // with the result and tells the views of one presenter apart.
        QVariantMap qmapRequest = _qmapParam;
        qmapRequest.insert(QString::fromLatin1(CONST_OBJECT_KEY),
                           QVariant::fromValue(static_cast<void*>(this)));
        pPresenter->TaskRequest(_qstrBusinessKey, qmapRequest, _qstrUUID, this);
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
            _osText << e.what() << "_qstrBusinessKey:[" << _qstrBusinessKey.toStdString() << "] _qmapParam:["
                    << QVariantMap2strString(_qmapParam) << "] _qstrUUID:[" << _qstrUUID.toStdString() << "]";
        });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
            _osText << "_qstrBusinessKey:[" << _qstrBusinessKey.toStdString() << "] _qmapParam:["
                    << QVariantMap2strString(_qmapParam) << "] _qstrUUID:[" << _qstrUUID.toStdString() << "]";
        });
    }
}

void CLS_ViewBasic::CallTaskHandler(QString _qstrBusinessKey, QVariantMap _qmapParam,
                                    QString _qstrBusinessUUID)
{
    try {
        WGT_LOG(GetModuleCode(), 0) << "call funtion key:[" << _qstrBusinessKey.toStdString() << "] param:["
                                    << QVariantMap2strString(_qmapParam) << "] UUID:["
                                    << _qstrBusinessUUID.toStdString() << "]";

        // Every view of a presenter gets all its results; the requester's address sorts them. A value
        // that is no void* reads as null, and so as another view's.
        auto itObject = _qmapParam.constFind(QString::fromLatin1(CONST_OBJECT_KEY));
        if (itObject != _qmapParam.constEnd() &&
            itObject.value().value<void*>() != static_cast<void*>(this)) {
            return;
        }

        QVariantMap qmapResult;
        const bool blResult = TaskHandler(_qstrBusinessKey, _qmapParam, qmapResult);
        WGT_LOG(GetModuleCode(), 1) << "call funtion " << blResult << " key:["
                                    << _qstrBusinessKey.toStdString() << "] param:["
                                    << QVariantMap2strString(_qmapParam) << "] UUID:["
                                    << _qstrBusinessUUID.toStdString() << "] result:["
                                    << QVariantMap2strString(qmapResult) << "]";
        if (!blResult) {
            WGT_LOG(GetModuleCode(), 3)
                << "key:[" << _qstrBusinessKey.toStdString() << "] param:["
                << QVariantMap2strString(_qmapParam) << "] UUID:[" << _qstrBusinessUUID.toStdString()
                << "] result:[" << QVariantMap2strString(qmapResult) << "]";
        }
        if (qmapResult.isEmpty()) {
            return;
        }
        qmapResult.insert(QString::fromLatin1(CONST_RESULT_KEY),
                          blResult ? QStringLiteral("success") : QStringLiteral("fail"));
        emit SignRequestTaskRsulted(_qstrBusinessKey, qmapResult, _qstrBusinessUUID);
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
            _osText << "Fail [" << e.what() << "] _qstrBusinessKey:[" << _qstrBusinessKey.toStdString()
                    << "] _qmapParam:[" << QVariantMap2strString(_qmapParam) << "] _qstrBusinessUUID:["
                    << _qstrBusinessUUID.toStdString() << "]";
        });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
            _osText << "Fail _qstrBusinessKey:[" << _qstrBusinessKey.toStdString() << "] _qmapParam:["
                    << QVariantMap2strString(_qmapParam) << "] _qstrBusinessUUID:["
                    << _qstrBusinessUUID.toStdString() << "]";
        });
    }
}

CLS_ViewBasic* GetWgtView(const std::string& _strModuleName, const QMap<QString, QVariant>& _qmapParam)
{
    CLS_ViewBasic* pView = nullptr;
    try {
        WGT_LOG("default", 1) << "run function _strModuleName:[" << _strModuleName << "] param:["
                              << QVariantMap2strString(_qmapParam) << "]";
#ifdef __APPLE__
        const QString qstrPattern = QStringLiteral("%1/lib%2.dylib");
#else
        const QString qstrPattern = QStringLiteral("%1/lib%2.so");
#endif
        // One arg() call for both: a '%' in the folder name can't be taken for the second marker.
        const QString qstrPath = qstrPattern.arg(QString::fromStdString(Util::GetModulePath()),
                                                 QString::fromStdString(_strModuleName));
        auto pFunCreateWgt =
            reinterpret_cast<PFun_CreateWgt>(Util::GetDllFunction(qstrPath.toStdString(), "CreateWgt"));
        if (nullptr != pFunCreateWgt) {
            pView = pFunCreateWgt(_qmapParam);
        }
    } catch (const std::exception& e) {
        WGT_LOG("default", 3) << "Request Fail" << e.what() << "_strModuleName:[" << _strModuleName
                              << "] param:[" << QVariantMap2strString(_qmapParam) << "]";
        pView = nullptr;
    } catch (...) {
        WGT_LOG("default", 3) << "Request Fail _strModuleName:[" << _strModuleName << "] param:["
                              << QVariantMap2strString(_qmapParam) << "]";
        pView = nullptr;
    }
    return pView;
}
