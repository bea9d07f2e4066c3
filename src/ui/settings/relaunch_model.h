#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmora {

class Relauncher;

/// The button that starts the program anew.
class RelaunchModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the sheet's")
    Q_PROPERTY(bool relaunching READ relaunching NOTIFY relaunchingChanged)
    Q_PROPERTY(QString label READ label NOTIFY relaunchingChanged)

public:
    explicit RelaunchModel(Relauncher& relauncher, QObject* parent = nullptr)
        : QObject(parent)
        , m_relauncher(relauncher) {}

    [[nodiscard]] bool relaunching() const { return m_relaunching; }
    [[nodiscard]] QString label() const;

    /// Once is enough; may be tried again when it failed.
    Q_INVOKABLE void relaunch();

Q_SIGNALS:
    void relaunchingChanged();

private:
    void setRelaunching(bool relaunching);

    Relauncher& m_relauncher;
    bool m_relaunching = false;
};

} // namespace velmora
