#include "calls/CallNotification.h"
#include "calls/QmlCallPanel.h"
#include "calls/QmlSurfacePanel.h"
#include "link/LinkQueue.h"
#include "link/TcpListener.h"
#include "link/WebSocketServer.h"
#include "platform/LastSteps.h"
#include "platform/MainQueue.h"
#include "platform/linux/BusProbe.h"
#include "platform/linux/DBusApplication.h"
#include "platform/linux/DisplayProbe.h"
#include "platform/linux/EndSignals.h"
#include "platform/linux/FileArguments.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/ProcessSetup.h"
#include "platform/linux/SessionRestart.h"
#include "platform/linux/WindowActivation.h"
#include "platform/linux/panels/DBusActionNotification.h"
#include "platform/linux/panels/FloatingWindow.h"
#include "platform/linux/panels/LayerShellSurface.h"
#include "platform/linux/panels/UsableArea.h"
#include "shell/AppDelegate.h"
#include "shell/QmlMainWindow.h"
#include "shell/SettingsView.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QProcessEnvironment>

#include <cstdio>
#include <cstdlib>

namespace {

/// What the command line asks for.
struct StartWish {
    QList<QUrl> files;         ///< to send
    bool isBackground = false; ///< started by the session and not by the user
};

/// Ends the process before it has begun to serve. The toolkit reads the fonts on a thread of its own, which
/// an end in good order would run into.
[[noreturn]] void leave(int status) {
    std::fflush(stdout);
    std::_Exit(status);
}

[[noreturn]] void answer(const QString& text, std::FILE* stream, int status) {
    std::fputs(text.toLocal8Bit().constData(), stream);
    leave(status);
}

/// Reads the command line; a question for help or the version ends the process here.
StartWish startWish() {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Companion of an Android phone on the desktop."));
    const auto help = parser.addHelpOption();
    const auto version = parser.addVersionOption();
    const QCommandLineOption background(QStringLiteral("background"),
                                        QStringLiteral("Open no window, also where there is no tray."));
    parser.addOption(background);
    parser.addPositionalArgument(QStringLiteral("files"), QStringLiteral("Files to send to the phone."),
                                 QStringLiteral("[files...]"));
    if (!parser.parse(QApplication::arguments())) {
        answer(parser.errorText() + u'\n', stderr, EXIT_FAILURE);
    }
    if (parser.isSet(version)) {
        answer(QStringLiteral("brenvale " BRENVALE_VERSION "\n"), stdout, EXIT_SUCCESS);
    }
    if (parser.isSet(help) || parser.isSet(QStringLiteral("help-all"))) {
        answer(parser.helpText(), stdout, EXIT_SUCCESS);
    }
    StartWish wish{.files = {}, .isBackground = parser.isSet(background)};
    for (const auto& argument : parser.positionalArguments()) {
        wish.files.append(QUrl::fromUserInput(argument, QDir::currentPath(), QUrl::AssumeLocalFile));
    }
    return wish;
}

/// Another process is the program already: it does what was asked of this one.
int handOver(const StartWish& wish) {
    const bool asksNothing = wish.isBackground && wish.files.isEmpty();
    if (asksNothing || brenvale::DBusApplication::handOver(wish.files)) {
        return EXIT_SUCCESS;
    }
    std::fputs("Brenvale is running already, but does not answer.\n", stderr);
    return EXIT_FAILURE;
}

std::unique_ptr<brenvale::MainWindow> makeMainWindow(brenvale::SettingsView& view) {
    auto window = std::make_unique<brenvale::QmlMainWindow>(view);
    window->activate = brenvale::activateWindowForUser;
    return window;
}

/// The panel of a call in the way that this desktop has for it; `view` is the QML type of its contents.
template <typename Banner>
std::unique_ptr<brenvale::FloatingPanel> makeCallPanel(const QString& view, Banner& banner,
                                                       bool hasLayerShell) {
    using namespace brenvale;
    if (canFloatWindows()) {
        return std::make_unique<QmlCallPanel>(
            view, banner,
            QmlCallPanel::Floating{.prepare = makeFloating,
                                   .usableArea = [](const QScreen& screen) { return usableArea(screen); },
                                   .isTranslucent = hasCompositor()});
    }
    if (hasLayerShell && QGuiApplication::platformName().startsWith(u"wayland")) {
        return std::make_unique<QmlSurfacePanel>(view, banner, std::make_unique<LayerShellSurface>());
    }
    return std::make_unique<CallNotification>(banner, std::make_unique<DBusActionNotification>());
}

brenvale::CallWindows::MakePanels callPanelMakers(bool hasLayerShell) {
    using namespace brenvale;
    return {.incoming =
                [hasLayerShell](IncomingCallBanner& banner) {
                    return makeCallPanel(QStringLiteral("IncomingCallBanner"), banner, hasLayerShell);
                },
            .active =
                [hasLayerShell](ActiveCallBanner& banner) {
                    return makeCallPanel(QStringLiteral("ActiveCallBanner"), banner, hasLayerShell);
                }};
}

} // namespace

int main(int argc, char* argv[]) {
    using namespace brenvale;

    setUpProcess();
    const auto environment = QProcessEnvironment::systemEnvironment();
    leaveOutSilentBuses();
    const auto display = chooseDisplay();
    const auto addresses = addressOddArguments({argv, static_cast<std::size_t>(argc)});
    QApplication application(argc, argv);
    restoreEnvironment(display);
    QApplication::setApplicationName(QStringLiteral("brenvale"));
    QApplication::setApplicationVersion(QStringLiteral(BRENVALE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("org.brenvale.Brenvale"));
    QApplication::setQuitOnLastWindowClosed(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
    QApplication::setQuitLockEnabled(false); // what a plugin of the desktop has finished ends nothing here
    comeBackInBackground(application);
    const auto wish = startWish();
    DBusApplication instance;
    if (!instance.claim()) {
        leave(handOver(wish));
    }

    MainQueue mainQueue;
    LinuxPlatform platform(mainQueue, display, environment);
    runLastStepsBeforeEndSignals();
    (void)std::atexit(runLastSteps); // so does the toolkit end the process when the display is gone
    LinkQueue linkQueue;             // ends before all that its steps may use
    TcpTransport transport(linkQueue);
    WebSocketServer::setShared(
        std::make_shared<WebSocketServer>(platform.platform(), transport, linkQueue, mainQueue));
    AppDelegate delegate(platform.platform(), mainQueue, WebSocketServer::shared(), makeMainWindow,
                         callPanelMakers(display.hasLayerShell));
    if (!wish.isBackground && display.kind != brenvale::Display::Kind::none) {
        delegate.openWindowWithoutTray();
    }
    mainQueue.async([&delegate, &wish] {
        delegate.applicationDidFinishLaunching();
        delegate.handleSendToAndroidService(wish.files);
    });
    // Steps behind the launch, also for a call that waits since before it.
    instance.activate = [&delegate, &mainQueue] {
        mainQueue.async([&delegate] { delegate.applicationShouldHandleReopen(); });
    };
    instance.open = [&delegate, &mainQueue](const auto& urls) {
        mainQueue.async([&delegate, urls] { delegate.handleSendToAndroidService(urls); });
    };
    instance.activateAction = [&delegate, &mainQueue](const auto& name) {
        mainQueue.async([&delegate, name] { delegate.activateAction(name); });
    };
    const int status = QApplication::exec();
    DBusApplication::release();
    platform.saveBeforeEnd();
    // The system tears everything down: a step on the link's queue may take as long as it likes.
    runLastSteps();
    std::_Exit(status);
}
