#include "dictation_stage.h"
#include "ui/hud/recording_hud_model.h"

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
namespace state = velmora::pipeline_state;

TEST(RecordingHUD, Look_Try) {
    const char* out = getenv("HUD_OUT");
    if (!out) return;
    DictationStage stage;
    RecordingHUDModel model(stage.recorder, stage.host.settings);
    stage.recorder.start();
    float l[] = {.2,.5,.7,.8,.6,.3,.5,.9,.7,.4,.2,.6,.8,.7,.5,.3,.4,.7,.6,.5,.8,.9,.7,.4,.3,.2,.5,.7,.8,.6,.5,.4};
    for (float x : l) stage.speak(x);
    stage.host.show("Hud", "RecordingHUD", {{QStringLiteral("model"), QVariant::fromValue(&model)}});
    std::vector<std::pair<const char*, PipelineState>> states{
        {"rec", state::Recording{61}}, {"partial", state::StreamingRecording{3, QStringLiteral("и тогда мы решили, что поедем на дачу в эту субботу"), {}}},
        {"busy", state::Transcribing{}}, {"error", state::Error{QStringLiteral("Не удалось начать запись: очень длинное сообщение об ошибке, которое не помещается в панель")}}};
    for (bool light : {false, true})
    for (const char* size : {"small","medium","large"})
        for (bool minimal : {false, true})
            for (const char* style : {"bars","dots","wave"})
                for (auto& [n, s] : states) {
                    if (s.index() != 1 && QLatin1String(style) != QLatin1String("bars")) continue;
                    stage.host.settings.setHudSize(QLatin1String(size));
                    stage.host.settings.setHudStyle(QLatin1String(style));
                    stage.host.settings.setHudMinimal(minimal);
                    model.setState(s);
                    stage.host.window().setColor(light ? QColor(244,245,246) : QColor(32,36,40));
                    stage.host.window().resize(480, int(model.metrics().panelHeight));
                    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
                    stage.host.grab().save(QStringLiteral("%1/%2-%3-%4-%5-%6.png").arg(QLatin1String(out), QLatin1String(light?"light":"dark"), QLatin1String(size), QLatin1String(minimal?"min":"full"), QLatin1String(style), QLatin1String(n)));
                }
}
