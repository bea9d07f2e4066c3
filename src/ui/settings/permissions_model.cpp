#include "ui/settings/permissions_model.h"

#include "ui/kit/v_icon.h"

#include <QPointer>

#include <array>

namespace velmora {
namespace {

enum Row { Microphone, Accessibility, InputMonitoring, RowCount };

struct Texts {
    const char16_t* title;
    const char16_t* hint;
    VIcon icon;
};

constexpr std::array<Texts, RowCount> rowTexts{{
    {u"Микрофон", u"чтобы слышать, что вы диктуете", VIcon::mic},
    {u"Вставка текста", u"чтобы вставлять слова в другие программы", VIcon::accessibility},
    {u"Отслеживание клавиш", u"чтобы горячая клавиша работала везде", VIcon::inputMon},
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
    connect(&perms, &PermissionManager::accessibilityGrantedChanged, this,
            [this] { refreshRow(Accessibility); });
    connect(&perms, &PermissionManager::inputMonitoringGrantedChanged, this,
            [this] { refreshRow(InputMonitoring); });
}

void PermissionsModel::request(int row) {
    switch (row) {
    case Microphone:
        return m_tasks.start(QStringLiteral("microphone permission"), askForMicrophone(&m_perms));
    case Accessibility:
        return m_perms.requestAccessibility();
    case InputMonitoring:
        return m_perms.requestInputMonitoring();
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
        return isGranted(index.row()) ? QStringLiteral("Есть") : QStringLiteral("Нет");
    case Icon:
        return static_cast<int>(texts.icon);
    default:
        return {};
    }
}

QHash<int, QByteArray> PermissionsModel::roleNames() const {
    return {{Title, "title"},
            {Hint, "hint"},
            {Granted, "granted"},
            {StateLabel, "stateLabel"},
            {Icon, "rightIcon"}};
}

bool PermissionsModel::isGranted(int row) const {
    switch (row) {
    case Microphone:
        return m_perms.micGranted();
    case Accessibility:
        return m_perms.accessibilityGranted();
    default:
        return m_perms.inputMonitoringGranted();
    }
}

void PermissionsModel::refreshRow(int row) {
    Q_EMIT dataChanged(index(row), index(row), {Granted, StateLabel});
}

} // namespace velmora
