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
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/ProcessSetup.h"
#include "platform/linux/WindowActivation.h"
#include "platform/linux/panels/DBusActionNotification.h"
#include "platform/linux/panels/FloatingWindow.h"
#include "platform/linux/panels/LayerShellSurface.h"
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

/// The files named on the command line; options end the process here.
QList<QUrl> filesToSend(const QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Companion of an Android phone on the desktop."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("files"), QStringLiteral("Files to send to the phone."),
                                 QStringLiteral("[files...]"));
    parser.process(application);
    QList<QUrl> files;
    for (const auto& argument : parser.positionalArguments()) {
        files.append(QUrl::fromUserInput(argument, QDir::currentPath(), QUrl::AssumeLocalFile));
    }
    return files;
}

/// Another process is the program already: it does what was asked of this one.
int handOver(const QList<QUrl>& files) {
    if (brenvale::DBusApplication::handOver(files)) {
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
            view, banner, QmlCallPanel::Floating{.prepare = makeFloating, .isTranslucent = hasCompositor()});
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
    const QApplication application(argc, argv);
    restoreEnvironment(display);
    QApplication::setApplicationName(QStringLiteral("brenvale"));
    QApplication::setApplicationVersion(QStringLiteral(BRENVALE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("org.brenvale.Brenvale"));
    QApplication::setQuitOnLastWindowClosed(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
    QApplication::setQuitLockEnabled(false); // what a plugin of the desktop has finished ends nothing here
    const auto files = filesToSend(application);
    DBusApplication instance;
    if (!instance.claim()) {
        return handOver(files);
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
    mainQueue.async([&delegate, &files] {
        delegate.applicationDidFinishLaunching();
        delegate.handleSendToAndroidService(files);
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
