#include "core/hotkey_gesture_gate.h"
#include "support/dictation_on_fakes.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// The key's gestures and the dictation that they make, joined as the program joins them.
class GestureDictationTest : public testing::Test, protected DictationOnFakes {
protected:
    GestureDictationTest() {
        gate.onStart = [this] { pipeline.startRecording(); };
        gate.onStop = [this] { pipeline.stopAndProcess(); };
    }

    void tap() {
        gate.press();
        loop.advance(50ms);
        gate.release();
    }
    [[nodiscard]] bool isRecording() const {
        return std::holds_alternative<pipeline_state::Recording>(pipeline.state());
    }

    HotkeyGestureGate gate{loop, settings};
};

} // namespace

TEST_F(GestureDictationTest, SecondPressAt310msAfterATap_GoesOnWithTheSameRecording) {
    tap();
    loop.advance(310ms);
    tap();
    loop.advance(5s);
    EXPECT_TRUE(isRecording());
    EXPECT_EQ(engine.starts, 1);
    tap();
    loop.advance(150ms);
    EXPECT_THAT(server.requests, SizeIs(1));
    EXPECT_NEAR(recorder.lastDuration(), 5.56, 1e-9); // from the very first press
}

TEST_F(GestureDictationTest, SecondPressAt330msAfterATap_IsDroppedWithItsRelease) {
    tap();
    loop.advance(330ms); // the window has expired, and the recording is in its tail
    gate.press();
    loop.advance(1s);
    EXPECT_THAT(server.requests, SizeIs(1));
    gate.release();
    loop.advance(1s);
    EXPECT_EQ(engine.starts, 1);
    EXPECT_THAT(player.played, SizeIs(1));
    EXPECT_THAT(server.requests, SizeIs(1));
    EXPECT_NEAR(recorder.lastDuration(), 0.52, 1e-9); // tap, window and tail
    EXPECT_FALSE(isRecording());
    server.done(QStringLiteral("раз"));
    server.finish();
    loop.runPosted();
    tap(); // the gate is ready for the next
    EXPECT_TRUE(isRecording());
    EXPECT_EQ(engine.starts, 2);
}

TEST_F(GestureDictationTest, LoneTap_BelowTheLeastDuration_SendsNothing) {
    settings.setMinDuration(0.53);
    tap();
    loop.advance(1s);
    EXPECT_THAT(server.requests, IsEmpty());
    EXPECT_TRUE(std::holds_alternative<pipeline_state::Error>(pipeline.state()));
}

TEST_F(GestureDictationTest, DoubleTapDuringAnError_LatchesNothingAndTheNextGestureWorks) {
    fail();
    tap();
    loop.advance(100ms);
    tap();
    EXPECT_FALSE(isRecording());
    engine.authorizationStatus = MicrophoneAuthorization::Authorized;
    loop.advance(6s);
    gate.press(); // lets the latch go
    gate.release();
    EXPECT_FALSE(isRecording());
    gate.press();
    EXPECT_TRUE(isRecording());
}
