#include "ui/main_window/history_texts.h"

#include <QLocale>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>
#include <cmath>

namespace velmora {
namespace {

struct TagRule {
    QLatin1String part;
    const char16_t* name;
};

/// The first rule whose part is in the id decides.
constexpr std::array tagRules{
    TagRule{QLatin1String("cursor"), u"Cursor"},    TagRule{QLatin1String("chatgpt"), u"ChatGPT"},
    TagRule{QLatin1String("openai"), u"ChatGPT"},   TagRule{QLatin1String("mail"), u"Mail"},
    TagRule{QLatin1String("ical"), u"Calendar"},    TagRule{QLatin1String("calendar"), u"Calendar"},
    TagRule{QLatin1String("notion"), u"Notion"},    TagRule{QLatin1String("telegram"), u"Telegram"},
    TagRule{QLatin1String("safari"), u"Браузер"},   TagRule{QLatin1String("chrome"), u"Браузер"},
    TagRule{QLatin1String("textedit"), u"Заметки"}, TagRule{QLatin1String("notes"), u"Заметки"},
};

constexpr qsizetype previewLength = 320;

const QLocale& russian() {
    static const QLocale locale(QLocale::Russian, QLocale::Russia);
    return locale;
}

QString duration(double seconds, int minuteDigits) {
    // A damaged history may hold any number.
    const auto whole = static_cast<qint64>(std::clamp(std::isnan(seconds) ? 0 : seconds, 0.0, 1e9));
    return QStringLiteral("%1:%2")
        .arg(whole / 60, minuteDigits, 10, QLatin1Char('0'))
        .arg(whole % 60, 2, 10, QLatin1Char('0'));
}

/// The number and the word in the form that Russian gives it: 1 слово, 2 слова, 5 слов.
QString counted(qsizetype count, const QString& one, const QString& few, const QString& many) {
    const bool teen = count % 100 >= 11 && count % 100 <= 14;
    const qsizetype ones = teen ? 0 : count % 10;
    const QString& word = ones == 1 ? one : ones >= 2 && ones <= 4 ? few : many;
    return QStringLiteral("%1 %2").arg(count).arg(word);
}

} // namespace

QDateTime localTime(Date date) {
    return QDateTime::fromMSecsSinceEpoch(
        std::chrono::floor<std::chrono::milliseconds>(date).time_since_epoch().count());
}

QString dayTitle(QDate day) {
    return russian().toString(day, QStringLiteral("d MMMM"));
}

QString timeLabel(Date date) {
    return localTime(date).toString(QStringLiteral("HH:mm"));
}

QString dateLabel(Date date, Date now) {
    const QDate day = localTime(date).date();
    const QDate today = localTime(now).date();
    if (day == today)
        return QStringLiteral("Сегодня · ") + timeLabel(date);
    if (day == today.addDays(-1))
        return QStringLiteral("Вчера · ") + timeLabel(date);
    return dayTitle(day) + QLatin1Char(' ') + timeLabel(date);
}

QString shortDuration(double seconds) {
    return duration(seconds, 1);
}

QString longDuration(double seconds) {
    return duration(seconds, 2);
}

qsizetype wordCount(const QString& text) {
    qsizetype words = 0;
    bool inWord = false;
    for (const QChar letter : text) {
        words += !letter.isSpace() && !inWord ? 1 : 0;
        inWord = !letter.isSpace();
    }
    return words;
}

QString wordsLabel(qsizetype count) {
    return counted(count, QStringLiteral("слово"), QStringLiteral("слова"), QStringLiteral("слов"));
}

QString rowPreview(const QString& text) {
    // Cut between characters: half of one would be drawn as a box.
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(std::min(previewLength, text.size()));
    const qsizetype end = finder.isAtBoundary() ? finder.position() : finder.toPreviousBoundary();
    return text.left(std::max<qsizetype>(end, 0)).simplified();
}

TagStyle tagForBundle(const std::optional<QString>& bundleId) {
    const QString id = bundleId.value_or(QString()).toLower();
    const auto* const rule = std::ranges::find_if(
        tagRules, [&id](const TagRule& candidate) { return id.contains(candidate.part); });
    return {rule != tagRules.end() ? QString::fromUtf16(rule->name) : QStringLiteral("Velmora")};
}

QString hiddenItemsLabel(qsizetype count, bool byFilter, bool bySearch) {
    if (count <= 0 || (!byFilter && !bySearch))
        return {};
    const QString who = byFilter && bySearch ? QStringLiteral("Фильтр и поиск скрывают ")
                        : byFilter           ? QStringLiteral("Фильтр скрывает ")
                                             : QStringLiteral("Поиск скрывает ");
    return who +
           counted(count, QStringLiteral("запись"), QStringLiteral("записи"), QStringLiteral("записей"));
}

} // namespace velmora
