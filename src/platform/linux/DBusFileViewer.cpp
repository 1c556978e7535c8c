#include "platform/linux/DBusFileViewer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QUrl>

namespace brenvale {

namespace {

void openFolderOf(const QUrl& file) {
    QDesktopServices::openUrl(file.adjusted(QUrl::RemoveFilename));
}

} // namespace

void DBusFileViewer::activateFileViewerSelecting(const QUrl& file) {
    if (!QDBusConnection::sessionBus().isConnected()) { // a call would never come to an end
        openFolderOf(file);
        return;
    }
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{file.toString(QUrl::FullyEncoded)} << QString();
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [file](QDBusPendingCallWatcher* finished) {
                         finished->deleteLater();
                         if (finished->isError()) {
                             openFolderOf(file);
                         }
                     });
}

} // namespace brenvale
