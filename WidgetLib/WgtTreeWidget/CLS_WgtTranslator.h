#pragma once
// The library's own translator: the texts of the library's translation keys, from the translations
// embedded in the library. The first panel installs it; it gives a text only for a key that no
// translator of the application gives, so an application's own translation always wins.
// Install, SetLanguage and the application's language changes: GUI thread. translate: any thread.

#include <QByteArray>
#include <QLocale>
#include <QPair>
#include <QReadWriteLock>
#include <QSet>
#include <QString>
#include <QTranslator>
#include <QVector>

/// The library's own translator, for the library's translation keys (Keys()).
///
/// One instance per process, made by Install() as a child of the application object, which owns
/// and destroys it. It is installed after the application's translators and so asked before them,
/// but it gives a text only for a key that none of them gives: an application's own translation
/// always wins. Install, SetLanguage and the application's language changes: GUI thread. translate:
/// any thread.
class CLS_WgtTranslator : public QTranslator
{
    Q_OBJECT

public:
    /// Makes and installs the translator once, in the language of QLocale() when the library has a
    /// translation for it and in English otherwise. 0; -1 without an application object.
    /// Later calls do nothing and give 0. Each CLS_WgtTreeWidget calls it at construction.
    static int Install();
    /// Chooses the language of the library's texts (installs the translator first if needed).
    /// 0 when the library has a translation for the language, -1 when it fell back to English.
    /// Open panels follow with the application's language-change event.
    /// Also -1, with nothing changed, without an application object.
    static int SetLanguage(const QLocale& _locale);
    /// The installed translator, or null. Owned by the application object; do not delete it.
    static CLS_WgtTranslator* Instance();
    /// Every translation key of the library: (context, key).
    /// The panel's texts under "CLS_WgtTreeWidget", the tool bar's under "CLS_WgtItemToolBar" and the
    /// colour names under "QObject".
    static QVector<QPair<QByteArray, QByteArray>> Keys();
    /// Folder of the embedded translations: the resource path ":/WgtTreeWidget/i18n".
    static QString TranslationDir();
    /// File name of the embedded translations before the language: "wgttreewidget", as in
    /// "wgttreewidget_de.qm".
    static QString TranslationPrefix();

    /// The language whose file is loaded, as in the file name ("en", "de", "zh_CN").
    /// Empty when no file could be loaded.
    QString Language() const;

    /// The library's text for @p _pSourceText in @p _pContext, or a null string when the library has
    /// none or when another installed translator gives its own text for that key (Qt then asks the
    /// next translator). Safe on any thread.
    QString translate(const char* _pContext, const char* _pSourceText, const char* _pDisambiguation = nullptr,
                      int _iCount = -1) const override;

protected:
    /// Installed on the application object, so it sees every event of the GUI thread; acts only on the
    /// application's own language change (a translator installed, removed or loaded) and then notes
    /// again which library keys the other translators give. Never consumes an event.
    /// @return the result of QTranslator::eventFilter (false).
    bool eventFilter(QObject* _pWatched, QEvent* _pEvent) override;

private:
    explicit CLS_WgtTranslator(QObject* _pParent);
    int LoadLanguage(const QLocale& _locale);
    // Asks the other installed translators for each key of the library and notes those they give.
    void RefreshApplicationKeys();

    QString m_qstrLanguage;
    QSet<QByteArray> m_qsetApplicationKeys; // context + '\x04' + key, given by the application
    mutable QReadWriteLock m_rwlockApplicationKeys;
};
