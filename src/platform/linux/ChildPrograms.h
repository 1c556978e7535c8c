#pragma once

#include <QProcess>
#include <QProcessEnvironment>

namespace brenvale {

/// Starts other programs so that they share nothing with this one that is not meant for them: no descriptor,
/// whatever library opened it, no part in our standard streams, no session or terminal, and the environment
/// as the user has it. On main.
class ChildPrograms {
public:
    /// `environment` is that of this process as it was started.
    explicit ChildPrograms(QProcessEnvironment environment = QProcessEnvironment::systemEnvironment());

    /// Starts a program that lives as long as it likes, also beyond this one. False where there is no such
    /// program to start.
    [[nodiscard]] bool start(const QString& program, const QStringList& arguments) const;

    /// Makes a process that has not started yet one of these. Its standard output stays as it is set.
    void prepare(QProcess& process) const;

private:
    QProcessEnvironment environment_;
};

} // namespace brenvale
