#pragma once

#include "support/onboarding_stage.h"

#include <gtest/gtest.h>

namespace velmora::test {

/// The first run, with everything around it in the test's hand.
struct OnboardingFixture : testing::Test, DictationOnFakes {
    using Step = OnboardingModel::Step;

    /// As if the last run had ended there.
    void storeStep(qint64 step) { defaults.set(OnboardingModel::storedStepKey, step); }
    [[nodiscard]] qint64 storedStep() const {
        return defaults.integer(OnboardingModel::storedStepKey).value_or(-1);
    }

    AuthStore auth{folder.filePath(QStringLiteral("Velmora")), defaults};
    OnboardingStage stage{*this, auth};
};

} // namespace velmora::test
