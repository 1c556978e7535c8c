#include "platform/linux/UrlOpener.h"

#include "platform/StandardError.h"
#include "platform/linux/ChildPrograms.h"
#include "platform/linux/scripts/LocationOpening.h"

#include <QDesktopServices>
#include <QUrl>

#include <array>

namespace brenvale {

namespace {

/// Those that the program's own texts and files have.
constexpr std::array schemes{"https", "http", "mailto", "file"};

} // namespace

UrlOpener::UrlOpener(const ChildPrograms& programs) : programs_(programs) {
    for (const auto* scheme : schemes) {
        QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "openUrl");
    }
}

UrlOpener::~UrlOpener() {
    for (const auto* scheme : schemes) {
        QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    }
}

void UrlOpener::openUrl(const QUrl& url) {
    if (!programs_.start(QStringLiteral("xdg-open"), {url.toString(QUrl::FullyEncoded)})) {
        return; // started
    }
    // Where the desktop has no opener of its own the user's choices are looked up as it would.
    if (const auto error = openLocation(url.toString(QUrl::FullyEncoded), programs_)) {
        complain("Brenvale: " + error->toUtf8());
    }
}

} // namespace brenvale
