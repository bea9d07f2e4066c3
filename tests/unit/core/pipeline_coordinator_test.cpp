#include "foundation/log.h"
#include "support/dictation_on_fakes.h"

#include <QFile>
#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::SizeIs;
namespace state = velmora::pipeline_state;

namespace {

const QString denied = QStringLiteral("Нет доступа к микрофону. Разрешите его в Системных настройках.");
const QString tooShort = QStringLiteral("Слишком коротко — удерживайте клавишу дольше");
const QString emptyReply = QStringLiteral("Пустой ответ от сервера. Попробуйте ещё раз.");
const QString diverged =
    QStringLiteral("Velmora: dictate done diverged from streamed text — skipping residual");

class PipelineCoordinatorTest : public testing::Test, protected DictationOnFakes {
protected:
    PipelineCoordinatorTest() {
        QObject::connect(&pipeline, &PipelineCoordinator::stateChanged,
                         [this](const PipelineState& state) { states.push_back(state); });
        desktop.clipboard = QStringLiteral("моё");
        workspace.front = RunningApplication{QStringLiteral("Mousepad"), QStringLiteral("org.xfce.mousepad")};
    }

    /// A recording of one second up to the open request.
    void dictate() {
        pipeline.startRecording();
        loop.advance(850ms);
        pipeline.stopAndProcess();
        loop.advance(150ms);
        states.clear();
    }
    /// A dictation that the server has answered with `pieces` so far.
    void dictateWithChunks(const QStringList& pieces) {
        dictate();
        for (const QString& piece : pieces)
            server.chunk(piece);
    }
    void serverDone(const QString& text) {
        server.done(text);
        server.finish();
        loop.runPosted();
    }

    /// Another one, for tests in which it goes before the rest.
    [[nodiscard]] std::unique_ptr<PipelineCoordinator> makeCoordinator(AudioRecorder& itsRecorder,
                                                                       DictateService& itsServer) {
        return std::make_unique<PipelineCoordinator>(PipelineCoordinator::Neighbours{
            loop, itsRecorder, settings, history, itsServer, account, injector, sounds, workspace});
    }

    [[nodiscard]] bool isIdle() const { return std::holds_alternative<state::Idle>(pipeline.state()); }
    [[nodiscard]] bool isRecording() const {
        return std::holds_alternative<state::Recording>(pipeline.state());
    }
    [[nodiscard]] QString errorShown() const {
        const auto* error = std::get_if<state::Error>(&pipeline.state());
        return error ? error->message : QString();
    }
    [[nodiscard]] bool fileExists() const {
        return QFile::exists(recorder.lastFileURL().value_or(QString()));
    }

    QStringList lines;
    LogCapture capture{[this](const QString& line) { lines.append(line); }};
    std::vector<PipelineState> states;
};

} // namespace

TEST_F(PipelineCoordinatorTest, Start_RecordsWithTheCueAndWarmsTheTokenUp) {
    pipeline.startRecording();
    EXPECT_EQ(pipeline.state(), PipelineState(state::Recording{0}));
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_THAT(player.played, ElementsAre(Pair(QStringLiteral("Tink"), 0.35F)));
    EXPECT_EQ(account.freshTokenCalls, 1);
}

TEST_F(PipelineCoordinatorTest, Recording_ElapsedTicksTenTimesASecond) {
    pipeline.startRecording();
    loop.advance(300ms);
    EXPECT_THAT(states,
                ElementsAre(PipelineState(state::Recording{0}), PipelineState(state::Recording{0.1}),
                            PipelineState(state::Recording{0.2}), PipelineState(state::Recording{0.3})));
}

