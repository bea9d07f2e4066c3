#include "ui/kit/v_choice.h"

namespace velmora {
namespace {

const QString valueKey = QStringLiteral("value");
const QString titleKey = QStringLiteral("title");

QVariant part(const QVariant& option, const QString& key) {
    return option.metaType() == QMetaType::fromType<QVariantMap>() ? option.toMap().value(key) : option;
}

QVariant valueOf(const QVariant& option) {
    return part(option, valueKey);
}

} // namespace

QVariantMap VChoice::option(const QVariant& value, const QString& title) {
    return {{valueKey, value}, {titleKey, title}};
}

void VChoice::setOptions(const QVariantList& options) {
    if (options == m_options)
        return;
    m_options = options;
    Q_EMIT optionsChanged();
    findIndex();
}

QStringList VChoice::titles() const {
    QStringList titles;
    for (const QVariant& option : m_options)
        titles.append(part(option, titleKey).toString());
    return titles;
}

void VChoice::setSelected(const QVariant& value) {
    if (value == m_selected)
        return;
    m_selected = value;
    Q_EMIT selectedChanged();
    findIndex();
}

void VChoice::pick(int index) {
    if (index < 0 || index >= m_options.size())
        return;
    const QVariant value = valueOf(m_options[index]);
    if (index != m_index) {
        setSelected(value);
        Q_EMIT picked(value);
    }
    Q_EMIT confirmed(value);
}

void VChoice::step(int by) {
    if (m_options.isEmpty())
        return;
    if (const int next = std::clamp(m_index + by, 0, static_cast<int>(m_options.size()) - 1); next != m_index)
        pick(next);
    Q_EMIT stepped(m_index);
}

void VChoice::findIndex() {
    const auto found = std::find_if(m_options.cbegin(), m_options.cend(),
                                    [this](const QVariant& option) { return valueOf(option) == m_selected; });
    const int index = found == m_options.cend() ? -1 : static_cast<int>(found - m_options.cbegin());
    if (std::exchange(m_index, index) != index)
        Q_EMIT indexChanged();
}

} // namespace velmora
