#include "platform/audio_device_error.h"

namespace velmora {
namespace {

struct Describe {
    QString operator()(const AudioDeviceError::NotFound& r) const {
        return QStringLiteral("микрофон не найден (%1)").arg(r.uniqueID);
    }
    QString operator()(const AudioDeviceError::SetFailed& r) const {
        return QStringLiteral("звуковой сервер отказал в записи (код %1)").arg(r.status);
    }
    QString operator()(const AudioDeviceError::MicNotAuthorized&) const {
        return QStringLiteral("нет доступа к микрофону");
    }
    QString operator()(const AudioDeviceError::EngineUnavailable&) const {
        return QStringLiteral("нет доступного микрофона");
    }
};

} // namespace

AudioDeviceError::AudioDeviceError(Reason reason)
    : m_reason(std::move(reason)) {}

QString AudioDeviceError::localizedDescription() const {
    return std::visit(Describe{}, m_reason);
}

} // namespace velmora
