#include "CLS_WgtTranslator.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFileInfo>
#include <QPointer>

namespace {

// The one installed translator; a child of the application object, which destroys it.
QPointer<CLS_WgtTranslator> s_pTranslator;

// Set while this thread asks the other translators: the library's translator then gives nothing.
thread_local bool s_blAskingOthers = false;

QByteArray KeyOf(const char* _pContext, const char* _pSourceText)
{
    QByteArray qbaKey(_pContext != nullptr ? _pContext : "");
    qbaKey.append('\x04');
    qbaKey.append(_pSourceText);
    return qbaKey;
}

} // namespace

CLS_WgtTranslator::CLS_WgtTranslator(QObject* _pParent) : QTranslator(_pParent) {}

int CLS_WgtTranslator::Install()
{
    QCoreApplication* pApp = QCoreApplication::instance();
    if (pApp == nullptr)
        return -1;
    if (!s_pTranslator.isNull())
        return 0;
    auto* pTranslator = new CLS_WgtTranslator(pApp); // owned by the application object
    pTranslator->LoadLanguage(QLocale());
    // Translators the application installed before this one are asked after it: note their keys
    // now, and again at each language change of the application (see eventFilter).
    pTranslator->RefreshApplicationKeys();
    s_pTranslator = pTranslator;
    QCoreApplication::installTranslator(pTranslator);
    pApp->installEventFilter(pTranslator);
    return 0;
}

int CLS_WgtTranslator::SetLanguage(const QLocale& _locale)
{
    if (Install() != 0)
        return -1;
    // Loading into an installed translator posts a language change to the application.
    return s_pTranslator->LoadLanguage(_locale);
}

CLS_WgtTranslator* CLS_WgtTranslator::Instance()
{
    return s_pTranslator.data();
}

QVector<QPair<QByteArray, QByteArray>> CLS_WgtTranslator::Keys()
{
    // Every key the library passes through tr or translate. The colour names are translated when
    // the library is loaded (ConstDefine.cpp), with the context of QObject::tr.
    return {
        {"CLS_WgtTreeWidget", "Form"},
        {"CLS_WgtTreeWidget", "msg_no_results"},
        {"CLS_WgtTreeWidget", "acc_search_input"},
        {"CLS_WgtTreeWidget", "acc_search_input_desc"},
        {"CLS_WgtTreeWidget", "acc_search_result"},
        {"CLS_WgtTreeWidget", "acc_search_result_desc"},
        {"CLS_WgtTreeWidget", "acc_btn_clear"},
        {"CLS_WgtTreeWidget", "acc_btn_clear_desc"},
        {"CLS_WgtTreeWidget", "acc_btn_search"},
        {"CLS_WgtTreeWidget", "acc_btn_search_desc"},
        {"CLS_WgtItemToolBar", "acc_item_btn_desc"},
        {"CLS_TreeAccessibility", "acc_tree_desc"},
        {"CLS_TreeAccessibility", "acc_header_name"},
        {"CLS_TreeAccessibility", "acc_header_buttons"},
        {"CLS_TreeAccessibility", "acc_buttons_name"},
        {"CLS_TreeAccessibility", "acc_no_buttons"},
        {"CLS_TreeAccessibility", "acc_buttons_desc"},
        {"CLS_TreeAccessibility", "acc_row_branch"},
        {"CLS_TreeAccessibility", "acc_part_checked"},
        {"CLS_TreeAccessibility", "acc_words_part_checked"},
        {"CLS_DeviceTreeAccessible", "acc_counts"},
        {"CLS_DeviceTreeAccessible", "acc_separator"},
        {"CLS_DeviceTreeAccessible", "acc_kind_group"},
        {"CLS_DeviceTreeAccessible", "acc_kind_host"},
        {"CLS_DeviceTreeAccessible", "acc_kind_channel"},
        {"CLS_DeviceTreeAccessible", "acc_kind_alarm_in"},
        {"CLS_DeviceTreeAccessible", "acc_kind_alarm_out"},
        {"CLS_DeviceTreeAccessible", "acc_kind_middleware"},
        {"CLS_DeviceTreeAccessible", "acc_kind_matrix"},
        {"CLS_DeviceTreeAccessible", "acc_kind_matrix_in"},
        {"CLS_DeviceTreeAccessible", "acc_kind_matrix_out"},
        {"CLS_DeviceTreeAccessible", "acc_kind_map"},
        {"CLS_DeviceTreeAccessible", "acc_kind_decoder"},
        {"CLS_DeviceTreeAccessible", "acc_kind_decoder_out"},
        {"CLS_DeviceTreeAccessible", "acc_kind_decoder_area"},
        {"CLS_DeviceTreeAccessible", "acc_kind_screen_out"},
        {"CLS_DeviceTreeAccessible", "acc_kind_decoder_in"},
        {"CLS_DeviceTreeAccessible", "acc_kind_tv_wall"},
        {"CLS_DeviceTreeAccessible", "acc_kind_plan_group"},
        {"CLS_DeviceTreeAccessible", "acc_kind_plan"},
        {"CLS_DeviceTreeAccessible", "acc_kind_door_server"},
        {"CLS_DeviceTreeAccessible", "acc_kind_resource"},
        {"CLS_DeviceTreeAccessible", "acc_state_online"},
        {"CLS_DeviceTreeAccessible", "acc_state_fault"},
        {"CLS_DeviceTreeAccessible", "acc_state_no_video"},
        {"CLS_DeviceTreeAccessible", "acc_state_offline"},
        {"QObject", "lbl_car_calor_white"},
        {"QObject", "lbl_car_calor_red"},
        {"QObject", "lbl_car_calor_yellow"},
        {"QObject", "lbl_car_calor_blue"},
        {"QObject", "lbl_car_calor_green"},
        {"QObject", "lbl_car_calor_purple"},
        {"QObject", "lbl_car_calor_black"},
        {"QObject", "lbl_car_calor_grey"},
        {"QObject", "lbl_car_calor_cyan"},
        {"QObject", "lbl_car_calor_brown"},
    };
}

