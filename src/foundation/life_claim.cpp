#include "foundation/life_claim.h"

#include <QFile>

#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

namespace velmora {
namespace {

bool lock(int descriptor, int operation) {
    while (::flock(descriptor, operation) != 0) {
        if (errno != EINTR)
            return false;
    }
    return true;
}

} // namespace

bool claimForLife(int descriptor, const QString& path) {
    lock(descriptor, LOCK_EX); // waits at most for somebody who clears up just now
    struct stat opened {};
    struct stat named {};
    return ::fstat(descriptor, &opened) == 0 && ::lstat(QFile::encodeName(path).constData(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

bool isAbandoned(int descriptor) {
    return lock(descriptor, LOCK_EX | LOCK_NB);
}

} // namespace velmora
