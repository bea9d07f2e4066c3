#pragma once

#include <QString>

namespace velmora::test {

/// Does on the sign-in page at `url` what a person does who creates an account, and gives the velmora:// URL
/// to which the page then leads; empty when it leads nowhere.
[[nodiscard]] QString createAccount(const QString& url, const QString& email, const QString& password);

/// The button that the page offers to the user of this machine.
[[nodiscard]] QString continueAsOwnUser();

} // namespace velmora::test
