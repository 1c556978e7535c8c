#include "transfer/LocalFile.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace brenvale;

namespace {

const auto notRegular = QStringLiteral("Not a regular file");

struct LocalFile : testing::Test {
    [[nodiscard]] QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }

    [[nodiscard]] QString makePipe() const {
        EXPECT_EQ(::mkfifo(path("pipe").toUtf8().constData(), 0600), 0);
        return path("pipe");
    }

    [[nodiscard]] QString makeSocket() const {
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        path("socket").toUtf8().toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
        const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        EXPECT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::close(socket);
        return path("socket");
    }

    [[nodiscard]] QString linkTo(const QString& target) const {
        EXPECT_TRUE(QFile::link(target, path("link")));
        return path("link");
    }

    [[nodiscard]] QString makeFile(const QByteArray& contents) const {
        QFile file(path("file"));
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(contents);
        return file.fileName();
    }

    QTemporaryDir folder;
};

QString faultOfReading(const QString& path) {
    const auto file = openFile(path);
    return file ? QString() : file.error();
}

QString faultOfWriting(const QString& path) {
    const auto file = createFile(path);
    return file ? QString() : file.error();
}

} // namespace

TEST_F(LocalFile, IsReadAsItIs) {
    const auto file = openFile(makeFile("hello"));
    ASSERT_TRUE(file.has_value());
    EXPECT_EQ((*file)->size(), 5);
    EXPECT_EQ((*file)->readAll(), "hello");
}

TEST_F(LocalFile, IsMadeOrEmptiedForWriting) {
    for (const auto& name : {path("new"), makeFile("hello")}) {
        const auto file = createFile(name);
        ASSERT_TRUE(file.has_value()) << file.error().toStdString();
        EXPECT_EQ((*file)->size(), 0);
        EXPECT_EQ((*file)->write("abc"), 3);
        EXPECT_EQ(QFileInfo(name).size(), 3);
    }
}

TEST_F(LocalFile, MayBeReachedByALink) {
    EXPECT_EQ(faultOfReading(linkTo(makeFile("hello"))), QString());
    EXPECT_EQ(faultOfWriting(path("link")), QString());
    EXPECT_EQ(QFileInfo(path("file")).size(), 0);
    EXPECT_TRUE(QFileInfo(path("link")).isSymLink());
}

TEST_F(LocalFile, APipeIsNoneAndIsNotWaitedFor) {
    const auto pipe = makePipe();
    EXPECT_EQ(faultOfReading(pipe), notRegular);
    EXPECT_EQ(faultOfWriting(pipe), notRegular);
    EXPECT_EQ(faultOfReading(linkTo(pipe)), notRegular);
    EXPECT_EQ(faultOfWriting(path("link")), notRegular);
}

TEST_F(LocalFile, APipeWithBothEndsOpenIsNoneAndItsReaderHearsNothing) {
    const auto pipe = makePipe();
    const int reader = ::open(pipe.toUtf8().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(faultOfWriting(pipe), notRegular);
    const int writer = ::open(pipe.toUtf8().constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_EQ(::write(writer, "kept", 4), 4);
    EXPECT_EQ(faultOfReading(pipe), notRegular);
    char bytes[8];
    EXPECT_EQ(::read(reader, bytes, sizeof bytes), 4) << "nobody else took them";
    EXPECT_EQ(::read(reader, bytes, sizeof bytes), -1) << "and nobody closed it";
    ::close(reader);
    ::close(writer);
}

TEST_F(LocalFile, ADeviceIsNone) {
    for (const auto* device : {"/dev/null", "/dev/full", "/dev/zero", "/dev/tty", "/dev/ptmx"}) {
        if (QFile::exists(QString::fromUtf8(device))) {
            EXPECT_EQ(faultOfReading(QString::fromUtf8(device)), notRegular) << device;
            EXPECT_EQ(faultOfWriting(QString::fromUtf8(device)), notRegular) << device;
        }
    }
    EXPECT_EQ(faultOfWriting(linkTo(QStringLiteral("/dev/full"))), notRegular);
}

TEST_F(LocalFile, ASocketIsNone) {
    const auto socket = makeSocket();
    EXPECT_EQ(faultOfReading(socket), notRegular);
    EXPECT_EQ(faultOfWriting(socket), notRegular);
}

TEST_F(LocalFile, AFolderIsNone) {
    for (const auto& name : {folder.path(), folder.path() + u'/', linkTo(folder.path())}) {
        EXPECT_EQ(faultOfReading(name), QStringLiteral("Is a directory"));
        EXPECT_EQ(faultOfWriting(name), QStringLiteral("Is a directory"));
    }
}

TEST_F(LocalFile, WhatIsNotThereIsTheSystemsError) {
    EXPECT_EQ(faultOfReading(path("missing")), QStringLiteral("No such file or directory"));
    EXPECT_EQ(faultOfReading(QString()), QStringLiteral("No such file or directory"));
    EXPECT_EQ(faultOfWriting(path("missing/file")), QStringLiteral("No such file or directory"));
    EXPECT_EQ(faultOfWriting(path("dangling/")), QStringLiteral("Is a directory"));
    EXPECT_EQ(faultOfReading(linkTo(path("link"))), QStringLiteral("Too many levels of symbolic links"));
}

TEST_F(LocalFile, ANameWithANulIsNotCutAtIt) {
    const auto name = makeFile("hello") + QChar::Null + QStringLiteral(".txt");
    EXPECT_EQ(faultOfReading(name), QStringLiteral("Invalid file name"));
    EXPECT_EQ(faultOfWriting(name), QStringLiteral("Invalid file name"));
}

TEST_F(LocalFile, IsClosedInStartedPrograms) {
    const auto written = createFile(path("file"));
    const auto read = openFile(path("file"));
    for (const auto& file : {&written, &read}) {
        ASSERT_TRUE(file->has_value());
        EXPECT_NE(::fcntl((**file)->handle(), F_GETFD) & FD_CLOEXEC, 0);
    }
}
