#include "platform/linux/input/ConsentMemory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <array>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brenvale {

namespace {

QString statePath(QLatin1StringView name) {
    auto folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder)) {
        folder = QDir::homePath() + QStringLiteral("/.local/state");
    }
    return folder + QStringLiteral("/brenvale/") + name;
}

QString tokenPath() {
    return statePath(QLatin1StringView("remote-desktop-token"));
}

QString refusalPath() {
    return statePath(QLatin1StringView("remote-desktop-refused"));
}

/// The beginning of a plain file: a token is short, and a pipe would never end.
QByteArray shortFile(const QString& path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        return {};
    }
    struct stat status = {};
    std::array<char, 4096> bytes{};
    const bool isPlain = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    const auto length = isPlain ? ::read(file, bytes.data(), bytes.size()) : 0;
    ::close(file);
    return length > 0 ? QByteArray(bytes.data(), length) : QByteArray();
}

/// For the user alone.
void keep(const QString& path, const QByteArray& contents) {
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        file.write(contents);
        file.commit();
    }
}

} // namespace

QString ConsentMemory::token() {
    return QString::fromUtf8(shortFile(tokenPath()));
}

void ConsentMemory::keepToken(const QString& token) {
    keep(tokenPath(), token.toUtf8());
}

bool ConsentMemory::wasRefused() {
    return QFile::exists(refusalPath());
}

void ConsentMemory::keepRefusal(bool isRefused) {
    if (isRefused) {
        keep(refusalPath(), {});
    } else {
        QFile::remove(refusalPath());
    }
}

} // namespace brenvale
