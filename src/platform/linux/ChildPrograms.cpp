#include "platform/linux/ChildPrograms.h"

#include <QStandardPaths>

#include <csignal>

#include <fcntl.h>
#include <linux/close_range.h>
#include <unistd.h>

namespace brenvale {

namespace {

constexpr auto activationToken = "XDG_ACTIVATION_TOKEN";

/// Runs in the child between fork and exec, where only calls to the system are allowed. What is marked is
/// gone when the program runs; the toolkit needs some of it until then.
void shareNothing() {
    (void)::setsid();
    sigset_t none;
    sigemptyset(&none);
    (void)::sigprocmask(SIG_SETMASK, &none, nullptr);
    constexpr unsigned int first = STDERR_FILENO + 1;
    if (::close_range(first, ~0U, CLOSE_RANGE_CLOEXEC) != 0) { // a system from before 2021
        const auto limit = ::sysconf(_SC_OPEN_MAX);
        for (int descriptor = static_cast<int>(first); descriptor < limit; ++descriptor) {
            (void)::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
        }
    }
}

} // namespace

ChildPrograms::ChildPrograms(QProcessEnvironment environment) : environment_(std::move(environment)) {}

void ChildPrograms::prepare(QProcess& process) const {
    auto environment = environment_;
    environment.remove(QString::fromLatin1(activationToken)); // it was for us
    if (const auto token = qEnvironmentVariable(activationToken); !token.isEmpty()) {
        environment.insert(QString::fromLatin1(activationToken), token); // what brought this about
    }
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setChildProcessModifier(shareNothing);
}

bool ChildPrograms::start(const QString& program, const QStringList& arguments) const {
    if (QStandardPaths::findExecutable(program).isEmpty()) {
        return false;
    }
    auto* process = new QProcess; // never a child of ours: it would end with us
    prepare(*process);
    process->setStandardOutputFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QObject::connect(process, &QProcess::errorOccurred, process, [process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            process->deleteLater();
        }
    });
    process->start(program, arguments);
    return true;
}

} // namespace brenvale
