#include "SampleStates.h"
#include "Screenshots.h"
#include "shell/QmlMainWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QProcess>
#include <QTimer>

#include <cstdlib>
#include <ranges>

using namespace brenvale;

namespace {

/// Scale and palette hold for a process: each combination gets one of its own.
int takeAllScreenshots(const QString& folder) {
    for (const bool isDark : {false, true}) {
        for (const auto* scale : {"1", "2"}) {
            auto environment = QProcessEnvironment::systemEnvironment();
            environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromLatin1(scale));
            QProcess process;
            process.setProcessEnvironment(environment);
            process.setProcessChannelMode(QProcess::ForwardedChannels);
            const auto palette = isDark ? QStringLiteral("dark") : QStringLiteral("light");
            QStringList arguments{
                QStringLiteral("--one"),
                QStringLiteral("%1/%2-%3").arg(folder, palette, QString::fromLatin1(scale))};
            if (isDark) {
                arguments.append(QStringLiteral("--dark"));
            }
            process.start(QCoreApplication::applicationFilePath(), arguments);
            if (!process.waitForFinished(300'000) || process.exitCode() != EXIT_SUCCESS) {
                return EXIT_FAILURE;
            }
        }
    }
    return EXIT_SUCCESS;
}

int showWindow(const QString& stateName) {
    TestView test;
    const auto& states = sampleStates();
    const auto state = std::ranges::find(states, stateName, &SampleState::name);
    if (state == states.end()) {
        std::fputs("There is no such state.\n", stderr);
        return EXIT_FAILURE;
    }
    state->fill(test);
    QTimer queues;
    QObject::connect(&queues, &QTimer::timeout, [&test] { test.run(); });
    queues.start(50);
    QmlMainWindow window(test.view);
    window.windowWillClose = &QCoreApplication::quit;
    window.makeKeyAndOrderFront();
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows the main window with sample data, or pictures of it."));
    parser.addHelpOption();
    parser.addOptions({{QStringLiteral("screenshots"), QStringLiteral("Pictures of all into <folder>."),
                        QStringLiteral("folder")},
                       {QStringLiteral("one"), QStringLiteral("Those of this palette and scale."),
                        QStringLiteral("folder")},
                       {QStringLiteral("state"), QStringLiteral("The sample to show."),
                        QStringLiteral("state"), QStringLiteral("many")},
                       {QStringLiteral("dark"), QStringLiteral("In a dark palette.")}});
    parser.process(application);
    if (parser.isSet(QStringLiteral("screenshots"))) {
        return takeAllScreenshots(parser.value(QStringLiteral("screenshots")));
    }
    parser.isSet(QStringLiteral("dark")) ? useDarkPalette() : useLightPalette();
    if (parser.isSet(QStringLiteral("one"))) {
        return takeScreenshots(parser.value(QStringLiteral("one"))) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    return showWindow(parser.value(QStringLiteral("state")));
}
