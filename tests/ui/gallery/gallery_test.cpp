#include "foundation/error.h"
#include "gallery/gallery.h"
#include "gallery/gallery_arguments.h"
#include "gallery/gallery_hands.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <set>

using namespace velmora;
using namespace velmora::test;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

struct Outcome {
    int exitCode = -1;
    QString output;
    QString errors;
};

Outcome gallery(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(VELMORA_GALLERY), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

GalleryView viewNamed(const char* name) {
    for (const GalleryView& view : galleryViews()) {
        if (view.name == QLatin1String(name))
            return view;
    }
    ADD_FAILURE() << "no picture " << name;
    return {};
}

std::set<QRgb> colorsOf(const QImage& image) {
    std::set<QRgb> colors;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    return colors;
}

QString complaintOf(const GalleryView& view) {
    try {
        static_cast<void>(renderGalleryView(view, {}));
    } catch (const Error& error) {
        return error.localizedDescription();
    }
    return {};
}

} // namespace

TEST(Gallery, Names_AreThereAndUnique) {
    std::set<QString> names;
    for (const GalleryView& view : galleryViews())
        EXPECT_TRUE(names.insert(view.name).second) << view.name.toStdString();
    EXPECT_GE(names.size(), 10U);
}

TEST(Gallery, Picture_ShowsTheViewInTheLookAskedFor) {
    const GalleryView view = viewNamed("kit-buttons");
    const QImage dark = renderGalleryView(view, {});
    const QImage light = renderGalleryView(view, {.dark = false});
    const QImage teal = renderGalleryView(view, {.accent = QStringLiteral("teal")});
    EXPECT_GT(colorsOf(dark).size(), 50U);
    EXPECT_EQ(light.size(), dark.size());
    EXPECT_LT(dark.pixelColor(0, 0).lightness(), 60);
    EXPECT_GT(light.pixelColor(0, 0).lightness(), 220);
    EXPECT_NE(teal, dark);
    EXPECT_EQ(renderGalleryView(view, {}), dark);
}

TEST(Gallery, ViewThatWarnsOrIsMissing_Fails) {
    GalleryView view{.name = QStringLiteral("broken"), .module = "Hud", .type = "LiveDot", .size = {}};
    EXPECT_THAT(complaintOf(view).toStdString(), HasSubstr("broken")); // its size is required
    view.type = "NoSuchView";
    EXPECT_THAT(complaintOf(view).toStdString(), HasSubstr("NoSuchView"));
    view = viewNamed("kit-buttons");
    view.arrange = [](QQuickItem& root) { hover(part(root, "no such part")); };
    EXPECT_THAT(complaintOf(view).toStdString(), HasSubstr("no such part"));
}

TEST(GalleryProgram, List_NamesEveryPicture) {
    const Outcome run = gallery({QStringLiteral("--list")});
    EXPECT_EQ(run.exitCode, 0);
    QString expected;
    for (const GalleryView& view : galleryViews())
        expected += view.name + QLatin1Char('\n');
    EXPECT_EQ(run.output, expected);
}

TEST(GalleryProgram, Render_WritesTheNamedPictureAtItsScale) {
    const QTemporaryDir folder;
    const auto render = [&folder](const char* scale) {
        const Outcome run =
            gallery({QStringLiteral("--render"), folder.filePath(QLatin1String(scale)),
                     QStringLiteral("kit-tool-tip"), QStringLiteral("--scale"), QLatin1String(scale)});
        EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
        return QImage(folder.filePath(QLatin1String(scale) + QStringLiteral("/kit-tool-tip.png")));
    };
    const QImage single = render("1");
    ASSERT_FALSE(single.isNull());
    EXPECT_EQ(render("2").size(), single.size() * 2);
    EXPECT_EQ(QDir(folder.filePath(QStringLiteral("1"))).entryList(QDir::Files).size(), 1);
}

TEST(GalleryProgram, BadArguments_LeaveWithTwoAndSayWhy) {
    const auto said = [](const QStringList& arguments) {
        const Outcome run = gallery(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments.join(QLatin1Char(' ')).toStdString();
        return run.errors.toStdString();
    };
    const QString render = QStringLiteral("--render");
    EXPECT_THAT(said({render, QStringLiteral("/tmp"), QStringLiteral("no-such-view")}),
                HasSubstr("no-such-view"));
    EXPECT_THAT(said({render}), Not(IsEmpty()));
    EXPECT_THAT(said({}), HasSubstr("--list"));
    EXPECT_THAT(said({QStringLiteral("--frobnicate")}), HasSubstr("frobnicate"));
    EXPECT_THAT(said({render, QStringLiteral("/tmp"), QStringLiteral("--scheme"), QStringLiteral("pink")}),
                HasSubstr("pink"));
}
