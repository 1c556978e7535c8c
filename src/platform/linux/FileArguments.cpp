#include "platform/linux/FileArguments.h"

#include <QStringConverter>

#include <array>

#include <climits>
#include <unistd.h>

namespace brenvale {

namespace {

bool isText(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return !decoder.hasError();
}

QByteArray currentFolder() {
    std::array<char, PATH_MAX> path{};
    return ::getcwd(path.data(), path.size()) != nullptr ? QByteArray(path.data()) : QByteArray();
}

} // namespace

QByteArrayList addressOddArguments(std::span<char*> arguments) {
    QByteArrayList kept;
    for (auto*& argument : arguments) {
        const QByteArray bytes(argument);
        if (!isText(bytes)) {
            const auto path = bytes.startsWith('/') ? bytes : currentFolder() + '/' + bytes;
            kept.append("file://" + path.toPercentEncoding("/"));
            argument = kept.last().data();
        }
    }
    return kept;
}

} // namespace brenvale
