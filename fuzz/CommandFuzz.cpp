#include "FuzzTarget.h"
#include "remote/RemoteCommand.h"

#include <string>

using namespace brenvale;

namespace {

bool hasInfix(std::string_view command) {
    return command.find("_key_") != std::string_view::npos ||
           command.find("_slide_") != std::string_view::npos ||
           command.find("_presentation_") != std::string_view::npos;
}

/// The command that a split one was.
std::string joined(const SplitCommand& split) {
    std::string command;
    for (const auto modifier : split.modifiers) {
        command.append("+").append(modifier);
    }
    command.erase(0, 1);
    return command.append("_").append(split.name);
}

} // namespace

/// The input is one command of the phone.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto command = inputText(data, size);
    const auto split = splitCommand(command);
    require(split.modifiers.empty() != hasInfix(command), "a command has modifiers if it has an infix");
    require(split.modifiers.empty() ? split.name == command : joined(split) == command,
            "nothing of a command is lost");
    for (const auto modifier : split.modifiers) {
        require(modifier.find_first_of("+_") == std::string_view::npos, "a modifier is one piece");
    }
    require((flagsOf(split.modifiers) & ~quint64{0x1e0000}) == 0, "flags are those of the four modifiers");
    if (const auto* row = remoteCommandOf(split.name)) {
        require(row->name == split.name, "a row is found by its whole name");
    }
    (void)mediaKeyOf(command);
    return 0;
}
