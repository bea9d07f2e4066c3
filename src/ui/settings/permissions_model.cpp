#include "ui/settings/permissions_model.h"

#include <QPointer>

#include <array>

namespace velmora {
namespace {

enum Row { Microphone, InputMonitoring, Accessibility, RowCount };

struct Texts {
    const char16_t* title;
    const char16_t* hint;
};

constexpr std::array<Texts, RowCount> rowTexts{{
    {u"Микрофон", u"Записать твой голос"},
    {u"Input Monitoring", u"Слушать удержание клавиши Fn"},
    {u"Accessibility", u"Вставлять текст в активное приложение"},
}};

Task<> askForMicrophone(QPointer<PermissionManager> perms) {
    co_await perms->requestMicrophone();
    if (perms && !perms->micGranted())
        perms->openMicSettings();
}

} // namespace

PermissionsModel::PermissionsModel(PermissionManager& perms, QObject* parent)
    : QAbstractListModel(parent)
    , m_perms(perms) {
    connect(&perms, &PermissionManager::micGrantedChanged, this, [this] { refreshRow(Microphone); });
    connect(&perms, &PermissionManager::inputMonitoringGrantedChanged, this,
            [this] { refreshRow(InputMonitoring); });
    connect(&perms, &PermissionManager::accessibilityGrantedChanged, this,
            [this] { refreshRow(Accessibility); });
}

QString PermissionsModel::summary() const {
    for (int row = 0; row < RowCount; ++row) {
        if (!isGranted(row))
            return QStringLiteral("Velmora нужны три разрешения. Без них горячая клавиша или вставка не "
                                  "сработают.");
    }
    return QStringLiteral("Velmora готов к работе — все три разрешения предоставлены.");
}

void PermissionsModel::act(int row) {
    if (isGranted(row))
        openSettings(row);
    else
        request(row);
}

void PermissionsModel::request(int row) {
    switch (row) {
    case Microphone:
        return m_tasks.start(QStringLiteral("microphone permission"), askForMicrophone(&m_perms));
    case InputMonitoring:
        return m_perms.requestInputMonitoring();
    case Accessibility:
        return m_perms.requestAccessibility();
    default:
        return;
    }
}

void PermissionsModel::openSettings(int row) {
    switch (row) {
    case Microphone:
        return m_perms.openMicSettings();
    case InputMonitoring:
        return m_perms.openInputMonitoringSettings();
    case Accessibility:
        return m_perms.openAccessibilitySettings();
    default:
        return;
    }
}

int PermissionsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : RowCount;
}

QVariant PermissionsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Texts& texts = rowTexts.at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case Title:
        return QString::fromUtf16(texts.title);
    case Hint:
        return QString::fromUtf16(texts.hint);
    case Granted:
        return isGranted(index.row());
    case StateLabel:
        return isGranted(index.row()) ? QStringLiteral("Разрешено") : QStringLiteral("Нет доступа");
    case ActionLabel:
        return isGranted(index.row()) ? QStringLiteral("Открыть") : QStringLiteral("Разрешить");
    default:
        return {};
    }
}

QHash<int, QByteArray> PermissionsModel::roleNames() const {
    return {{Title, "title"},
            {Hint, "hint"},
            {Granted, "granted"},
            {StateLabel, "stateLabel"},
            {ActionLabel, "actionLabel"}};
}

bool PermissionsModel::isGranted(int row) const {
    switch (row) {
    case Microphone:
        return m_perms.micGranted();
    case InputMonitoring:
        return m_perms.inputMonitoringGranted();
    default:
        return m_perms.accessibilityGranted();
    }
}

void PermissionsModel::refreshRow(int row) {
    Q_EMIT dataChanged(index(row), index(row), {Granted, StateLabel, ActionLabel});
    Q_EMIT summaryChanged();
}

} // namespace velmora
