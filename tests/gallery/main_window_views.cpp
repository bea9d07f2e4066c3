#include "gallery/main_window_views.h"

#include "gallery/gallery_world.h"
#include "support/settings_stage.h"
#include "ui/main_window/main_window_model.h"

#include <QQuickWindow>
#include <QTest>

#include <ranges>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr QSize usual(980, 680);
constexpr QSize small(760, 560);

/// What a window needs beyond the world's objects.
class WindowStage final : public QObject {
public:
    WindowStage(GalleryWorld& world, const std::set<PrivacyRight>& granted)
        : QObject(world.stage())
        , m_settings(world.loop, world.defaults, world.settings, world.auth, world.workspace, m_info)
        , m_model({.store = world.history, .pasteboard = world.desktop, .shared = m_settings.neighbours}) {
        m_settings.rights.granted = granted;
        m_settings.perms.refresh();
    }

    [[nodiscard]] QVariantMap properties() {
        return {{QStringLiteral("model"), QVariant::fromValue(&m_model)}};
    }

private:
    InfoDictionary m_info{{{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("1.2.0")},
                           {QStringLiteral("VelmorLandingURL"), QStringLiteral("https://velmora.app/")}}};
    SettingsStage m_settings;
    MainWindowModel m_model;

public:
    AppNavigator& nav = m_settings.nav;
};

const std::set<PrivacyRight> allRights{PrivacyRight::Microphone, PrivacyRight::InputMonitoring,
                                       PrivacyRight::Accessibility};

struct Dictation {
    Date::duration ago;
    double seconds;
    const char* bundleId;
    const char* text;
};

/// A few days of work. It is the 10th of March, about 17:40.
void dictateSomeDays(GalleryWorld& world) {
    world.loop.advance(68 * 24h + 5h + 40min);
    const Dictation dictations[] = {
        {4min, 6.4, "org.telegram.desktop", "Да, давай в четыре, я как раз освобожусь."},
        {26min, 31.2, "cursor",
         "Добавь в функцию разбора дат поддержку часовых поясов и напиши тест на переход через полночь: "
         "сейчас "
         "запись, сделанная в 23:59, попадает в другой день, если сервер стоит в другой зоне."},
        {1h + 12min, 18.7, "google-chrome",
         "Сравни, пожалуйста, тарифы на хранение резервных копий и сведи всё в одну таблицу."},
        {2h + 3min, 9.1, "org.mozilla.Thunderbird.mail",
         "Анна, добрый день! Договор получила, посмотрю сегодня."},
        {3h + 41min, 44.0, "notion-app",
         "Итоги встречи: 1) переносим запуск на вторник; 2) Илья готовит письмо партнёрам; 3) дизайн главной "
         "страницы утверждён 🎉, остались только тексты."},
        {5h + 15min, 3.2, "org.telegram.desktop", "Ок 👍"},
        {19h, 12.6, "org.gnome.TextEditor", "Купить: молоко, хлеб, гречку, кофе в зёрнах."},
        {22h, 27.9, "com.openai.chat",
         "Объясни простыми словами, чем отличается оптимистичная блокировка от пессимистичной, и приведи "
         "пример."},
        {25h, 8.8, "org.gnome.Calendar", "Созвон с подрядчиком в среду в одиннадцать, напомнить за полчаса."},
        {2 * 24h, 65.3, "org.gnome.Notes",
         "Мысль для статьи: диктовать черновик быстрее, чем печатать, но править его всё равно приходится "
         "глазами."},
        {2 * 24h + 4h, 15.0, "cursor", "Переименуй переменную и убери лишний комментарий."},
        {5 * 24h, 21.4, "google-chrome", "Расписание электричек до Твери на субботнее утро."},
        {31 * 24h, 7.7, "org.telegram.desktop", "С днём рождения! Здоровья и хороших новостей каждый день."},
    };
    const Date now = world.loop.date();
    for (const Dictation& dictation : std::views::reverse(dictations)) {
        HistoryItem item;
        item.date = now - dictation.ago;
        item.durationSec = dictation.seconds;
        item.cleanedText = QString::fromUtf8(dictation.text);
        item.rawText = item.cleanedText;
        item.appBundleId = QString::fromUtf8(dictation.bundleId);
        world.history.add(item);
    }
}

