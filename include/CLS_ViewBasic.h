#pragma once
// Base of a page's view, and of widgets that other modules hand out through GetWgtView. The widgets
// and the style are built at the first show, not at construction; the data is asked for once; a
// presenter, when the view has one, is wired to it and answers the view's requests on the task pool.
// GUI thread, except InitData, which runs on a pool thread when the presenter was already started
// at the first show.

#include "CLS_PresenterBasic.h"

#include <QMap>
#include <QString>
#include <QVariant>
#include <QVariantMap>
#include <QWidget>

#include <atomic>
#include <string>

class QShowEvent;

class CLS_ViewBasic : public QWidget
{
    Q_OBJECT

public:
    explicit CLS_ViewBasic(QWidget* _pParent = nullptr);
    ~CLS_ViewBasic() override;

    // The virtual operations keep this order; views of other modules are built against it.

    // Module of this view: the presenter's module code, else the class name with its namespaces;
    // "default" if that throws (logged, under the module asked for once more). Module code of the
    // view's log records, asked at each statement, and module of its style files. What a page's
    // override throws goes to the catch of the function that logs, and nothing further.
    virtual const char* GetModuleCode();
    // The view's presenter, or null (here). A view with a presenter overrides this.
    virtual CLS_PresenterBasic* GetPresenter();

protected:
    // Builds the widgets, at the first show.
    virtual void InitView() = 0;
    // Fills the view with data, once; on a pool thread when the presenter was started before the
    // first show, else on the view's thread.
    virtual void InitData() = 0;
    // The view's own work, for synchronous requests (TaskRequest) and for its presenter's results
    // (CallTaskHandler, where _qmapParam carries "__result__").
    virtual bool TaskHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                             QVariantMap& _qmapResult) = 0;

public:
    // Passes key, parameters and id to SendPresenterRequest and returns true; _qmapResult is left alone.
    virtual bool TaskRequestHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                                    const QString& _qstrBusinessUUID, QVariantMap& _qmapResult);

    // Builds the view: styled background, InitView, LoadStyle, and the presenter's results wired to
    // CallTaskHandler. Called by the first show.
    void Init();
    // Runs InitData; nothing thrown leaves it.
    void SlotInitData();
    // Applies the view's style sheet, read once through the style loader and kept in m_qstrStyleSheet.
    void LoadStyle();
    // The class name without its namespaces.
    QString GetClassCode();

    // Synchronous request, on the caller's thread: TaskHandler and its outcome, false if it threw.
    // No reserved key is touched and no signal is emitted.
    bool TaskRequest(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                     QVariantMap& _qmapResult);
    // Asynchronous request to the presenter; the result comes back through SignRequestTaskRsulted.
    // Without a presenter nothing happens and nothing is logged.
    void SendPresenterRequest(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                              QString _qstrUUID);

signals:
    void SignRequestTaskRsulted(QString _qstrBusinessKey, QVariantMap _qmapData, QString _qstrBusinessUUID);

protected slots:
    // A result or notification of the presenter, on the view's thread. Results that carry another
    // view's "__object__" are dropped; a non-empty result of TaskHandler goes out with "__result__".
    void CallTaskHandler(QString _qstrBusinessKey, QVariantMap _qmapParam, QString _qstrBusinessUUID);

protected:
    // Does not call QWidget::showEvent. Only the first show does anything (see m_blFirstShow).
    void showEvent(QShowEvent* _pEvent) override;

    std::atomic<bool> m_blFirstShow{true};  // until a first show got as far as asking for the data
    std::atomic<bool> m_blInited{false};    // Init has built the view
    QString m_qstrStyleSheet;               // the style text, read once
    std::atomic<bool> m_blStyleDirty{true}; // cleared by LoadStyle; kept for derived views
};

// Function "CreateWgt" of a widget library: makes the library's view from the given parameters.
typedef CLS_ViewBasic* (*PFun_CreateWgt)(const QMap<QString, QVariant>& _qmapParam);

// Makes the view of the widget library of module _strModuleName ("lib<name>.so" in
// Util::GetModulePath()) through its "CreateWgt". Null when the library or the function is missing,
// or when making the view threw. The caller owns the view.
CLS_ViewBasic* GetWgtView(const std::string& _strModuleName, const QMap<QString, QVariant>& _qmapParam);
