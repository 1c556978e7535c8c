#include "platform/linux/scripts/LocationOpening.h"

#include "platform/linux/ChildPrograms.h"
#include "platform/linux/scripts/DefaultProgram.h"

namespace brenvale {

std::optional<QString> openLocation(const QString& location, const ChildPrograms& programs) {
    auto command = defaultProgramCommand(location, ProgramFolders::ofSession());
    if (!command) {
        return command.error();
    }
    const auto program = command->takeFirst();
    return programs.start(program, *command);
}

} // namespace brenvale
