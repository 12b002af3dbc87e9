#pragma once
// Test helper of the frame tests: log lines, map texts and pool context patterns, and the priming
// of the gateways. The gateways' function maps have no lock, so a test binds them on the GUI thread
// before any pool thread logs or queues.

#include "CLS_LogRecords.h"
#include "CLS_PoolProbe.h"
#include "CLS_PresenterBasic.h"
#include "Logger.h"
#include "TaskPool.h"

#include <QObject>
#include <QRegularExpression>
#include <QStringList>

class CLS_FrameKit
{
public:
    // Binds the logging and task pool libraries (when present) and forgets what that left behind.
    static void PrimeGateways()
    {
        WGT_LOG("prime", 0) << "";
        (void)TaskPool::GetModuleFun("AddTmpTask");
        CLS_LogRecords::Take();
        CLS_PoolProbe::TakeCalls();
    }

    // Every log record since the last call as "level|module|function|text".
    static QStringList TakeLogLines() { return CLS_LogRecords::Lines(CLS_LogRecords::Take()); }

    // The log lines whose text starts with _qstrPrefix after "level|module|function|".
    static QStringList Matching(const QStringList& _qlstLines, const QString& _qstrPrefix)
    {
        QStringList qlstMatching;
        for (const QString& qstrLine : _qlstLines) {
            if (qstrLine.section('|', 3).startsWith(_qstrPrefix)) {
                qlstMatching << qstrLine;
            }
        }
        return qlstMatching;
    }

    static QString Json(const QVariantMap& _qmapParam)
    {
        return QString::fromStdString(QVariantMap2strString(_qmapParam));
    }

    // A pool context text, for source _qstrFile (file name only) and function _qstrFunction, with
    // the class part when _qstrClass is not empty; any line number.
    static QRegularExpression ContextPattern(const QString& _qstrFile, const QString& _qstrClass,
                                             const QString& _qstrFunction)
    {
        QString qstrPattern =
            "^\\{\"file\": \"[^\"]*" + QRegularExpression::escape(_qstrFile) + "\",\"line\": \"[0-9]+\"";
        if (!_qstrClass.isEmpty()) {
            qstrPattern += ",\"class\": \"" + QRegularExpression::escape(_qstrClass) + "\"";
        }
        qstrPattern += ", \"function\": \"" + QRegularExpression::escape(_qstrFunction) + "\"\\}$";
        return QRegularExpression(qstrPattern);
    }
};

// Waits for the pool's one-shot tasks at scope end. Declare it after the presenter: the presenter
// must outlive its queued tasks.
class CLS_PoolIdleGuard
{
public:
    CLS_PoolIdleGuard() = default;
    ~CLS_PoolIdleGuard() { CLS_PoolProbe::WaitIdle(); }
    CLS_PoolIdleGuard(const CLS_PoolIdleGuard&) = delete;
    CLS_PoolIdleGuard& operator=(const CLS_PoolIdleGuard&) = delete;
};

// Takes a presenter's results on the thread it lives on, queued when they are emitted on a pool
// thread. A QSignalSpy would record on the emitting thread, racing with the test's reads.
class CLS_ResultCatcher : public QObject
{
    Q_OBJECT

public:
    explicit CLS_ResultCatcher(CLS_PresenterBasic* _pPresenter)
    {
        connect(_pPresenter, &CLS_PresenterBasic::SignTaskResult, this, &CLS_ResultCatcher::SlotTaskResult);
    }

    QList<QList<QVariant>> m_qlstResults; // key, map, id of each result, oldest first

private slots:
    void SlotTaskResult(QString _qstrBusinessKey, QVariantMap _qmapParam, QString _qstrBusinessUUID)
    {
        m_qlstResults.append(QList<QVariant>{_qstrBusinessKey, _qmapParam, _qstrBusinessUUID});
    }
};
