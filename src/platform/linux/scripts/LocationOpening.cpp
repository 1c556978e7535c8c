#include "platform/linux/scripts/LocationOpening.h"

#include "platform/linux/scripts/DefaultProgram.h"

#include <QDir>
#include <QProcess>

namespace brenvale {

std::optional<QString> openLocation(const QString& location) {
    auto command = defaultProgramCommand(location, ProgramFolders::ofSession());
    if (!command) {
        return command.error();
    }
    QProcess program;
    program.setProgram(command->takeFirst());
    program.setArguments(*command);
    program.setWorkingDirectory(QDir::homePath());
    program.setStandardInputFile(QProcess::nullDevice());
    program.setStandardOutputFile(QProcess::nullDevice()); // ours is the log
    program.setStandardErrorFile(QProcess::nullDevice());
    if (!program.startDetached()) {
        return QStringLiteral("%1 can't be started: %2").arg(program.program(), program.errorString());
    }
    return {};
}

} // namespace brenvale
