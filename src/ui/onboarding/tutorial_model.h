#pragma once

#include "core/pipeline_state.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace velmora {

class AppSettings;
class PipelineCoordinator;

/// What both tries of dictation show: the key, what the pipeline does, and what went wrong.
class TutorialModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the window's")
    Q_PROPERTY(QString keyLabel READ keyLabel NOTIFY keyChanged)
    /// Which key it is where the texts say "Fn"; empty when it really is that one.
    Q_PROPERTY(QString keyNote READ keyNote NOTIFY keyChanged)
    Q_PROPERTY(bool recording READ isRecording NOTIFY stateChanged)
    Q_PROPERTY(QString hint READ hint NOTIFY stateChanged)
    /// Whether a test recording would begin now.
    Q_PROPERTY(bool canRecord READ canRecord NOTIFY stateChanged)
    /// Why the last dictation gave no text; empty when it did, or when another has begun.
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    /// `startTestRecording` dictates without the key.
    TutorialModel(const AppSettings& settings, const PipelineCoordinator& pipeline,
                  std::function<void()> startTestRecording, QObject* parent = nullptr);

    [[nodiscard]] QString keyLabel() const;
    [[nodiscard]] QString keyNote() const;
    [[nodiscard]] bool isRecording() const;
    [[nodiscard]] QString hint() const;
    [[nodiscard]] bool canRecord() const;
    [[nodiscard]] QString problem() const { return m_problem; }

    Q_INVOKABLE void record();
    void forgetProblem() { setProblem({}); }

Q_SIGNALS:
    void keyChanged();
    void stateChanged();
    void problemChanged();

private:
    void follow(const PipelineState& state);
    void setProblem(const QString& problem);

    const AppSettings& m_settings;
    const PipelineCoordinator& m_pipeline;
    const std::function<void()> m_startTestRecording;
    QString m_problem;
};

} // namespace velmora
