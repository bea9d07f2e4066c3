#include "gallery/gallery_arguments.h"

#include <QCommandLineParser>

namespace velmora::test {
namespace {

const char* const usage = "velmora-gallery --list\n"
                          "velmora-gallery --render DIR [NAME…] [--scheme dark|light] [--accent lime|teal] "
                          "[--scale 1|2]";

BadArguments bad(const QString& what) {
    return {what + QLatin1Char('\n') + QString::fromUtf8(usage)};
}

} // namespace

std::variant<ListViews, RenderViews, BadArguments>
parseGalleryArguments(const QStringList& arguments, const std::vector<GalleryView>& views) {
    QCommandLineParser parser;
    const auto option = [&parser](const char* name, const char* initial) {
        const QCommandLineOption result(QLatin1String(name), {}, QStringLiteral("value"),
                                        QLatin1String(initial));
        parser.addOption(result);
        return result;
    };
    const QCommandLineOption list(QStringLiteral("list"));
    parser.addOption(list);
    const QCommandLineOption render = option("render", "");
    struct Choice {
        QCommandLineOption option;
        QStringList values;
    };
    const std::array<Choice, 3> choices{
        Choice{option("scheme", "dark"), {QStringLiteral("dark"), QStringLiteral("light")}},
        Choice{option("accent", "lime"), {QStringLiteral("lime"), QStringLiteral("teal")}},
        Choice{option("scale", "1"), {QStringLiteral("1"), QStringLiteral("2")}}};

    if (!parser.parse(arguments))
        return bad(parser.errorText());
    for (const Choice& choice : choices) {
        const QString value = parser.value(choice.option);
        if (!choice.values.contains(value))
            return bad(
                QStringLiteral("--%1 is %2, not \"%3\"")
                    .arg(choice.option.names().first(), choice.values.join(QStringLiteral(" or ")), value));
    }
    const QStringList names = parser.positionalArguments();
    if (parser.isSet(list) == parser.isSet(render))
        return bad(QStringLiteral("Either list or render"));
    if (parser.isSet(list)) {
        if (names.isEmpty())
            return ListViews{};
        return bad(QStringLiteral("The list takes no names"));
    }

    RenderViews result{.folder = parser.value(render),
                       .views = {},
                       .look = {.dark = parser.value(choices[0].option) == QLatin1String("dark"),
                                .accent = parser.value(choices[1].option)},
                       .scale = parser.value(choices[2].option)};
    if (result.folder.isEmpty())
        return bad(QStringLiteral("No folder to render into"));
    if (names.isEmpty())
        result.views = views;
    for (const QString& name : names) {
        const auto found = std::find_if(views.begin(), views.end(),
                                        [&name](const GalleryView& view) { return view.name == name; });
        if (found == views.end())
            return bad(QStringLiteral("There is no picture \"%1\"").arg(name));
        result.views.push_back(*found);
    }
    return result;
}

} // namespace velmora::test
