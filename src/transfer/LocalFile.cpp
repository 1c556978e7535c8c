#include "transfer/LocalFile.h"

#include <QFileInfo>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brenvale {

namespace {

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int number() const { return number_; }
    int release() { return std::exchange(number_, -1); }

private:
    int number_;
};

/// Why what `status` tells of is not to be opened; empty for a regular file.
QString faultOf(const struct stat& status) {
    if (S_ISREG(status.st_mode)) {
        return {};
    }
    return S_ISDIR(status.st_mode) ? qt_error_string(EISDIR) : QStringLiteral("Not a regular file");
}

/// The descriptor of the regular file of that path, or why there is none.
std::expected<int, QString> openRegular(const QByteArray& name, int flags) {
    if (name.contains('\0')) {
        return std::unexpected(
            QStringLiteral("Invalid file name")); // the system would read only what is before it
    }
    struct stat status{};
    // Looked at first, for opening alone is felt at the other end of a pipe and by some devices; and again
    // when it is open, for it may have been replaced in between.
    if (::stat(name.constData(), &status) == 0) {
        if (const auto fault = faultOf(status); !fault.isEmpty()) {
            return std::unexpected(fault);
        }
    }
    constexpr mode_t everybodysMode = 0666; // less what the user's mask takes away
    Descriptor descriptor(
        ::open(name.constData(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, everybodysMode));
    if (descriptor.number() < 0 || ::fstat(descriptor.number(), &status) != 0) {
        return std::unexpected(qt_error_string(errno));
    }
    if (const auto fault = faultOf(status); !fault.isEmpty()) {
        return std::unexpected(fault);
    }
    return descriptor.release();
}

std::expected<std::unique_ptr<QFile>, QString>
wrap(const QByteArray& name, std::expected<int, QString> descriptor, QIODevice::OpenMode mode) {
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    auto file = std::make_unique<QFile>(QFile::decodeName(name));
    if (!file->open(*descriptor, mode | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        ::close(*descriptor);
        return std::unexpected(file->errorString());
    }
    return file;
}

} // namespace

bool isNoFile(const QString& path) {
    const QFileInfo info(path);
    return info.exists() && !info.isFile();
}

std::expected<std::unique_ptr<QFile>, QString> openFile(const QByteArray& name) {
    return wrap(name, openRegular(name, O_RDONLY), QIODevice::ReadOnly);
}

std::expected<std::unique_ptr<QFile>, QString> openFile(const QString& path) {
    return openFile(QFile::encodeName(path));
}

std::expected<std::unique_ptr<QFile>, QString> createFile(const QString& path) {
    const auto name = QFile::encodeName(path);
    auto file = wrap(name, openRegular(name, O_WRONLY | O_CREAT), QIODevice::WriteOnly);
    if (file && !(*file)->resize(0)) { // only now that it is known to be a file
        return std::unexpected((*file)->errorString());
    }
    return file;
}

} // namespace brenvale
