#include "ui/menu_bar/menu_bar_icon.h"

#include "ui/kit/accent_theme.h"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

using namespace std::chrono_literals;

// One turn of the wave in frames of very nearly 1/24 second, so that its second turn finds them all painted.
constexpr int waveFrames = 68;
constexpr auto frameInterval =
    std::chrono::ceil<MainLoop::Duration>(std::chrono::duration<double>(waveBarsPeriod / waveFrames));
static_assert(frameInterval >= 1s / 24.0);

// Two waves' worth, a megabyte.
constexpr std::size_t mostPictures = 128;

constexpr std::array devicePixelRatios{1.0, 2.0};

int waveFrameAt(MainLoop::TimePoint now) {
    return static_cast<int>(now.time_since_epoch() / frameInterval % waveFrames);
}

QString toolTip(const PipelineState& state) {
    QString name = QStringLiteral("Velmora");
    const auto with = [&name](const QString& what) { return name + QStringLiteral(" — ") + what; };
    switch (menuBarIconMode(state)) {
    case MenuBarIconMode::Idle:
        return name;
    case MenuBarIconMode::Recording:
        return with(QStringLiteral("идёт запись"));
    case MenuBarIconMode::Processing:
        return with(QStringLiteral("распознавание"));
    case MenuBarIconMode::Error:
        return with(std::get<pipeline_state::Error>(state).message);
    }
    Q_UNREACHABLE();
}

} // namespace

MenuBarIcon::MenuBarIcon(PipelineCoordinator& coord, const AppSettings& settings, StatusItem& statusItem,
                         MainLoop& loop, QObject* parent)
    : QObject(parent)
    , m_coord(coord)
    , m_settings(settings)
    , m_statusItem(statusItem)
    , m_loop(loop) {
    connect(&coord, &PipelineCoordinator::stateChanged, this, &MenuBarIcon::follow);
    connect(&settings, &AppSettings::themeColorChanged, this, &MenuBarIcon::changeAccent);
    connect(&statusItem, &StatusItem::shownChanged, this, &MenuBarIcon::follow);
    follow();
}

void MenuBarIcon::follow() {
    m_mode = menuBarIconMode(m_coord.state());
    m_statusItem.setToolTip(toolTip(m_coord.state()));
    showFrame();
    const bool moves = isMoving(m_mode) && m_statusItem.isShown();
    if (!moves)
        m_frameTimer.reset();
    else if (!m_frameTimer)
        m_frameTimer = m_loop.every(frameInterval, [this] { showFrame(); });
}

void MenuBarIcon::changeAccent() {
    m_pictures.clear();
    m_shown.reset();
    showFrame();
}

void MenuBarIcon::showFrame() {
    Frame frame{m_mode, {}};
    std::ranges::transform(bars(), frame.bars.begin(),
                           [](double height) { return static_cast<int>(std::lround(height)); });
    if (frame == m_shown)
        return;
    m_statusItem.setImage(picture(frame));
    m_shown = frame;
}

BrandBars MenuBarIcon::bars() const {
    switch (m_mode) {
    case MenuBarIconMode::Recording:
        return voiceBars(m_coord.recorder().levels());
    case MenuBarIconMode::Processing:
        return waveBars(waveFrameAt(m_loop.now()) * waveBarsPeriod / waveFrames);
    case MenuBarIconMode::Idle:
    case MenuBarIconMode::Error:
        return restingBrandBars;
    }
    Q_UNREACHABLE();
}

const QList<QImage>& MenuBarIcon::picture(const Frame& frame) {
    if (m_pictures.size() >= mostPictures)
        m_pictures.clear();
    QList<QImage>& images = m_pictures[frame];
    if (images.isEmpty()) {
        const MenuBarIconPainter painter(accentColor(accentThemeFromName(m_settings.themeColor())));
        BrandBars heights{};
        std::ranges::copy(frame.bars, heights.begin());
        for (const double ratio : devicePixelRatios)
            images.append(painter.paint(frame.mode, heights, ratio));
    }
    return images;
}

} // namespace velmora
