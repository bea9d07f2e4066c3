// How often the main thread asks the sound server something, and waits for the answer, at a press of the
// hotkey.

#include "core/audio_recorder.h"
#include "platform/linux/pulse_audio_engine.h"
#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_devices.h"
#include "support/desktop/private_pulse_server.h"
#include "support/fake_audio.h"
#include "support/hand_loop.h"

#include <QTemporaryDir>
#include <QTest>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <pulse/introspect.h>

#include <atomic>
#include <thread>

namespace {

const std::thread::id mainThread = std::this_thread::get_id();
std::atomic<int> questions = 0;

/// The library's own function of this name, whose calls by the main thread are counted.
template<typename Function>
Function* counted(const char* name) {
    if (std::this_thread::get_id() == mainThread)
        ++questions;
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// These stand before those of libpulse in this program. There is one for every question that the adapters
// know.

extern "C" pa_operation* pa_context_get_source_info_list(pa_context* context, pa_source_info_cb_t answer,
                                                         void* data) {
    return counted<decltype(pa_context_get_source_info_list)>(__func__)(context, answer, data);
}

extern "C" pa_operation* pa_context_get_source_info_by_name(pa_context* context, const char* name,
                                                            pa_source_info_cb_t answer, void* data) {
    return counted<decltype(pa_context_get_source_info_by_name)>(__func__)(context, name, answer, data);
}

extern "C" pa_operation* pa_context_get_server_info(pa_context* context, pa_server_info_cb_t answer,
                                                    void* data) {
    return counted<decltype(pa_context_get_server_info)>(__func__)(context, answer, data);
}

using namespace Qt::StringLiterals;
using namespace velmora;
using namespace velmora::test;

namespace {

class PulseQuestionsTest : public testing::Test {
protected:
    PulseQuestionsTest() {
        m_server.loadHummingMicrophone(u"mic"_s, 500);
        m_defaults.set(u"micUniqueID"_s, u"mic"_s);
    }

    [[nodiscard]] bool devicesAreKnown() {
        return QTest::qWaitFor([this] { return !m_devices.inputs().empty(); }, 20'000);
    }

    /// The questions of one press: the pipeline looks whether it may record, and the recorder starts.
    int press(PulseAudioEngine& engine) {
        ProcessFolder recordings(m_folder.path(), u"recordings"_s);
        AudioRecorder recorder(m_loop, m_defaults, engine, m_codec, recordings);
        const int before = questions;
        EXPECT_EQ(recorder.authorization(), MicrophoneAuthorization::Authorized);
        recorder.start();
        const int asked = questions - before;
        recorder.stop();
        return asked;
    }

    PrivatePulseServer m_server;
    PulseConnection m_connection{m_server.address()};
    PulseDevices m_devices{m_connection};
    HandLoop m_loop;
    QTemporaryDir m_folder;
    UserDefaults m_defaults{m_folder.filePath(u"defaults.json"_s)};
    FakeAudioCodec m_codec;
};

} // namespace

TEST_F(PulseQuestionsTest, Press_DevicesKnown_AsksOnce) {
    ASSERT_TRUE(devicesAreKnown());
    PulseAudioEngine engine(m_connection, &m_devices);
    EXPECT_EQ(press(engine), 1);
    EXPECT_EQ(press(engine), 1);
}

// What the counting sees without that knowledge.
TEST_F(PulseQuestionsTest, Press_NothingKnown_AsksFourTimes) {
    PulseAudioEngine engine(m_connection);
    EXPECT_EQ(press(engine), 4);
}

TEST_F(PulseQuestionsTest, Press_ServerRestartedAMomentAgo_Records) {
    ASSERT_TRUE(devicesAreKnown());
    PulseAudioEngine engine(m_connection, &m_devices);
    m_server.kill();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !m_devices.knownInputs(); }, 20'000));
    m_server.start();
    m_server.loadHummingMicrophone(u"mic"_s, 500);
    EXPECT_GE(press(engine), 1);
}

TEST_F(PulseQuestionsTest, MicrophoneUnplugged_EngineHearsOfItWithoutAsking) {
    ASSERT_TRUE(devicesAreKnown());
    PulseAudioEngine engine(m_connection, &m_devices);
    const QByteArray plug = m_server.loadHummingMicrophone(u"other"_s, 700);
    const auto has = [&](std::size_t inputs) {
        return QTest::qWaitFor([&] { return engine.availableInputs().size() == inputs; }, 20'000);
    };
    ASSERT_TRUE(has(2));
    const int before = questions;
    m_server.unloadModule(plug);
    EXPECT_TRUE(has(1));
    EXPECT_THROW(engine.setInputDevice(u"other"_s), AudioDeviceError);
    EXPECT_EQ(questions, before);
}
