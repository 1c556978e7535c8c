#pragma once

#include <QObject>
#include <QVariantMap>

#include <functional>

namespace brenvale {

/// One call of a desktop portal whose answer comes later, as a signal (org.freedesktop.portal.Request,
/// https://flatpak.github.io/xdg-desktop-portal). A portal that goes away has refused. Deletes itself after
/// the answer. On main.
class PortalRequest final : public QObject {
    Q_OBJECT

public:
    /// Gets what the portal granted, or nothing where it refused, failed or is not there.
    using Answered = std::function<void(const std::optional<QVariantMap>& results)>;

    /// Calls `method` of `interface` with `arguments` and then `options`, to which the request's token is
    /// added.
    static void call(const QString& interface, const QString& method, const QVariantList& arguments,
                     QVariantMap options, Answered answered);

private slots:
    void response(uint code, const QVariantMap& results);

private:
    explicit PortalRequest(Answered answered) : answered_(std::move(answered)) {}
    void listen(const QString& path);
    void finish(const std::optional<QVariantMap>& results);

    Answered answered_;
    QString path_;
};

} // namespace brenvale
