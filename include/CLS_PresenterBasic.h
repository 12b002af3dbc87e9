#pragma once
// Base of a page's presenter: the object that does a page's work away from the GUI thread. It is
// started with Init and stopped with UnInit, answers task requests on the task pool and may run one
// periodic task there. It knows its views only through SignInitEd and SignTaskResult.
// Init and UnInit run on whichever thread the page calls them from; TaskRequestHandler and LoopTask
// run on the pool's threads and must not touch widgets.

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <atomic>
#include <string>

class CLS_ViewBasic;

/// A map as indented JSON text (QJsonDocument's default form), for log lines only.
/// Values go through QJsonObject::fromVariantMap; the text ends at a first NUL. Any thread.
std::string QVariantMap2strString(const QVariantMap& _qmapParam);

/// Base of a page's presenter: the object that does a page's work away from the GUI thread.
///
/// Started with Init and stopped with UnInit; answers task requests on the task pool (TaskRequest,
/// TaskRequestHandler, TaskHandler) and may run one periodic task there (LoopTask, GetLoopInterval).
/// It knows its views only through SignInitEd and SignTaskResult; every view connected to it gets
/// every result, and the `"__object__"` entry tells them apart. Results carry `"__result__"`
/// ("success" or "fail"), notifications the id `"__notify__"`. The presenter must outlive its queued
/// tasks and its loop task: the pool holds plain pointers. Init and UnInit run on whichever thread
/// the page calls them from; TaskRequestHandler and LoopTask run on the pool's threads and must not
/// touch widgets.
class CLS_PresenterBasic : public QObject
{
    Q_OBJECT

public:
    /// Makes a stopped presenter; @p _pParent owns it the Qt way and may be null.
    explicit CLS_PresenterBasic(QObject* _pParent = nullptr);
    /// Destroys the presenter without calling UnInit: stop it first, and let its queued requests
    /// finish, for the pool holds plain pointers to it.
    ~CLS_PresenterBasic() override;

    // The virtual operations keep this order; derived presenters of other modules are built
    // against it.

    /// Module code of this presenter's log records and of its views. "default" here. Asked at each
    /// log statement: what an override throws there goes to the catch of the function that logs,
    /// which asks once more for its own record (and drops the record if that throws too).
    /// @return a text that must stay valid for the presenter's life (a literal).
    virtual const char* GetModuleCode();
    /// InitPresenter, then m_blInited, then SignInitEd, then the loop task. Catches everything.
    /// After a throw from InitPresenter (logged) the presenter stays stopped: no flag, no signal, no
    /// loop.
    virtual void Init();
    /// Removes the loop task, then UnInitPresenter, then clears m_blInited. Catches everything.
    /// The loop is removed only when GetLoopInterval() is still at least 1; after a throw (logged)
    /// m_blInited stays set.
    virtual void UnInit();
    /// Sends _qmapParam to every connected view as a result with the id `"__notify__"`.
    /// Emits SignTaskResult on the caller's thread; the map carries no `"__object__"` unless the
    /// caller put one there, so every view handles it.
    virtual void SendTaskNotify(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam);

protected:
    /// The work of one task, on a pool thread. Whatever is put in _qmapResult travels back.
    /// @return true on success; false travels back as `"__result__"` "fail" (and is logged).
    virtual bool TaskHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                             QVariantMap& _qmapResult) = 0;

public:
    /// Hands TaskRequestHandler with copies of the arguments to the pool ("AddTmpTask") and returns.
    /// Without a pool the request is dropped silently: no result ever comes.
    /// @p _pRequestObj (usually the requesting view) is kept as a plain pointer, only for log lines;
    /// it is not owned. A throw (logged) queues nothing.
    virtual void TaskRequest(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                             const QString& _qstrBusinessUUID, QObject* _pRequestObj);

protected:
    /// The derived presenter's start, called by Init before anything else; may throw (Init logs it).
    virtual void InitPresenter() = 0;
    /// The derived presenter's stop, called by UnInit after the loop task is removed.
    virtual void UnInitPresenter() = 0;
    /// One run of the periodic task, on a pool thread. Does nothing here.
    /// A throw is logged and the loop goes on.
    virtual void LoopTask();
    /// Period of the loop task for the pool; less than 1 means no loop task. -1 here. Asked anew at
    /// each start and stop.
    /// @return the period in the task pool's unit.
    virtual int GetLoopInterval();

public:
    /// Hands the loop task to the pool when GetLoopInterval() is at least 1.
    /// The pool fills m_strLoopTaskId; without a pool the loop is silently not started. Called by Init.
    void StartLoopTask();
    /// The body of one task, on a pool thread: TaskHandler, then SignTaskResult with `"__result__"`
    /// and the requester's `"__object__"`. A throw means no result at all.
    void TaskRequestHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                            const QString& _qstrBusinessUUID, QObject* _pRequestObj);

signals:
    /// The presenter has started: emitted by Init after InitPresenter and after m_blInited is set, on
    /// Init's thread. A view that saw the presenter not yet started asks for its data on it.
    void SignInitEd();
    /// A result or a notification: the key and id as they came (`"__notify__"` for a notification)
    /// and the result map. Emitted on a pool thread for results; views receive it on their own
    /// thread through their automatic connections.
    void SignTaskResult(QString _qstrBusinessKey, QVariantMap _qmapParam, QString _qstrBusinessUUID);

protected:
    std::string m_strLoopTaskId;         ///< Filled by the pool through the reference at "AddLoopTask".
    std::atomic<bool> m_blInited{false}; ///< True between Init and UnInit; read by the views.

    friend class CLS_ViewBasic; // reads m_blInited at the first show
};
