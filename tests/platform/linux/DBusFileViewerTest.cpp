#include "platform/linux/DBusFileViewer.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QObject>
#include <QUrl>

#include <gmock/gmock.h>

#include <array>

using namespace brenvale;

namespace {

/// Stands for the desktop's program for folders.
class FolderProgram : public QObject {
    Q_OBJECT

public:
    FolderProgram() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~FolderProgram() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    FolderProgram(const FolderProgram&) = delete;
    FolderProgram& operator=(const FolderProgram&) = delete;

    QList<QUrl> opened;

public slots:
    void open(const QUrl& url) { opened << url; }
};

} // namespace

TEST(DBusFileViewer, WithoutABusTheFolderOpens) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    int count = 0;
    std::array<char*, 1> arguments{nullptr};
    const QCoreApplication application(count, arguments.data());
    const FolderProgram program;
    DBusFileViewer().activateFileViewerSelecting(QUrl(QStringLiteral("file:///tmp/received/photo.jpg")));
    EXPECT_EQ(program.opened, QList{QUrl(QStringLiteral("file:///tmp/received/"))});
}

#include "DBusFileViewerTest.moc"