TEST_F(PipelineCoordinatorTest, Dictation_WithChunks_GoesThroughTheStatesInOrder) {
    dictate();
    server.status(QStringLiteral("recognising"));
    server.chunk(QStringLiteral("Привет"));
    server.status(QStringLiteral("cleaning"));
    server.chunk(QStringLiteral(", мир"));
    serverDone(QStringLiteral("Привет, мир."));
    EXPECT_THAT(states, ElementsAre(PipelineState(state::Cleaning{}), PipelineState(state::Idle{})));
    EXPECT_EQ(desktop.pasted,
              (QStringList{QStringLiteral("Привет"), QStringLiteral(", мир"), QStringLiteral(".")}));
}

TEST_F(PipelineCoordinatorTest, FirstTextWithoutAStage_ShowsCleaningAtOnce) {
    dictate();
    server.chunk(QStringLiteral("a"));
    EXPECT_THAT(states, ElementsAre(PipelineState(state::Cleaning{})));
}

TEST_F(PipelineCoordinatorTest, OnlyTheCleaningStage_ShowsCleaning) {
    dictate();
    server.status(QStringLiteral("recognising"));
    EXPECT_THAT(states, IsEmpty());
    server.status(QStringLiteral("cleaning"));
    EXPECT_THAT(states, ElementsAre(PipelineState(state::Cleaning{})));
}

TEST_F(PipelineCoordinatorTest, Dictation_CleaningStageBeforeText_ShowsCleaningOnce) {
    dictate();
    EXPECT_EQ(pipeline.state(), PipelineState(state::Transcribing{}));
    server.status(QStringLiteral("cleaning"));
    server.chunk(QStringLiteral("a"));
    EXPECT_THAT(states, ElementsAre(PipelineState(state::Cleaning{})));
}

TEST_F(PipelineCoordinatorTest, Dictation_Finished_KeepsTheHistoryPlaysPopAndDeletesTheFile) {
    const QSignalSpy results(&pipeline, &PipelineCoordinator::lastResultChanged);
    dictate();
    EXPECT_TRUE(fileExists());
    serverDone(QStringLiteral("Текст."));
    ASSERT_THAT(history.items(), SizeIs(1));
    const HistoryItem& item = history.items().front();
    EXPECT_EQ(item.rawText, QStringLiteral("Текст."));
    EXPECT_EQ(item.cleanedText, QStringLiteral("Текст."));
    EXPECT_DOUBLE_EQ(item.durationSec, 1.0);
    EXPECT_EQ(item.date, loop.date());
    EXPECT_EQ(item.appName, QStringLiteral("Mousepad"));
    EXPECT_EQ(item.appBundleId, QStringLiteral("org.xfce.mousepad"));
    EXPECT_EQ(pipeline.lastResult(), item);
    EXPECT_EQ(results.size(), 1);
    EXPECT_EQ(player.played.back().first, QStringLiteral("Pop"));
    EXPECT_FALSE(fileExists());
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(account.refreshMeCalls, 1);
}

TEST_F(PipelineCoordinatorTest, Dictation_IdleReported_FileAlreadyGoneAndHistoryThere) {
    bool fileGone = false;
    bool inHistory = false;
    dictate();
    QObject::connect(&pipeline, &PipelineCoordinator::stateChanged, [&] {
        fileGone = !fileExists();
        inHistory = !history.items().empty();
    });
    serverDone(QStringLiteral("Текст."));
    EXPECT_TRUE(fileGone);
    EXPECT_TRUE(inHistory);
}

TEST_F(PipelineCoordinatorTest, Dictation_WithoutChunks_IsPastedInOnePieceAndTheClipboardPutBack) {
    dictate();
    serverDone(QStringLiteral("Целиком."));
    EXPECT_EQ(desktop.pasted, QStringList{QStringLiteral("Целиком.")});
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("моё"));
}

TEST_F(PipelineCoordinatorTest, Dictation_UploadsTheRecordingAsM4a) {
    dictate();
    EXPECT_EQ(server.requests, QStringList{*recorder.lastFileURL()});
    EXPECT_EQ(server.mimeTypes, QStringList{QStringLiteral("audio/m4a")});
}

