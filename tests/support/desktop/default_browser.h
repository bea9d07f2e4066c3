#pragma once

#include <QString>

namespace velmora::test {

/// Makes a program, which gets the address as its only argument, the one that opens http links of this user.
/// Only within a virtual desktop, whose user it is.
void makeDefaultBrowser(const QString& program);

} // namespace velmora::test
