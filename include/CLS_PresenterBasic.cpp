#include "CLS_PresenterBasic.h"

#include "Logger.h"
#include "TaskPool.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <exception>
#include <functional>
#include <typeinfo>

std::string QVariantMap2strString(const QVariantMap& _qmapParam)
{
    const QByteArray qbaJson = QJsonDocument(QJsonObject::fromVariantMap(_qmapParam)).toJson();
    // Up to the first NUL, as a C string would read it.
    return std::string(qbaJson.constData());
}

namespace {

// Where a call into the pool comes from, for the pool's records. JSON in form only: concatenated,
// nothing escaped.
std::string ContextText(const char* _pFile, int _iLine, const char* _pFunction)
{
    return std::string("{\"file\": \"") + _pFile + "\",\"line\": \"" + std::to_string(_iLine) +
           "\", \"function\": \"" + _pFunction + "\"}";
}

std::string ContextText(const char* _pFile, int _iLine, const char* _pClass, const char* _pFunction)
{
    return std::string("{\"file\": \"") + _pFile + "\",\"line\": \"" + std::to_string(_iLine) +
           "\",\"class\": \"" + _pClass + "\", \"function\": \"" + _pFunction + "\"}";
}

// Name of the request object for a failure line: "null", its object name, or its class name.
std::string RequestObjectName(const QObject* _pRequestObj)
{
    if (nullptr == _pRequestObj) {
        return "null";
    }
    const QString qstrName = _pRequestObj->objectName();
    if (!qstrName.isEmpty()) {
        return qstrName.toStdString();
    }
    return _pRequestObj->metaObject()->className();
}

} // namespace

// The type tag of a log line: "[", the run-time type name, "]". The name is the one typeid gives
// for the object's dynamic type, as the compiler writes it (mangled with GCC and Clang); a derived
// presenter needs no Q_OBJECT of its own to be named.
#define PRESENTER_TYPE_TAG "[" << typeid(*this).name() << "]"

CLS_PresenterBasic::CLS_PresenterBasic(QObject* _pParent) : QObject(_pParent) {}

CLS_PresenterBasic::~CLS_PresenterBasic() = default;

const char* CLS_PresenterBasic::GetModuleCode()
{
    return "default";
}

void CLS_PresenterBasic::Init()
{
    try {
        InitPresenter();
        // The flag before the signal: a view connects to SignInitEd only while it reads false.
        m_blInited = true;
        emit SignInitEd();
        StartLoopTask();
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(
            3, [&](std::ostream& _osText) { _osText << PRESENTER_TYPE_TAG << "Init Fail" << e.what(); });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << PRESENTER_TYPE_TAG << "Init Fail"; });
    }
}

void CLS_PresenterBasic::UnInit()
{
    try {
        // The interval is asked anew: one that dropped below 1 since Init leaves the loop in the pool.
        if (GetLoopInterval() >= 1) {
            auto pFunRemoveTask =
                reinterpret_cast<TaskPool::PFun_RemoveTask>(TaskPool::GetModuleFun("RemoveTask"));
            if (nullptr != pFunRemoveTask) {
                pFunRemoveTask(m_strLoopTaskId, ContextText(__FILE__, __LINE__, __FUNCTION__));
            }
        }
        UnInitPresenter();
        m_blInited = false;
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(
            3, [&](std::ostream& _osText) { _osText << PRESENTER_TYPE_TAG << "UnInit Fail" << e.what(); });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << PRESENTER_TYPE_TAG << "UnInit Fail"; });
    }
}

void CLS_PresenterBasic::SendTaskNotify(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam)
{
    const QVariantMap qmapNotify = _qmapParam;
    emit SignTaskResult(_qstrBusinessKey, qmapNotify, QStringLiteral("__notify__"));
}

void CLS_PresenterBasic::TaskRequest(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                                     const QString& _qstrBusinessUUID, QObject* _pRequestObj)
{
    // The entry line from "_qstrBusinessKey:[" on; the failure lines repeat it.
    auto funWriteRequest = [&](std::ostream& _osLine) -> std::ostream& {
        return _osLine << "_qstrBusinessKey:[" << _qstrBusinessKey.toStdString() << "] _qmapParam:["
                       << QVariantMap2strString(_qmapParam) << "] _qstrBusinessUUID:["
                       << _qstrBusinessUUID.toStdString() << "] _pRequestObj :["
                       << static_cast<const void*>(_pRequestObj) << "]";
    };
    try {
        {
            // GetModuleCode() is a page's: what it throws goes to the catch below, and nothing is
            // queued.
            Logger::LogMessageStream clsLog(__FILE__, GetModuleCode(), __FUNCTION__, __LINE__, 0);
            clsLog << PRESENTER_TYPE_TAG;
            funWriteRequest(clsLog);
        }

        // Copies of key, map and id; the request object and this presenter go as plain pointers
        // and must outlive the queued task.
        const std::function<void()> funTask =
            std::bind(&CLS_PresenterBasic::TaskRequestHandler, this, _qstrBusinessKey, _qmapParam,
                      _qstrBusinessUUID, _pRequestObj);
        auto pFunAddTmpTask =
            reinterpret_cast<TaskPool::PFun_AddTmpTask>(TaskPool::GetModuleFun("AddTmpTask"));
        if (nullptr != pFunAddTmpTask) {
            pFunAddTmpTask(funTask, this,
                           ContextText(__FILE__, __LINE__, typeid(*this).name(), __FUNCTION__));
        }
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
            funWriteRequest(_osText << PRESENTER_TYPE_TAG << "Request Fail" << e.what());
        });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
            funWriteRequest(_osText << PRESENTER_TYPE_TAG << "Request Fail ");
        });
    }
}

