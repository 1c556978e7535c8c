#include "FuzzTarget.h"
#include "transfer/Base64.h"
#include "transfer/PlainBase64.h"

#include <QByteArray>

#include <algorithm>
#include <vector>

using namespace brenvale;

namespace {

using Decoded = std::optional<std::string>;

std::vector<Base64Way> ways() {
    std::vector<Base64Way> all{Base64Way::scalar};
    if (fastestBase64Way() != Base64Way::scalar) {
        all.push_back(fastestBase64Way());
    }
    return all;
}

/// Memory of exactly the size of `bytes`, so that the address sanitizer sees a read beyond it.
std::unique_ptr<char[]> exactCopy(std::string_view bytes) {
    auto copy = std::make_unique_for_overwrite<char[]>(bytes.size());
    std::ranges::copy(bytes, copy.get());
    return copy;
}

Decoded decodedIn(Base64Way way, std::string_view text) {
    const auto copy = exactCopy(text);
    const auto out = std::make_unique_for_overwrite<char[]>(base64DecodedCapacity(text.size()));
    const auto size = decodeBase64({copy.get(), text.size()}, out.get(), way);
    return size ? Decoded(std::string(out.get(), *size)) : std::nullopt;
}

std::string encodedIn(Base64Way way, std::string_view bytes) {
    const auto copy = exactCopy(bytes);
    const std::string text(base64EncodedSize(bytes.size()), '\0');
    const auto out = exactCopy(text);
    const char* end = encodeBase64({copy.get(), static_cast<qsizetype>(bytes.size())}, out.get(), way);
    require(end == out.get() + text.size(), "an encoding has the size that was told");
    return {out.get(), text.size()};
}

void checkDecoding(std::string_view text) {
    static Base64Decoder decoder; // as for the chunks of one file: the memory of earlier texts serves again
    const Decoded expected = plainlyDecoded(text);
    for (const Base64Way way : ways()) {
        require(decodedIn(way, text) == expected, "every way decodes by the plain rules");
    }
    const auto bytes = decoder.decode(text);
    require(bytes.has_value() == expected.has_value(), "the decoder refuses what the rules refuse");
    require(!bytes || *bytes == QByteArrayView(*expected), "the decoder gives what the rules give");
}

void checkEncoding(std::string_view bytes) {
    const QByteArray array(bytes.data(), static_cast<qsizetype>(bytes.size()));
    const QByteArray expected = array.toBase64();
    for (const Base64Way way : ways()) {
        const std::string text = encodedIn(way, bytes);
        require(expected == QByteArrayView(text), "every way encodes as the library does");
        require(decodedIn(way, text) == bytes, "what was encoded decodes to the same bytes");
    }
    QByteArray appended = "a/b";
    appendBase64(array, appended);
    require(appended == "a/b" + expected, "what was there before stays");
}

} // namespace

/// The input is base64, or bytes to be made base64: it is tried as both.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = inputText(data, size);
    checkDecoding(input);
    checkEncoding(input);
    return 0;
}
