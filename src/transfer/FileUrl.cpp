#include "transfer/FileUrl.h"

namespace brenvale {

std::optional<QUrl> localFileUrl(const QUrl& url) {
    if (!url.isLocalFile() || (!url.host().isEmpty() && url.host() != u"localhost")) {
        return {};
    }
    auto local = url;
    local.setAuthority({});
    return local;
}

QByteArray localPath(const QUrl& url) {
    return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
}

QString lastPathComponent(const QUrl& url) {
    auto path = url.path(QUrl::FullyDecoded);
    while (path.size() > 1 && path.endsWith(u'/')) {
        path.chop(1);
    }
    return path == u"/" ? path : path.mid(path.lastIndexOf(u'/') + 1);
}

} // namespace brenvale
