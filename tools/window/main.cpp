#include "ContactSheets.h"
#include "Looks.h"
#include "SampleStates.h"
#include "Screenshots.h"
#include "fakes/QmlWarnings.h"
#include "shell/QmlMainWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QProcess>
#include <QTimer>

#include <cstdlib>
#include <ranges>
#include <vector>

using namespace brenvale;

namespace {

/// How the window is looked at: on a screen of a scale, with larger text.
struct Way {
    QString name;
    QString scale;
    QString textScale;
};

const std::vector<Way>& ways() {
    static const std::vector<Way> all{
        {QStringLiteral("100"), QStringLiteral("1"), QStringLiteral("1")},
        {QStringLiteral("150"), QStringLiteral("1.5"), QStringLiteral("1")},
        {QStringLiteral("200"), QStringLiteral("2"), QStringLiteral("1")},
        {QStringLiteral("large-text"), QStringLiteral("1"), QStringLiteral("1.5")}};
    return all;
}

/// Look and scale hold for a process: each combination gets one of its own.
bool takeScreenshotsInProcess(const QString& folder, const QString& look, const Way& way) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), way.scale);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--one"), QStringLiteral("%1/%2-%3").arg(folder, look, way.name),
                   QStringLiteral("--look"), look, QStringLiteral("--text"), way.textScale});
    return process.waitForFinished(300'000) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == EXIT_SUCCESS;
}

int takeAllScreenshots(const QString& folder) {
    QStringList columns;
    for (const auto& look : looks()) {
        for (const auto& way : ways()) {
            if (!takeScreenshotsInProcess(folder, look.name, way)) {
                return EXIT_FAILURE;
            }
        }
        columns.append(look.name + QStringLiteral("-100"));
    }
    for (const auto& way : ways() | std::views::drop(1)) {
        columns.append(looks()[static_cast<std::size_t>(columns.size() % 2)].name + u'-' + way.name);
    }
    return writeContactSheets(folder, columns) ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// What QML complains about is a fault of the picture too.
int takeTheseScreenshots(const QString& folder) {
    QmlWarnings::collect();
    return takeScreenshots(folder) && QmlWarnings::take().isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE;
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
    parser.addOptions(
        {{QStringLiteral("screenshots"), QStringLiteral("Pictures of all into <folder>."),
          QStringLiteral("folder")},
         {QStringLiteral("one"), QStringLiteral("Those of this look and scale."), QStringLiteral("folder")},
         {QStringLiteral("state"), QStringLiteral("The sample to show."), QStringLiteral("state"),
          QStringLiteral("many")},
         {QStringLiteral("look"), QStringLiteral("The desktop to look like."), QStringLiteral("look"),
          looks().front().name},
         {QStringLiteral("text"), QStringLiteral("How large text is, 1 as usual."), QStringLiteral("scale"),
          QStringLiteral("1")}});
    parser.process(application);
    if (parser.isSet(QStringLiteral("screenshots"))) {
        return takeAllScreenshots(parser.value(QStringLiteral("screenshots")));
    }
    if (!useLook(parser.value(QStringLiteral("look")), parser.value(QStringLiteral("text")).toDouble())) {
        std::fputs("There is no such look.\n", stderr);
        return EXIT_FAILURE;
    }
    if (parser.isSet(QStringLiteral("one"))) {
        return takeTheseScreenshots(parser.value(QStringLiteral("one")));
    }
    return showWindow(parser.value(QStringLiteral("state")));
}
