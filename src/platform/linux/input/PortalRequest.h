#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

#include <expected>
#include <functional>

namespace brenvale {

/// One call of a desktop portal whose answer comes later, as a signal (org.freedesktop.portal.Request,
/// https://flatpak.github.io/xdg-desktop-portal): a dialog stays for as long as the user lets it. Deletes
/// itself after the answer, or with its parent. On the parent's thread.
class PortalRequest final : public QObject {
    Q_OBJECT

public:
    enum class Failure : signed char {
        refused, ///< the user said no
        failed,  ///< there was no answer to have: the portal is not there, went away or cannot
    };
    using Results = std::expected<QVariantMap, Failure>;
    using Answered = std::function<void(const Results& results)>;

    struct Call {
        QString interface;
        QString method;
        QVariantList arguments; ///< all but the last
        QVariantMap options;    ///< the last, to which the request's token is added
    };

    static void make(const QDBusConnection& bus, Call call, QObject* parent, Answered answered);

private slots:
    void response(uint code, const QVariantMap& results);

private:
    PortalRequest(QDBusConnection bus, QObject* parent, Answered answered)
        : QObject(parent), bus_(std::move(bus)), answered_(std::move(answered)) {}
    void listen(const QString& path);
    void finish(const Results& results);

    QDBusConnection bus_;
    Answered answered_;
    QString path_;
};

} // namespace brenvale
