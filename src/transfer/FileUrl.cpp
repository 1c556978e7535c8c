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

QString lastPathComponent(const QUrl& url) {
    return url.adjusted(QUrl::StripTrailingSlash).fileName();
}

} // namespace brenvale
