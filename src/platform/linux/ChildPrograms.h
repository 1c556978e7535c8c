#pragma once

#include <QProcessEnvironment>
#include <QStringList>

#include <optional>

class QProcess;

namespace brenvale {

/// Starts other programs so that they share nothing with this one that is not meant for them: no descriptor,
/// whatever library opened it, no part in our standard streams, no session or terminal, no blocked signal,
/// and the environment as the user has it. A value. Any thread.
class ChildPrograms {
public:
    /// `environment` is that of this process as it was started.
    explicit ChildPrograms(const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

    /// Starts a program in the user's home folder that lives as long as it likes, also beyond this one, and
    /// whose end is nobody's business. Gives nothing, or why it could not.
    [[nodiscard]] std::optional<QString> start(const QString& program, const QStringList& arguments) const;

    /// Makes a process that has not started yet one of these. Its standard output stays as it is set.
    void prepare(QProcess& process) const;

private:
    [[nodiscard]] QProcessEnvironment environment() const;

    QProcessEnvironment environment_;
};

} // namespace brenvale
