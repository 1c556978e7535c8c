#include "platform/linux/UrlOpener.h"

#include "platform/linux/ChildPrograms.h"

#include <QDesktopServices>
#include <QUrl>

#include <array>

namespace brenvale {

namespace {

/// Those that the program's own texts and files have.
constexpr std::array schemes{"https", "http", "mailto", "file"};

} // namespace

UrlOpener::UrlOpener(const ChildPrograms& programs) : programs_(programs) {
    takeOver();
}

UrlOpener::~UrlOpener() {
    giveBack();
}

void UrlOpener::takeOver() {
    for (const auto* scheme : schemes) {
        QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "openUrl");
    }
}

void UrlOpener::giveBack() {
    for (const auto* scheme : schemes) {
        QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    }
}

void UrlOpener::openUrl(const QUrl& url) {
    if (!programs_.start(QStringLiteral("xdg-open"), {url.toString(QUrl::FullyEncoded)})) {
        return; // started
    }
    giveBack(); // the toolkit knows some browsers by name
    QDesktopServices::openUrl(url);
    takeOver();
}

} // namespace brenvale