void CLS_PresenterBasic::LoopTask() {}

int CLS_PresenterBasic::GetLoopInterval()
{
    return -1;
}

void CLS_PresenterBasic::StartLoopTask()
{
    if (GetLoopInterval() < 1) {
        return;
    }

    // One failing run is logged and the loop goes on: the pool sees no exception.
    const std::function<void()> funLoop = [this]() {
        try {
            LoopTask();
        } catch (const std::exception& e) {
            WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
                _osText << PRESENTER_TYPE_TAG << "LoopTask Fail" << e.what();
            });
        } catch (...) {
            WGT_LOG_CAUGHT(3,
                           [&](std::ostream& _osText) { _osText << PRESENTER_TYPE_TAG << "LoopTask Fail"; });
        }
    };
    const int iInterval = GetLoopInterval();
    const std::string strContext = ContextText(__FILE__, __LINE__, typeid(*this).name(), __FUNCTION__);
    auto pFunAddLoopTask =
        reinterpret_cast<TaskPool::PFun_AddLoopTask>(TaskPool::GetModuleFun("AddLoopTask"));
    if (nullptr != pFunAddLoopTask) {
        pFunAddLoopTask(funLoop, iInterval, m_strLoopTaskId, strContext);
    }
}

void CLS_PresenterBasic::TaskRequestHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                                            const QString& _qstrBusinessUUID, QObject* _pRequestObj)
{
    // Pool thread. The key is written twice in the failure lines: kept, log readers match on it.
    auto funWriteFailure = [&](std::ostream& _osLine) {
        const std::string strKey = _qstrBusinessKey.toStdString();
        _osLine << strKey << ":[" << strKey << "] _qmapParam:[" << QVariantMap2strString(_qmapParam)
                << "] _qstrBusinessUUID:[" << _qstrBusinessUUID.toStdString() << "] _pRequestObj:["
                << RequestObjectName(_pRequestObj) << "] ";
    };
    try {
        WGT_LOG(GetModuleCode(), 0) << PRESENTER_TYPE_TAG << "run TaskRequest key:["
                                    << _qstrBusinessKey.toStdString() << "] param:["
                                    << QVariantMap2strString(_qmapParam) << "] UUID:["
                                    << _qstrBusinessUUID.toStdString() << "]";

        QVariantMap qmapResult;
        const bool blResult = TaskHandler(_qstrBusinessKey, _qmapParam, qmapResult);

        WGT_LOG(GetModuleCode(), 1) << PRESENTER_TYPE_TAG << "handle " << blResult << " key:["
                                    << _qstrBusinessKey.toStdString() << "] param:["
                                    << QVariantMap2strString(_qmapParam) << "] UUID:["
                                    << _qstrBusinessUUID.toStdString() << "] result:["
                                    << QVariantMap2strString(qmapResult) << "]";

        // The requester's address goes back with the result: the views sort results by it.
        auto itObject = _qmapParam.constFind(QStringLiteral("__object__"));
        if (itObject != _qmapParam.constEnd()) {
            qmapResult.insert(QStringLiteral("__object__"), itObject.value());
        }

        if (blResult) {
            qmapResult.insert(QStringLiteral("__result__"), QStringLiteral("success"));
        } else {
            WGT_LOG(GetModuleCode(), 3)
                << PRESENTER_TYPE_TAG << "key:[" << _qstrBusinessKey.toStdString() << "] param:["
                << QVariantMap2strString(_qmapParam) << "] UUID:[" << _qstrBusinessUUID.toStdString()
                << "] result:[" << QVariantMap2strString(qmapResult) << "]";
            qmapResult.insert(QStringLiteral("__result__"), QStringLiteral("fail"));
        }

        // Emitted on the pool thread; the views' automatic connections queue it to their threads.
        emit SignTaskResult(_qstrBusinessKey, qmapResult, _qstrBusinessUUID);
    } catch (const std::exception& e) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
            _osText << PRESENTER_TYPE_TAG << "Request Fail" << e.what();
            funWriteFailure(_osText);
        });
    } catch (...) {
        WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) {
            _osText << PRESENTER_TYPE_TAG << "Request Fail";
            funWriteFailure(_osText);
        });
    }
}
