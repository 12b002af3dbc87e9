#pragma once
// Result of an operation of the device-management library's objects. A negative m_iCode means
// failure; the tree widgets read only the code, the message and the extension map are for the
// client's logs and pages.

#include <QMap>
#include <QString>

/// Result of an operation of the device-management library's objects (CLS_IResourceTree,
/// I_CustomTreeManage). A negative m_iCode means failure. Where the tree widgets look at a result
/// they read only the code; the message and the extension map are for the client's logs and pages.
struct STRCT_DevResult
{
    int m_iCode = 0;                     ///< 0 or positive: success; negative: failure
    QString m_qstrMessage;               ///< readable text of the result
    QMap<QString, QString> m_qmapExtend; ///< further named values of the result
};
