#include "StartedProgram.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <QByteArray>
#include <QFile>
#include <QString>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace brenvale::bench {

using namespace std::chrono_literals;

unsigned short programPort() {
    using boost::asio::ip::tcp;
    static const auto port = [] {
        boost::asio::io_context context;
        return tcp::acceptor(context, tcp::endpoint(tcp::v6(), 0)).local_endpoint().port();
    }();
    return port;
}

pid_t startProgram(const char* program) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const char* arguments[] = {program, "--background", nullptr}; // no window, also where there is no tray
    if (posix_spawn(&process, program, &actions, nullptr, const_cast<char* const*>(arguments), environ) !=
        0) {
        std::perror(program);
        std::exit(1);
    }
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

void stopProgram(pid_t process) {
    ::kill(process, SIGTERM);
    ::waitpid(process, nullptr, 0);
}

void waitUntilListening(pid_t process) {
    boost::asio::io_context context;
    boost::system::error_code error;
    do {
        boost::asio::ip::tcp::socket socket(context);
        socket.connect({boost::asio::ip::address_v4::loopback(), programPort()}, error);
        if (error && ::waitpid(process, nullptr, WNOHANG) != 0) {
            std::fputs("the program has ended\n", stderr);
            std::exit(1);
        }
        if (error) {
            std::this_thread::sleep_for(500us);
        }
    } while (error);
}

/// Where the program finds its settings and its Downloads folder.
void writeSettings(const QDir& folder) {
    folder.mkpath(QStringLiteral("brenvale"));
    folder.mkpath(QStringLiteral("Downloads"));
    const auto write = [&folder](const QString& name, const QByteArray& text) {
        QFile file(folder.filePath(name));
        if (!file.open(QFile::WriteOnly) || file.write(text) != text.size()) {
            std::perror("settings");
            std::exit(1);
        }
    };
    write(QStringLiteral("brenvale/brenvale.conf"),
          "[General]\nport=" + QByteArray::number(programPort()) + "\n");
    write(QStringLiteral("user-dirs.dirs"),
          "XDG_DOWNLOAD_DIR=\"" + folder.filePath(QStringLiteral("Downloads")).toUtf8() + "\"\n");
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
}

} // namespace brenvale::bench
