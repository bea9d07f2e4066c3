#include "ui/settings/about_model.h"

namespace velmora {
namespace {

QString versionText(const InfoDictionary& info) {
    const auto version = info.string(QStringLiteral("CFBundleShortVersionString"));
    return version ? QStringLiteral("Версия ") + *version : QString();
}

} // namespace

AboutModel::AboutModel(const InfoDictionary& info, Workspace& workspace, QObject* parent)
    : QObject(parent)
    , m_version(versionText(info))
    , m_site(info, workspace) {}

} // namespace velmora
