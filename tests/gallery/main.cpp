// Draws the program's views on fakes, without a display.

#include "foundation/error.h"
#include "gallery/gallery_arguments.h"
#include "ui/qml_engine.h"

#include <QApplication>
#include <QDir>

#include <iostream>

using namespace velmora;
using namespace velmora::test;

namespace {

int list(const std::vector<GalleryView>& views) {
    for (const GalleryView& view : views)
        std::cout << view.name.toStdString() << '\n';
    return 0;
}

int render(const RenderViews& wanted) {
    const QDir folder(wanted.folder);
    if (!folder.mkpath(QStringLiteral(".")))
        throw PlainError(QStringLiteral("Can't make the folder ") + wanted.folder);
    for (const GalleryView& view : wanted.views) {
        const QString file = folder.filePath(view.name + QStringLiteral(".png"));
        if (!renderGalleryView(view, wanted.look).save(file))
            throw PlainError(QStringLiteral("Can't write ") + file);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<GalleryView> views = galleryViews();
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const auto task = parseGalleryArguments(arguments, views);
    if (const auto* wrong = std::get_if<BadArguments>(&task)) {
        std::cerr << wrong->message.toStdString() << '\n';
        return 2;
    }
    if (std::holds_alternative<ListViews>(task))
        return list(views);

    const auto& wanted = std::get<RenderViews>(task);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", wanted.scale.toLatin1());
    qputenv("TZ", "UTC");
    chooseRendering();
    const QApplication application(argc, argv);
    try {
        return render(wanted);
    } catch (const Error& error) {
        std::cerr << error.localizedDescription().toStdString() << '\n';
        return 1;
    }
}