QString CLS_WgtTranslator::TranslationDir()
{
    return QStringLiteral(":/WgtTreeWidget/i18n");
}

QString CLS_WgtTranslator::TranslationPrefix()
{
    return QStringLiteral("wgttreewidget");
}

QString CLS_WgtTranslator::Language() const
{
    return m_qstrLanguage;
}

int CLS_WgtTranslator::LoadLanguage(const QLocale& _locale)
{
    int iResult = 0;
    if (!load(_locale, TranslationPrefix(), "_", TranslationDir())) {
        iResult = -1;
        load(TranslationPrefix() + "_en", TranslationDir());
    }
    // "wgttreewidget_zh_CN.qm" -> "zh_CN"
    m_qstrLanguage = QFileInfo(filePath()).completeBaseName().mid(TranslationPrefix().size() + 1);
    return iResult;
}

void CLS_WgtTranslator::RefreshApplicationKeys()
{
    QSet<QByteArray> qsetKeys;
    s_blAskingOthers = true;
    for (const auto& pairKey : Keys()) {
        const QString qstrText =
            QCoreApplication::translate(pairKey.first.constData(), pairKey.second.constData());
        // QCoreApplication gives the key itself when no translator has a text for it.
        if (qstrText != QString::fromUtf8(pairKey.second))
            qsetKeys.insert(KeyOf(pairKey.first.constData(), pairKey.second.constData()));
    }
    s_blAskingOthers = false;
    QWriteLocker locker(&m_rwlockApplicationKeys);
    m_qsetApplicationKeys = qsetKeys;
}

QString CLS_WgtTranslator::translate(const char* _pContext, const char* _pSourceText,
                                     const char* _pDisambiguation, int _iCount) const
{
    if (s_blAskingOthers || _pSourceText == nullptr)
        return QString();
    const QString qstrText = QTranslator::translate(_pContext, _pSourceText, _pDisambiguation, _iCount);
    if (qstrText.isNull())
        return qstrText;
    QReadLocker locker(&m_rwlockApplicationKeys);
    if (m_qsetApplicationKeys.contains(KeyOf(_pContext, _pSourceText)))
        return QString(); // the application's translator, asked after this one, gives its own text
    return qstrText;
}

bool CLS_WgtTranslator::eventFilter(QObject* _pWatched, QEvent* _pEvent)
{
    // A translator was installed, removed or loaded: the application's keys may have changed. The
    // application object sees this before its widgets, which are told by posted events.
    // As an application filter this sees every event of the GUI thread, many of them posted by
    // other threads: the receiver is compared first, so that only the application's own events
    // are read at all, and the filter costs one comparison for the rest.
    if (_pWatched == QCoreApplication::instance() && _pEvent->type() == QEvent::LanguageChange)
        RefreshApplicationKeys();
    return QTranslator::eventFilter(_pWatched, _pEvent);
}
