#pragma once

#include <QStringList>

namespace velmora {

/// Starts a program that outlives this one; throws Error when it can't be started.
void startDetached(const QString& program, const QStringList& arguments);

} // namespace velmora