TEST_F(PipelineCoordinatorTest, TailAfterStop_StillBelongsToTheRecording) {
    pipeline.startRecording();
    loop.advance(1s);
    pipeline.stopAndProcess();
    loop.advance(149ms);
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_TRUE(isRecording());
    loop.advance(1ms);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_DOUBLE_EQ(recorder.lastDuration(), 1.15);
}

TEST_F(PipelineCoordinatorTest, SecondStopInTheTail_DoesNothingMore) {
    pipeline.startRecording();
    loop.advance(1s);
    pipeline.stopAndProcess();
    loop.advance(100ms);
    pipeline.stopAndProcess();
    loop.advance(1s);
    EXPECT_THAT(server.requests, SizeIs(1));
}

TEST_F(PipelineCoordinatorTest, PressInTheTailOrTheTokenWait_IsDropped) {
    account.holdRefresh = true;
    pipeline.startRecording();
    loop.advance(1s);
    pipeline.stopAndProcess();
    pipeline.startRecording();
    loop.advance(150ms);
    EXPECT_TRUE(isRecording()); // the early refresh hasn't come back
    EXPECT_THAT(server.requests, IsEmpty());
    pipeline.startRecording();
    EXPECT_EQ(engine.starts, 1);
}

TEST_F(PipelineCoordinatorTest, PressInTheTail_PlaysNoSecondCueAndMovesNoStart) {
    pipeline.startRecording();
    loop.advance(1s);
    pipeline.stopAndProcess();
    loop.advance(50ms);
    states.clear();
    pipeline.startRecording();
    EXPECT_EQ(pipeline.state(), PipelineState(state::Recording{1.0}));
    EXPECT_THAT(player.played, SizeIs(1));
    EXPECT_EQ(account.freshTokenCalls, 1);
    loop.advance(100ms);
    EXPECT_THAT(states, ElementsAre(PipelineState(state::Transcribing{}))); // and no tick in between
    serverDone(QStringLiteral("Текст."));
    EXPECT_DOUBLE_EQ(history.items().front().durationSec, 1.15);
}

TEST_F(PipelineCoordinatorTest, TokenComesBack_TheUploadBegins) {
    account.holdRefresh = true;
    pipeline.startRecording();
    loop.advance(1s);
    pipeline.stopAndProcess();
    loop.advance(150ms);
    EXPECT_THAT(server.requests, IsEmpty());
    account.release();
    EXPECT_EQ(pipeline.state(), PipelineState(state::Transcribing{}));
    EXPECT_THAT(server.requests, SizeIs(1));
}

TEST_F(PipelineCoordinatorTest, PressDuringTranscribingCleaningOrError_HasNoEffectNorHasItsRelease) {
    dictate();
    const auto pressAndRelease = [this] {
        const PipelineState before = pipeline.state();
        pipeline.startRecording();
        pipeline.stopAndProcess();
        loop.advance(500ms);
        EXPECT_EQ(pipeline.state(), before);
        EXPECT_EQ(engine.starts, 1);
    };
    pressAndRelease();
    server.chunk(QStringLiteral("a"));
    pressAndRelease();
    server.error(QStringLiteral("x"), QStringLiteral("y"));
    pressAndRelease();
    EXPECT_EQ(desktop.pasted, QStringList{QStringLiteral("a")});
}

TEST_F(PipelineCoordinatorTest, RecordingOf399ms_IsTooShort) {
    pipeline.startRecording();
    loop.advance(249ms);
    pipeline.stopAndProcess();
    loop.advance(150ms);
    EXPECT_EQ(errorShown(), tooShort);
    EXPECT_FALSE(fileExists());
    EXPECT_THAT(server.requests, IsEmpty());
    EXPECT_THAT(player.played, SizeIs(1)); // the starting cue alone
}

TEST_F(PipelineCoordinatorTest, RecordingOfExactly400ms_GoesToTheBackend) {
    pipeline.startRecording();
    loop.advance(250ms);
    pipeline.stopAndProcess();
    loop.advance(150ms);
    EXPECT_THAT(server.requests, SizeIs(1));
}

