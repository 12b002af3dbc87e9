#pragma once
// Icons made from image files, shared by path for the length of one batch of rows: a build, a list
// of additions, a batch of channel states. A batch sets the same few pictures on thousands of rows,
// and reading each file once per batch rather than once per row is most of the cost of a large
// tree. Outside a batch every icon is read afresh, and the next batch reads the files again, so a
// picture that changes on disk is seen as before. Internal to the library; thread of the widgets.

#include <QHash>
#include <QIcon>
#include <QString>

class CLS_RowIconCache
{
public:
    // Opens a batch on this thread. A batch opened inside another one shares the outer batch's icons.
    CLS_RowIconCache();
    ~CLS_RowIconCache();
    CLS_RowIconCache(const CLS_RowIconCache&) = delete;
    CLS_RowIconCache& operator=(const CLS_RowIconCache&) = delete;

    // QIcon(_qstrPath): made once per path while a batch is open on this thread, else every time.
    static QIcon Icon(const QString& _qstrPath);

private:
    static thread_local CLS_RowIconCache* s_pOpenBatch;

    bool m_blOuter;                     // this object opened the batch and closes it
    QHash<QString, QIcon> m_qhashIcons; // by path, for the batch
};
