#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// `VButtonSize.Sm` in views.
namespace velmora::VButtonSizes {
Q_NAMESPACE
QML_NAMED_ELEMENT(VButtonSize)

enum VButtonSize { Sm, Md };
Q_ENUM_NS(VButtonSize)

} // namespace velmora::VButtonSizes
