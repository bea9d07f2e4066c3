#pragma once

#include <QObject>
#include <QStringList>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// One of several options. An option is any printable value, which is shown as it prints, or a map of a
/// `value` and its `title`.
class VChoice : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QVariantList options READ options WRITE setOptions NOTIFY optionsChanged)
    Q_PROPERTY(QStringList titles READ titles NOTIFY optionsChanged)
    /// The chosen value; need not be one of the options.
    Q_PROPERTY(QVariant selected READ selected WRITE setSelected NOTIFY selectedChanged)
    /// Of the chosen value among the options, else -1.
    Q_PROPERTY(int index READ index NOTIFY indexChanged)

public:
    using QObject::QObject;

    /// An option shown by its title.
    [[nodiscard]] static QVariantMap option(const QVariant& value, const QString& title);

    [[nodiscard]] const QVariantList& options() const { return m_options; }
    void setOptions(const QVariantList& options);
    [[nodiscard]] QStringList titles() const;
    [[nodiscard]] const QVariant& selected() const { return m_selected; }
    void setSelected(const QVariant& value);
    [[nodiscard]] int index() const { return m_index; }

    /// The user takes the option there.
    Q_INVOKABLE void pick(int index);
    /// The user steps on by so many options; not beyond the first and the last.
    Q_INVOKABLE void step(int by);

Q_SIGNALS:
    void optionsChanged();
    void selectedChanged();
    void indexChanged();
    /// The user took another option than the chosen one.
    void picked(const QVariant& value);
    /// The user took that option, be it the chosen one.
    void confirmed(const QVariant& value);
    /// The user stepped to that option.
    void stepped(int index);

private:
    void findIndex();

    QVariantList m_options;
    QVariant m_selected;
    int m_index = -1;
};

} // namespace velmora
