#pragma once
// The icons of the tree widgets in Qt Designer's widget box, painted rather than shipped: a root
// with three rows, the device tree's rows with a camera's on-line dot.

#include <QIcon>

namespace CLS_DesignerTreeIcon {

// _blDevices: the device tree's icon (rows with a green state dot) instead of the panel's.
QIcon Make(bool _blDevices);

} // namespace CLS_DesignerTreeIcon
