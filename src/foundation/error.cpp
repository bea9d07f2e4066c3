#include "foundation/error.h"

namespace velmora {

const char* Error::what() const noexcept {
    try {
        m_what = localizedDescription().toUtf8();
        return m_what.constData();
    } catch (...) {
        return "velmora::Error";
    }
}

QString describe(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const Error& error) {
        return error.localizedDescription();
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    } catch (...) {
        return QStringLiteral("unknown failure");
    }
}

} // namespace velmora