TEST_F(PipelineCoordinatorTest, Done_EqualToTheStreamedText_AddsNothingAndClosesTheSession) {
    dictateWithChunks({QStringLiteral("Привет")});
    serverDone(QStringLiteral("Привет"));
    EXPECT_EQ(desktop.pasted, QStringList{QStringLiteral("Привет")});
    EXPECT_THAT(lines, IsEmpty());
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("моё"));
}

TEST_F(PipelineCoordinatorTest, Done_ExtendsTheStreamedText_PastesOnlyTheExtension) {
    dictateWithChunks({QStringLiteral("При"), QStringLiteral("вет")});
    serverDone(QStringLiteral("Привет всем."));
    EXPECT_EQ(desktop.pasted.last(), QStringLiteral(" всем."));
    EXPECT_EQ(desktop.pasted.size(), 3);
}

TEST_F(PipelineCoordinatorTest, Done_DiffersInside_PastesNothingMoreAndTheHistoryHoldsIt) {
    dictateWithChunks({QStringLiteral("превед")});
    serverDone(QStringLiteral("Привет"));
    EXPECT_EQ(desktop.pasted, QStringList{QStringLiteral("превед")});
    EXPECT_EQ(lines, QStringList{diverged});
    EXPECT_EQ(history.items().front().rawText, QStringLiteral("Привет"));
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("моё"));
}

TEST_F(PipelineCoordinatorTest, LaterDone_ReplacesTheEarlierText) {
    dictate();
    server.done(QStringLiteral("раз"));
    serverDone(QStringLiteral("два"));
    EXPECT_EQ(desktop.pasted, QStringList{QStringLiteral("два")});
}

TEST_F(PipelineCoordinatorTest, ChunksAndNoDone_AnEmptyReplyWithTheSessionLeftOpen) {
    dictateWithChunks({QStringLiteral("кусок")});
    server.finish();
    loop.runPosted();
    EXPECT_EQ(errorShown(), emptyReply);
    EXPECT_THAT(history.items(), IsEmpty());
    EXPECT_FALSE(fileExists());
    loop.advance(6s);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("кусок"));
    dictateWithChunks({QStringLiteral("снова")});
    serverDone(QStringLiteral("снова"));
    loop.advance(180ms);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("моё"));
}

TEST_F(PipelineCoordinatorTest, EmptyReply_MicrophoneTakenAwayMeanwhile_SaysSo) {
    dictate();
    engine.authorizationStatus = MicrophoneAuthorization::Denied;
    serverDone(QString());
    EXPECT_EQ(errorShown(), denied);
}

TEST_F(PipelineCoordinatorTest, ErrorEvent_IsShownAsCodeAndMessage) {
    dictateWithChunks({QStringLiteral("кусок")});
    server.error(QStringLiteral("asr_failed"), QStringLiteral("Не распознано"));
    EXPECT_EQ(errorShown(), QStringLiteral("Ошибка: asr_failed: Не распознано"));
    EXPECT_FALSE(fileExists());
    EXPECT_THAT(history.items(), IsEmpty());
    loop.advance(1s);
    EXPECT_EQ(desktop.clipboard, QStringLiteral("кусок"));
}

TEST_F(PipelineCoordinatorTest, StreamFails_IsShownWithItsDescription) {
    dictate();
    server.fail(QStringLiteral("Сессия истекла. Войдите снова."));
    loop.runPosted();
    EXPECT_EQ(errorShown(), QStringLiteral("Ошибка: Сессия истекла. Войдите снова."));
    EXPECT_FALSE(fileExists());
}

