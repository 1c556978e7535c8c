#include "FileStages.h"

#include "Measuring.h"
#include "link/Json.h"
#include "link/MessageBuffer.h"
#include "transfer/Base64.h"
#include "transfer/FileChunkText.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

// What the protocol stack does inside its one call for a message.
#include <boost/beast/websocket/detail/mask.hpp>
#include <boost/beast/websocket/detail/utf8_checker.hpp>

#include <algorithm>
#include <array>

namespace brenvale::bench {

namespace {

namespace websocket = boost::beast::websocket;

constexpr qint64 chunkSize = 1 << 20;
const auto fileName = QStringLiteral("brenvale-bench.bin");

/// The contents of a chunk of a compressed file.
QByteArray randomBytes() {
    QByteArray bytes(chunkSize, Qt::Uninitialized);
    std::ranges::generate(bytes, [] { return static_cast<char>(QRandomGenerator::global()->generate()); });
    return bytes;
}

/// Seconds of a processor for a gigabyte, where `step` is what is done for each chunk.
template <typename Step>
double secondsForGigabyte(int chunks, Step step) {
    const double before = threadCpuSeconds();
    for (int i = 0; i < chunks; ++i) {
        step();
    }
    return (threadCpuSeconds() - before) * 1e9 / static_cast<double>(chunks * chunkSize);
}

/// Nothing that is measured may be left out because nobody looks at its result.
template <typename Value>
void use(const Value& value) {
    asm volatile("" : : "r"(&value) : "memory");
}

/// A file that goes with this object.
class ScratchFile {
public:
    explicit ScratchFile(const QString& folder) : folder_(folder + QStringLiteral("/brenvale-bench-XXXXXX")) {
        if (!file.open(QFile::ReadWrite | QFile::Unbuffered)) {
            qFatal("no file can be made in %s", qUtf8Printable(folder));
        }
    }

private:
    QTemporaryDir folder_;

public:
    QFile file{folder_.filePath(fileName)};
};

/// As an incoming file is written.
void append(QFile& file, const QByteArray& bytes) {
    if (!file.seek(file.size()) || file.write(bytes) != bytes.size()) {
        qFatal("there is no room for %s", qUtf8Printable(file.fileName()));
    }
}

double readingFromFile(int mebibytes, QFile& file) {
    QByteArray bytes(chunkSize, Qt::Uninitialized);
    file.seek(0);
    return secondsForGigabyte(mebibytes, [&] {
        if (file.read(bytes.data(), chunkSize) != chunkSize) {
            qFatal("the file ends early");
        }
    });
}

} // namespace

IncomingStages incomingStages(int mebibytes, bool escapesSlashes) {
    auto text = fileChunkText(fileName, randomBytes(), false);
    if (escapesSlashes) {
        text.replace('/', "\\/");
    }
    const MessageBuffer message(std::string_view(text.constData(), static_cast<std::size_t>(text.size())));
    IncomingStages stages{};
    websocket::detail::prepared_key key{0x12, 0x34, 0x56, 0x78};
    stages.unmask = secondsForGigabyte(mebibytes, [&] {
        websocket::detail::mask_inplace(
            boost::asio::buffer(text.data(), static_cast<std::size_t>(text.size())), key);
        use(*text.constData());
    });
    stages.checkUtf8 = secondsForGigabyte(mebibytes, [&] {
        websocket::detail::utf8_checker checker;
        use(checker.write(message.data()));
    });
    JsonReader reader;
    stages.json = secondsForGigabyte(mebibytes, [&] {
        const auto document = reader.parse(message);
        const auto json = document->root().object();
        use(json->string("fileName"));
        use(json->utf8("fileData"));
    });
    const auto document = reader.parse(message);
    const auto data = *document->root().object()->utf8("fileData");
    Base64Decoder decoder;
    stages.base64 = secondsForGigabyte(mebibytes, [&] { use(decoder.decode(data)); });
    return stages;
}

double writingToFile(int mebibytes, const QString& folder) {
    const auto bytes = randomBytes();
    ScratchFile scratch(folder);
    return secondsForGigabyte(mebibytes, [&] { append(scratch.file, bytes); });
}

OutgoingStages outgoingStages(int mebibytes, const QString& folder) {
    const auto bytes = randomBytes();
    ScratchFile scratch(folder);
    for (int i = 0; i < mebibytes; ++i) {
        append(scratch.file, bytes);
    }
    return {.read = readingFromFile(mebibytes, scratch.file),
            .encode = secondsForGigabyte(mebibytes, [&] { use(fileChunkText(fileName, bytes, false)); })};
}

} // namespace brenvale::bench
