#pragma once
// The few Qt calls that Qt 5.15 and Qt 6 spell differently, one inline helper each, so that the
// rest of the code reads the same on both majors. Each helper names the Qt 5 call it stands for and
// answers the same on both. Any thread. Not installed: the library's own sources and tests only.

#include <QDropEvent>
#include <QIcon>
#include <QMetaType>
#include <QMouseEvent>
#include <QPixmap>
#include <QPointF>
#include <QtGlobal>

namespace QtCompat {

// Position of a mouse event in the receiving widget: QMouseEvent::localPos() in Qt 5,
// QMouseEvent::position() in Qt 6.
inline QPointF EventPos(const QMouseEvent* _pEvent)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return _pEvent->position();
#else
    return _pEvent->localPos();
#endif
}

// Position of a drag or a drop in the receiving widget: QDropEvent::posF() in Qt 5,
// QDropEvent::position() in Qt 6.
inline QPointF EventPos(const QDropEvent* _pEvent)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return _pEvent->position();
#else
    return _pEvent->posF();
#endif
}

// Id of the meta-type registered under _pName (its name or an alias), QMetaType::UnknownType when
// there is none: QMetaType::type(name) in Qt 5, QMetaType::fromName(name).id() in Qt 6. Qt 6 also
// finds a container by its Qt 5 spelling ("QVector<T>" is "QList<T>" there).
inline int MetaTypeId(const char* _pName)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QMetaType::fromName(_pName).id();
#else
    return QMetaType::type(_pName);
#endif
}

// Primary name of the meta-type _iId, null when there is none: QMetaType::typeName(id) in Qt 5,
// QMetaType(id).name() in Qt 6.
inline const char* MetaTypeName(int _iId)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QMetaType(_iId).name();
#else
    return QMetaType::typeName(_iId);
#endif
}

// Pixmap of an icon at device pixel ratio 1, whatever the screen's ratio: QIcon::pixmap(size) in
// Qt 5 (without Qt::AA_UseHighDpiPixmaps, which pages don't set); Qt 6 always makes a pixmap for
// the screen's ratio (the @2x image at QT_SCALE_FACTOR=2), so the ratio is named:
// QIcon::pixmap(size, 1.0).
inline QPixmap IconPixmapAt1x(const QIcon& _icon, const QSize& _size)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return _icon.pixmap(_size, 1.0);
#else
    return _icon.pixmap(_size);
#endif
}

} // namespace QtCompat
