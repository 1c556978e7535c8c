#include "link/LinkQueue.h"
#include "link/TcpListener.h"
#include "link/WebSocketServer.h"
#include "platform/MainQueue.h"
#include "platform/linux/DisplayProbe.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/ProcessSetup.h"
#include "shell/AppDelegate.h"

#include <QApplication>

#include <cstdlib>

int main(int argc, char* argv[]) {
    using namespace brenvale;

    setUpProcess();
    const auto display = chooseDisplay();
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("brenvale"));
    QApplication::setApplicationDisplayName(QStringLiteral("Brenvale"));
    QApplication::setDesktopFileName(QStringLiteral("org.brenvale.Brenvale"));
    QApplication::setQuitOnLastWindowClosed(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());

    MainQueue mainQueue;
    LinuxPlatform platform(mainQueue, display);
    LinkQueue linkQueue; // ends before all that its steps may use
    TcpTransport transport(linkQueue);
    WebSocketServer::setShared(
        std::make_shared<WebSocketServer>(platform.platform(), transport, linkQueue, mainQueue));
    AppDelegate delegate(platform.platform(), mainQueue, WebSocketServer::shared());

    mainQueue.async([&delegate] { delegate.applicationDidFinishLaunching(); });
    // The system tears everything down: a step on the link's queue may take as long as it likes.
    std::_Exit(QApplication::exec());
}