WindowStage& withHistory(GalleryWorld& world) {
    dictateSomeDays(world);
    return *new WindowStage(world, allRights);
}

void press(QQuickItem& item, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(item.window(), key, modifiers);
}

/// The search field has the focus, then what it finds.
void search(QQuickItem& item, const QString& text) {
    press(item, Qt::Key_F, Qt::ControlModifier);
    for (const QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, item.window(), Qt::Key_unknown, QString(letter), {});
}

/// A filter is chosen as from the keyboard: Tab from the search, then the arrow.
void chooseFilter(QQuickItem& item, int steps) {
    press(item, Qt::Key_F, Qt::ControlModifier);
    press(item, Qt::Key_Tab);
    for (int i = 0; i < steps; ++i)
        press(item, Qt::Key_Right);
}

void openRow(QQuickItem& item, int row) {
    auto* list = item.findChild<QQuickItem*>(QStringLiteral("historyList"));
    QMetaObject::invokeMethod(list, "open", Q_ARG(QVariant, row), Q_ARG(QVariant, false));
}

GalleryView window(
    const char* name, QSize size, std::function<WindowStage&(GalleryWorld&)> stage,
    std::function<void(QQuickItem&)> arrange = [](QQuickItem&) {}) {
    return {.name = QStringLiteral("window-") + QLatin1String(name),
            .module = "MainWindow",
            .type = "MainWindowView",
            .size = size,
            .prepare = [stage = std::move(stage)](GalleryWorld& world) { return stage(world).properties(); },
            .arrange = std::move(arrange)};
}

WindowStage& history(GalleryWorld& world) {
    return withHistory(world);
}

std::function<WindowStage&(GalleryWorld&)> sheet(const char* tab) {
    return [tab](GalleryWorld& world) -> WindowStage& {
        WindowStage& stage = withHistory(world);
        stage.nav.openSettings(QLatin1String(tab));
        return stage;
    };
}

} // namespace

std::vector<GalleryView> mainWindowViews() {
    const auto nothing = [](GalleryWorld& world) -> WindowStage& { return *new WindowStage(world, {}); };
    const auto meetings = [](GalleryWorld& world) -> WindowStage& {
        WindowStage& stage = withHistory(world);
        stage.nav.openMeetings();
        return stage;
    };
    const auto openSecond = [](QQuickItem& item) { openRow(item, 1); };
    const auto find = [](const char* text) {
        return [text](QQuickItem& item) { search(item, QString::fromUtf8(text)); };
    };
    return {
        window("history", usual, history),
        window("history-small", small, history),
        window("history-week", usual, history, [](QQuickItem& item) { chooseFilter(item, 1); }),
        window("history-all", usual, history, [](QQuickItem& item) { chooseFilter(item, 2); }),
        window("history-keyboard", usual, history,
               [](QQuickItem& item) {
                   press(item, Qt::Key_F, Qt::ControlModifier);
                   press(item, Qt::Key_Down);
                   press(item, Qt::Key_Down);
                   press(item, Qt::Key_C, Qt::ControlModifier);
               }),
        window("history-search", usual, history, find("ДАТ")),
        window("history-search-small", small, history, find("встреч")),
        window("history-hidden", usual, history, find("квартальный отчёт")),
        window("history-hidden-small", small, history, find("квартальный отчёт")),
        window("history-expanded", usual, history, openSecond),
        window("history-expanded-small", small, history, openSecond),
        window("history-empty", usual, nothing),
        window("history-empty-small", small, nothing),
        window("meetings", usual, meetings),
        window("settings", usual, sheet("general")),
        window("settings-small", small, sheet("permissions")),
    };
}

} // namespace velmora::test