TEST_F(PipelineCoordinatorTest, NotSignedIn_RecordsAndSaysSoAtTheEnd) {
    account.loggedIn = false;
    pipeline.startRecording();
    EXPECT_TRUE(isRecording());
    loop.advance(1s);
    pipeline.stopAndProcess();
    loop.advance(150ms);
    EXPECT_EQ(errorShown(), QStringLiteral("Войдите в аккаунт в настройках"));
    EXPECT_FALSE(fileExists());
    EXPECT_THAT(server.requests, IsEmpty());
}

TEST_F(PipelineCoordinatorTest, MicrophoneDeniedOrRestricted_SaysSoAndRecordsNothing) {
    for (const auto status : {MicrophoneAuthorization::Denied, MicrophoneAuthorization::Restricted}) {
        engine.authorizationStatus = status;
        pipeline.startRecording();
        EXPECT_EQ(errorShown(), denied);
        loop.advance(6s);
        EXPECT_TRUE(isIdle());
    }
    EXPECT_EQ(engine.starts, 0);
}

TEST_F(PipelineCoordinatorTest, MicrophoneNotDetermined_GrantedAsksToPressAgain) {
    engine.authorizationStatus = MicrophoneAuthorization::NotDetermined;
    pipeline.startRecording();
    EXPECT_EQ(errorShown(), QStringLiteral("Доступ к микрофону выдан — нажмите ещё раз"));
    EXPECT_EQ(engine.prepares, 1);
    EXPECT_EQ(engine.starts, 0);
    loop.advance(6s);
    EXPECT_TRUE(isIdle());
}

TEST_F(PipelineCoordinatorTest, MicrophoneNotDetermined_RefusedSaysNoAccess) {
    engine.authorizationStatus = MicrophoneAuthorization::NotDetermined;
    engine.answer = false;
    pipeline.startRecording();
    EXPECT_EQ(errorShown(), denied);
    EXPECT_EQ(engine.prepares, 0);
}

TEST_F(PipelineCoordinatorTest, RecorderFails_SaysWhy) {
    engine.format = {0, 0};
    pipeline.startRecording();
    EXPECT_EQ(errorShown(), QStringLiteral("Не удалось начать запись: нет доступного микрофона"));
    EXPECT_THAT(player.played, IsEmpty());
}

TEST_F(PipelineCoordinatorTest, Error_ClearsItselfAfterSixSeconds) {
    engine.authorizationStatus = MicrophoneAuthorization::Denied;
    pipeline.startRecording();
    loop.advance(5999ms);
    EXPECT_EQ(errorShown(), denied);
    loop.advance(1ms);
    EXPECT_TRUE(isIdle());
}

TEST_F(PipelineCoordinatorTest, ErrorSoonAfterAnother_IsEndedByTheFirstOnesReset) {
    engine.authorizationStatus = MicrophoneAuthorization::NotDetermined;
    engine.holdAnswers = true;
    pipeline.startRecording();
    pipeline.startRecording(); // nothing has been answered, so the state is still idle
    engine.answer = false;
    engine.heldAnswers[0].finish();
    EXPECT_EQ(errorShown(), denied);
    loop.advance(4s);
    engine.answer = true;
    engine.heldAnswers[1].finish();
    EXPECT_EQ(errorShown(), QStringLiteral("Доступ к микрофону выдан — нажмите ещё раз"));
    loop.advance(2s);
    EXPECT_TRUE(isIdle());
    states.clear();
    pipeline.startRecording();
    loop.advance(5s); // the second one's reset finds no error any more
    EXPECT_THAT(states, Not(Contains(PipelineState(state::Idle{}))));
}

TEST_F(PipelineCoordinatorTest, HistoryNamesTheApplicationInFrontAtTheEnd) {
    dictate();
    workspace.front = RunningApplication{QStringLiteral("XTerm"), std::nullopt};
    serverDone(QStringLiteral("a"));
    EXPECT_EQ(history.items().front().appName, QStringLiteral("XTerm"));
    EXPECT_EQ(history.items().front().appBundleId, std::nullopt);
    workspace.front.reset();
    dictate();
    serverDone(QStringLiteral("b"));
    EXPECT_EQ(history.items().front().appName, std::nullopt);
}

