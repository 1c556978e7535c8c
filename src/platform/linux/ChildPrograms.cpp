#include "platform/linux/ChildPrograms.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/wait.h>
#include <unistd.h>

namespace brenvale {

namespace {

const QString activationToken = QStringLiteral("XDG_ACTIVATION_TOKEN");

/// Texts as the system takes them: pointers with a null behind the last.
class SystemStrings {
public:
    explicit SystemStrings(const QStringList& texts) {
        texts_.reserve(static_cast<std::size_t>(texts.size()));
        for (const auto& text : texts) {
            texts_.push_back(text.toLocal8Bit());
        }
        for (auto& text : texts_) {
            pointers_.push_back(text.data());
        }
        pointers_.push_back(nullptr);
    }

    [[nodiscard]] char* const* data() const { return pointers_.data(); }

private:
    std::vector<QByteArray> texts_;
    std::vector<char*> pointers_;
};

/// What a child needs, made before it exists: between fork and exec only calls to the system are allowed.
struct Start {
    QByteArray path;
    QByteArray folder;
    SystemStrings arguments;
    SystemStrings environment;
};

/// In the child. What is marked is gone when its program runs; until then some of it is needed.
void shareNothing() {
    (void)::setsid();
    sigset_t none;
    sigemptyset(&none);
    (void)::sigprocmask(SIG_SETMASK, &none, nullptr);
    (void)std::signal(SIGPIPE, SIG_DFL);
    constexpr unsigned int first = STDERR_FILENO + 1;
    if (::close_range(first, ~0U, CLOSE_RANGE_CLOEXEC) != 0) { // a system from before 2021
        const auto limit = ::sysconf(_SC_OPEN_MAX);
        for (int descriptor = static_cast<int>(first); descriptor < limit; ++descriptor) {
            (void)::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
        }
    }
}

/// In the child: becomes the program, or writes the system's error to `report`.
[[noreturn]] void become(const Start& start, int report) {
    const int null = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        (void)::dup2(null, stream);
    }
    shareNothing();
    (void)::chdir(start.folder.constData());
    (void)::execve(start.path.constData(), start.arguments.data(), start.environment.data());
    const int error = errno;
    [[maybe_unused]] const auto told = ::write(report, &error, sizeof error);
    ::_exit(EXIT_FAILURE);
}

/// The system's error, or 0. The program is the child of a child that has ended already, so that the system
/// and not we see to its end.
int startOrphan(const Start& start) {
    std::array<int, 2> report{};
    if (::pipe2(report.data(), O_CLOEXEC) != 0) {
        return errno;
    }
    const auto child = ::fork();
    if (child == 0) {
        const auto grandchild = ::fork();
        if (grandchild == 0) {
            become(start, report[1]);
        }
        const int error = errno;
        if (grandchild < 0) {
            [[maybe_unused]] const auto told = ::write(report[1], &error, sizeof error);
        }
        ::_exit(EXIT_SUCCESS);
    }
    int error = child < 0 ? errno : 0;
    ::close(report[1]);
    while (child > 0 && ::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    while (error == 0 && ::read(report[0], &error, sizeof error) < 0 && errno == EINTR) {
    }
    ::close(report[0]);
    return error;
}

} // namespace

ChildPrograms::ChildPrograms(const QProcessEnvironment& environment) : environment_(environment) {}

QProcessEnvironment ChildPrograms::environment() const {
    auto environment = environment_;
    environment.remove(activationToken); // it was for us
    if (const auto token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN"); !token.isEmpty()) {
        environment.insert(activationToken, token); // what brought this about
    }
    return environment;
}

void ChildPrograms::prepare(QProcess& process) const {
    process.setProcessEnvironment(environment());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier(shareNothing);
}

std::optional<QString> ChildPrograms::start(const QString& program, const QStringList& arguments) const {
    const auto path = QStandardPaths::findExecutable(program);
    const Start start{.path = path.toLocal8Bit(),
                      .folder = QDir::homePath().toLocal8Bit(),
                      .arguments = SystemStrings(QStringList{program} + arguments),
                      .environment = SystemStrings(environment().toStringList())};
    const int error = path.isEmpty() ? ENOENT : startOrphan(start);
    if (error == 0) {
        return {};
    }
    return QStringLiteral("%1 can't be started: %2")
        .arg(program, QString::fromStdString(std::generic_category().message(error)));
}

} // namespace brenvale
