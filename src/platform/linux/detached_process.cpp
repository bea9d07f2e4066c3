#include "platform/linux/detached_process.h"

#include "foundation/error.h"

#include <QProcess>

namespace velmora {

void startDetached(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    if (!process.startDetached())
        throw PlainError(process.errorString());
}

} // namespace velmora
