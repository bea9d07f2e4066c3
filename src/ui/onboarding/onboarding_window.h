#pragma once

#include "ui/kit/ordinary_window.h"
#include "ui/onboarding/onboarding_model.h"

namespace velmora {

/// The window of a first start. It closes itself after the last step.
class OnboardingWindow : public OrdinaryWindow {
    Q_OBJECT

public:
    OnboardingWindow(UiEngine& engine, const OnboardingNeighbours& neighbours);
    ~OnboardingWindow() override;

protected:
    void refresh() override { m_model.refresh(); }
    void exposeEvent(QExposeEvent* event) override;

private:
    OnboardingModel m_model;
};

} // namespace velmora
