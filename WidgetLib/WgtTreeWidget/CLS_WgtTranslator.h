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

class CLS_WgtTranslator : public QTranslator
{
    Q_OBJECT

public:
    // Makes and installs the translator once, in the language of QLocale() when the library has a
    // translation for it and in English otherwise. 0; -1 without an application object.
    static int Install();
    // Chooses the language of the library's texts (installs the translator first if needed).
    // 0 when the library has a translation for the language, -1 when it fell back to English.
    // Open panels follow with the application's language-change event.
    static int SetLanguage(const QLocale& _locale);
    // The installed translator, or null.
    static CLS_WgtTranslator* Instance();
    // Every translation key of the library: (context, key).
    static QVector<QPair<QByteArray, QByteArray>> Keys();
    // Folder of the embedded translations, and their file name before the language.
    static QString TranslationDir();
    static QString TranslationPrefix();

    // The language whose file is loaded, as in the file name ("en", "de", "zh_CN").
    QString Language() const;

    QString translate(const char* _pContext, const char* _pSourceText, const char* _pDisambiguation = nullptr,
                      int _iCount = -1) const override;

protected:
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