TEST_F(PipelineCoordinatorTest, NothingOfTheRecordingCouldBeKept_IsToldAndNotSent) {
    codec.loss = QStringLiteral("нет места");
    dictate();
    EXPECT_EQ(errorShown(), QStringLiteral("Запись не сохранена: нет места"));
    EXPECT_THAT(server.requests, IsEmpty());
    loop.advance(6s);
    EXPECT_TRUE(isIdle());
}

TEST_F(PipelineCoordinatorTest, PartOfTheRecordingWasKept_ItIsDictatedAndTheLossToldAfterIt) {
    codec.loss = QStringLiteral("нет места");
    pipeline.startRecording();
    speak(0.5);
    loop.advance(1s);
    pipeline.stopAndProcess();
    loop.advance(150ms);
    ASSERT_THAT(server.requests, SizeIs(1));
    serverDone(QStringLiteral("Начало."));
    EXPECT_EQ(desktop.pasted, QStringList{QStringLiteral("Начало.")});
    EXPECT_THAT(history.items(), SizeIs(1));
    EXPECT_EQ(errorShown(), QStringLiteral("Записано не всё: нет места"));
    EXPECT_FALSE(fileExists());
    loop.advance(6s);
    EXPECT_TRUE(isIdle());
}

TEST_F(PipelineCoordinatorTest, StopWhileIdle_DoesNothing) {
    recorder.onPcmChunk = [](auto&&...) {}; // somebody else's
    pipeline.stopAndProcess();
    EXPECT_TRUE(recorder.onPcmChunk);
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(PipelineCoordinatorTest, CoordinatorGoneBeforeTheReplysEnd_TouchesNothingAndDeletesTheFile) {
    const QString late = QStringLiteral("late");
    const std::vector<std::function<void(FakeDictateService&)>> endings{
        [&](FakeDictateService& reply) { reply.chunk(late); },
        [&](FakeDictateService& reply) {
            reply.done(late);
            reply.finish();
        },
        [](FakeDictateService& reply) { reply.finish(); },
        [&](FakeDictateService& reply) { reply.fail(late); },
    };
    for (const auto& end : endings) {
        FakeDictateService otherServer;
        AudioRecorder otherRecorder(loop, defaults, engine, codec, recordings);
        auto other = makeCoordinator(otherRecorder, otherServer);
        other->startRecording();
        loop.advance(1s);
        other->stopAndProcess();
        loop.advance(150ms);
        EXPECT_TRUE(QFile::exists(*otherRecorder.lastFileURL()));
        other.reset();
        end(otherServer);
        loop.advance(10s);
        EXPECT_THAT(desktop.pasted, IsEmpty());
        EXPECT_THAT(history.items(), IsEmpty());
        EXPECT_FALSE(QFile::exists(*otherRecorder.lastFileURL()));
    }
}

TEST_F(PipelineCoordinatorTest, CoordinatorGoneDuringATickATailOrAnError_LeavesNothingToBeCalled) {
    FakeDictateService otherServer;
    AudioRecorder otherRecorder(loop, defaults, engine, codec, recordings);
    auto other = makeCoordinator(otherRecorder, otherServer);
    other->startRecording();
    loop.advance(50ms);
    other.reset();
    loop.advance(1s);
    otherRecorder.stop();

    other = makeCoordinator(otherRecorder, otherServer);
    other->startRecording();
    loop.advance(1s);
    other->stopAndProcess();
    other.reset();
    loop.advance(1s);
    EXPECT_TRUE(otherRecorder.isRecording());
    EXPECT_THAT(otherServer.requests, IsEmpty());

    engine.authorizationStatus = MicrophoneAuthorization::Denied;
    other = makeCoordinator(otherRecorder, otherServer);
    other->startRecording();
    EXPECT_TRUE(std::holds_alternative<state::Error>(other->state()));
    other.reset();
    loop.advance(10s);
}
