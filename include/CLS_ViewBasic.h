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

/// Base of a page's view, and of widgets that other modules hand out through GetWgtView.
///
/// The widgets and the style are built at the first show (Init), not at construction; the data is
/// asked for once (InitData), and only when the view has a presenter (GetPresenter). Requests go
/// either synchronously into the view (TaskRequest, answered by TaskHandler) or asynchronously to the
/// presenter (SendPresenterRequest), whose results come back on the view's thread through
/// CallTaskHandler and leave as SignRequestTaskRsulted. The reserved map keys are `"__object__"` (the
/// requesting view's address) and `"__result__"` ("success" or "fail"). Every entry point catches and
/// logs what is thrown inside it. GUI thread, except InitData, which runs on a pool thread when the
/// presenter was already started at the first show.
class CLS_ViewBasic : public QWidget
{
    Q_OBJECT

public:
    /// Makes an empty view; nothing is built before the first show. @p _pParent owns the view the Qt
    /// way and may be null.
    explicit CLS_ViewBasic(QWidget* _pParent = nullptr);
    /// Destroys the view; the presenter, which the view does not own, is left alone.
    ~CLS_ViewBasic() override;

    // The virtual operations keep this order; views of other modules are built against it.

    /// Module of this view: the presenter's module code, else the class name with its namespaces;
    /// "default" if that throws (logged, under the module asked for once more). Module code of the
    /// view's log records, asked at each statement, and module of its style files. What a page's
    /// override throws goes to the catch of the function that logs, and nothing further.
    /// @return a text that must stay valid for the view's life (a literal or the meta-object's name).
    virtual const char* GetModuleCode();
    /// The view's presenter, or null (here). A view with a presenter overrides this; the view does
    /// not own the presenter, which must outlive the view's requests.
    virtual CLS_PresenterBasic* GetPresenter();

protected:
    /// Builds the widgets, at the first show (called by Init, on the GUI thread).
    virtual void InitView() = 0;
    /// Fills the view with data, once; on a pool thread when the presenter was started before the
    /// first show, else on the view's thread. Never called for a view without a presenter; on a pool
    /// thread it must not touch widgets directly.
    virtual void InitData() = 0;
    /// The view's own work, for synchronous requests (TaskRequest) and for its presenter's results
    /// (CallTaskHandler, where _qmapParam carries `"__result__"`).
    /// @return true on success; what it puts in @p _qmapResult is the answer (for a result of the
    ///         presenter, an empty map means that nothing is emitted).
    virtual bool TaskHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                             QVariantMap& _qmapResult) = 0;

public:
    /// Passes key, parameters and id to SendPresenterRequest and returns true; _qmapResult is left alone.
    /// Nothing in this library calls it; a derived view may override it.
    virtual bool TaskRequestHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                                    const QString& _qstrBusinessUUID, QVariantMap& _qmapResult);

    /// Builds the view: styled background, InitView, LoadStyle, and the presenter's results wired to
    /// CallTaskHandler. Called by the first show. A view without a presenter is complete and only
    /// logs that it has none; a throw from InitView leaves the view unbuilt and is logged.
    void Init();
    /// Runs InitData; nothing thrown leaves it (logged). Connected to the presenter's SignInitEd, or
    /// handed to the task pool, by the first show.
    void SlotInitData();
    /// Applies the view's style sheet, read once through the style loader and kept in m_qstrStyleSheet.
    /// Also sets the object name to GetClassCode(). Nothing thrown leaves it.
    void LoadStyle();
    /// The class name without its namespaces (the last part after "::").
    QString GetClassCode();

    /// Synchronous request, on the caller's thread: TaskHandler and its outcome, false if it threw.
    /// No reserved key is touched and no signal is emitted.
    /// @return TaskHandler's result; false also when it threw (logged).
    bool TaskRequest(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                     QVariantMap& _qmapResult);
    /// Asynchronous request to the presenter; the result comes back through SignRequestTaskRsulted.
    /// Without a presenter nothing happens and nothing is logged. The caller's map is copied and the
    /// copy carries this view's address under `"__object__"`; @p _qstrUUID comes back untouched.
    void SendPresenterRequest(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                              QString _qstrUUID);

signals:
    /// The answer to a presenter's result or notification, on the view's thread: the key and id as
    /// they came, and TaskHandler's result map with `"__result__"` ("success" or "fail"). Sent only when
    /// that map is not empty.
    void SignRequestTaskRsulted(QString _qstrBusinessKey, QVariantMap _qmapData, QString _qstrBusinessUUID);

protected slots:
    /// A result or notification of the presenter, on the view's thread. Results that carry another
    /// view's `"__object__"` are dropped; a non-empty result of TaskHandler goes out with `"__result__"`.
    /// Emits SignRequestTaskRsulted; a throw is logged and nothing is emitted.
    void CallTaskHandler(QString _qstrBusinessKey, QVariantMap _qmapParam, QString _qstrBusinessUUID);

protected:
    /// Does not call QWidget::showEvent. Only the first show does anything (see m_blFirstShow): it
    /// runs Init once and asks for the data, at once on the pool when the presenter is started, else
    /// when it sends SignInitEd. Without a presenter no data is asked for and m_blFirstShow stays set,
    /// so each later show asks GetPresenter again; so does a show whose handling threw.
    void showEvent(QShowEvent* _pEvent) override;

    std::atomic<bool> m_blFirstShow{true};  ///< Until a first show got as far as asking for the data.
    std::atomic<bool> m_blInited{false};    ///< Init has built the view.
    QString m_qstrStyleSheet;               ///< The style text, read once.
    std::atomic<bool> m_blStyleDirty{true}; ///< Cleared by LoadStyle; kept for derived views.
};

/// Function "CreateWgt" of a widget library: makes the library's view from the given parameters.
typedef CLS_ViewBasic* (*PFun_CreateWgt)(const QMap<QString, QVariant>& _qmapParam);

/// Makes the view of the widget library of module _strModuleName (`lib<name>.so`, `lib<name>.dylib` on
/// macOS, in Util::GetModulePath()) through its "CreateWgt", passing @p _qmapParam on. Null when the
/// library or the function is missing, or when making the view threw (logged). The view comes without
/// a parent and nothing here keeps it: whether the caller or the widget library deletes it is agreed
/// between the two (the tree panel leaves its menu view to the menu library). GUI thread.
CLS_ViewBasic* GetWgtView(const std::string& _strModuleName, const QMap<QString, QVariant>& _qmapParam);
