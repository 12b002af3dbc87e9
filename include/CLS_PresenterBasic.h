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

// A map as indented JSON text (QJsonDocument's default form), for log lines only.
std::string QVariantMap2strString(const QVariantMap& _qmapParam);

class CLS_PresenterBasic : public QObject
{
    Q_OBJECT

public:
    explicit CLS_PresenterBasic(QObject* _pParent = nullptr);
    ~CLS_PresenterBasic() override;

    // The virtual operations keep this order; derived presenters of other modules are built
    // against it.

    // Module code of this presenter's log records and of its views. "default" here. Asked at each
    // log statement: what an override throws there goes to the catch of the function that logs,
    // which asks once more for its own record (and drops the record if that throws too).
    virtual const char* GetModuleCode();
    // InitPresenter, then m_blInited, then SignInitEd, then the loop task. Catches everything.
    virtual void Init();
    // Removes the loop task, then UnInitPresenter, then clears m_blInited. Catches everything.
    virtual void UnInit();
    // Sends _qmapParam to every connected view as a result with the id "__notify__".
    virtual void SendTaskNotify(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam);

protected:
    // The work of one task, on a pool thread. Whatever is put in _qmapResult travels back.
    virtual bool TaskHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                             QVariantMap& _qmapResult) = 0;

public:
    // Hands TaskRequestHandler with copies of the arguments to the pool ("AddTmpTask") and returns.
    // Without a pool the request is dropped silently: no result ever comes.
    virtual void TaskRequest(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                             const QString& _qstrBusinessUUID, QObject* _pRequestObj);

protected:
    virtual void InitPresenter() = 0;
    virtual void UnInitPresenter() = 0;
    // One run of the periodic task, on a pool thread. Does nothing here.
    virtual void LoopTask();
    // Period of the loop task for the pool; less than 1 means no loop task. -1 here. Asked anew at
    // each start and stop.
    virtual int GetLoopInterval();

public:
    // Hands the loop task to the pool when GetLoopInterval() is at least 1.
    void StartLoopTask();
    // The body of one task, on a pool thread: TaskHandler, then SignTaskResult with "__result__"
    // and the requester's "__object__". A throw means no result at all.
    void TaskRequestHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                            const QString& _qstrBusinessUUID, QObject* _pRequestObj);

signals:
    void SignInitEd();
    void SignTaskResult(QString _qstrBusinessKey, QVariantMap _qmapParam, QString _qstrBusinessUUID);

protected:
    std::string m_strLoopTaskId;         // filled by the pool through the reference at "AddLoopTask"
    std::atomic<bool> m_blInited{false}; // true between Init and UnInit; read by the views

    friend class CLS_ViewBasic; // reads m_blInited at the first show
};
