#include "FuzzTarget.h"
#include "fakes/TestServer.h"
#include "link/Json.h"
#include "platform/Fatal.h"

#include <algorithm>
#include <array>

using namespace brenvale;

namespace {

/// The end of the process for a cause that a phone is known to have.
struct ProcessEnded {};

/// Whether a message may do that. These are the two texts for a call's number or duration that no 64-bit
/// integer holds. The others tell of a progress and of a port, which no message can choose: seeing one of
/// those is a finding.
bool isKnownFromMessages(QByteArrayView text) {
    static constexpr std::array known{
        std::string_view(
            "Double value cannot be converted to Int because the result would be greater than Int.max"),
        std::string_view(
            "Double value cannot be converted to Int because the result would be less than Int.min")};
    return std::ranges::find(known, std::string_view(text.data(), static_cast<std::size_t>(text.size()))) !=
           known.end();
}

/// A file's name may lead out of Downloads, and a fuzzer would soon write over its owner's files.
bool leavesDownloads(std::string_view message) {
    static JsonReader reader;
    const MessageBuffer buffer(message);
    const auto document = reader.parse(buffer);
    const auto json = document ? document->root().object() : std::nullopt;
    const auto fileName = json ? json->string("fileName") : std::nullopt;
    return fileName && fileName->contains(u"..");
}

void checkAfterMessage(const TestServer& test) {
    require(test.phone->isReceiveArmed(), "no message keeps the next from being read");
    require(!test.phone->isCancelled, "no message ends the connection");
    require(test.phone->sent.size() == 1, "no message is answered");
}

} // namespace

/// Stands in for the one of the program, which the linker then leaves in its library: a known cause must not
/// end the fuzzer. An exception is the one way out of the middle of a message that leaks nothing; as the
/// process would be gone, nothing of the server is used after it.
void brenvale::fatal(QByteArrayView text) {
    require(isKnownFromMessages(text), text.data());
    throw ProcessEnded{};
}

/// The input is what one phone sends, a message a line (JSON needs no line feed), to a server of its own: so
/// nothing piles up, and an input that finds something finds it again by itself.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TestServer test;
    try {
        auto rest = inputText(data, size);
        while (!rest.empty()) {
            const auto message = rest.substr(0, rest.find('\n'));
            rest.remove_prefix(std::min(message.size() + 1, rest.size()));
            if (!leavesDownloads(message)) {
                test.receive(message);
                checkAfterMessage(test);
            }
        }
    } catch (const ProcessEnded&) {
        return 0;
    }
    return 0;
}
