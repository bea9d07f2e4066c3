#include "dictation_runs.h"
#include "figures.h"
#include "table.h"
#include "ui/qml_engine.h"

#include <QApplication>

#include <cstdio>

using namespace velmora::bench;

namespace {

struct Figure {
    const char* name;
    std::vector<Result> (*measure)(DictationRuns& runs);
};

constexpr std::array figures{
    Figure{"start", measureStart},
    Figure{"press", measurePressToAudio},
    Figure{"release", measureReleaseToRequest},
    Figure{"text", measureTextToTarget},
    Figure{"done", measureDoneToIdle},
    Figure{"upload", measureUpload},
    Figure{"events", measureEventReader},
    Figure{"memory", measureRecordingMemory},
    Figure{"capsule", measurePressToCapsule},
    Figure{"recording", measureRecordingCost},
    Figure{"popup", measurePopup},
    Figure{"window", measureMainWindow},
    Figure{"search", measureSearch},
    Figure{"settings", measureSettings},
    Figure{"slider", measureSlider},
    Figure{"idle", measureIdle},
    Figure{"after", measureAfterWindows},
};

int usage() {
    std::fputs("usage: bench [FIGURE…]\nfigures:", stderr);
    for (const Figure& figure : figures)
        std::fprintf(stderr, " %s", figure.name);
    std::fputs("\n", stderr);
    return 64;
}

/// Measures the figures of these names, or all; false when one could not be measured.
bool measure(const QStringList& names) {
    Table table;
    DictationRuns runs;
    bool complete = true;
    for (const Figure& figure : figures) {
        const QString name = QLatin1String(figure.name);
        if (!names.isEmpty() && !names.contains(name))
            continue;
        std::fprintf(stderr, "measuring %s\n", figure.name);
        try {
            for (const Result& result : figure.measure(runs))
                table.add(result);
        } catch (const std::exception& failure) {
            table.addFailure(name, QString::fromUtf8(failure.what()));
            complete = false;
        }
    }
    table.print();
    return complete;
}

} // namespace

int main(int argc, char** argv) {
    velmora::chooseRendering();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QCoreApplication::setApplicationName(QStringLiteral("Velmora"));
    const QStringList names = QCoreApplication::arguments().mid(1);
    if (names == QStringList(QStringLiteral("--record")))
        return recordTenMinutes();
    const auto isFigure = [](const QString& name) {
        return std::ranges::any_of(figures,
                                   [&](const Figure& figure) { return name == QLatin1String(figure.name); });
    };
    if (!std::ranges::all_of(names, isFigure))
        return usage();
    return measure(names) ? EXIT_SUCCESS : EXIT_FAILURE;
}
