#include "CommandLine.h"
#include "DemoRun.h"
#include "InterruptSignals.h"
#include "Session.h"
#include "Shell.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdlib>
#include <variant>

namespace {

using namespace brenvale::phone;

constexpr int exitUsage = 2;

/// Runs the session until the program is told to end, and says goodbye to the desktop.
int stay(Session& session) {
    const int code = QCoreApplication::exec();
    session.phone().close();
    return code;
}

/// Performs the task of the command line and gives the exit code.
struct Performer {
    const LinkOptions& link;

    int operator()(const ShowHelp&) const {
        print(programHelp().trimmed());
        return EXIT_SUCCESS;
    }

    int operator()(const Sending& sending) const {
        brenvale::Phone phone;
        if (const auto connected = phone.connect(link.host, link.port); !connected) {
            printError(QStringLiteral("%1:%2: %3").arg(link.host).arg(link.port).arg(connected.error()));
            return EXIT_FAILURE;
        }
        const auto sent = sendAll(phone, sending);
        if (!sent) {
            printError(sent.error());
        }
        // The desktop's goodbye tells that it has read all that came before.
        if (!phone.close()) {
            printError(QStringLiteral("the link was lost before the desktop had read everything"));
            return EXIT_FAILURE;
        }
        return sent ? EXIT_SUCCESS : EXIT_FAILURE;
    }

    int operator()(const PlayDemo& demo) const {
        if (!demo.folder.isEmpty() && !makeFolder(demo.folder)) {
            return EXIT_FAILURE;
        }
        Session session(link, demo.folder);
        const DemoRun run(session, demo);
        return session.start() ? stay(session) : EXIT_FAILURE;
    }

    int operator()(const ReceiveFiles& receive) const {
        if (!makeFolder(receive.folder)) {
            return EXIT_FAILURE;
        }
        Session session(link, receive.folder);
        return session.start() ? stay(session) : EXIT_FAILURE;
    }

    int operator()(const RunShell&) const {
        Session session(link, {});
        Shell shell(session);
        if (!session.start()) {
            return EXIT_FAILURE;
        }
        shell.start();
        return stay(session);
    }

    static bool makeFolder(const QString& folder) {
        if (QDir().mkpath(folder)) {
            return true;
        }
        printError(QStringLiteral("%1: the folder cannot be made").arg(folder));
        return false;
    }
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const auto commandLine = readCommandLine(QCoreApplication::arguments().sliced(1));
    if (!commandLine) {
        printError(commandLine.error());
        printError(QStringLiteral("--help lists the commands"));
        return exitUsage;
    }
    const InterruptSignals interrupts([] { QCoreApplication::exit(EXIT_SUCCESS); });
    return std::visit(Performer{commandLine->link}, commandLine->task);
}
