#pragma once

#include <QList>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

#include <functional>

namespace brenvale {

/// The running program as others reach it, and the reason why there is one of it: whoever has the name
/// org.brenvale.Brenvale on the session bus is the one (org.freedesktop.Application,
/// https://specifications.freedesktop.org/desktop-entry-spec, D-Bus Activation). On main.
class DBusApplication final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// What the others may ask. Set before the event loop runs.
    std::function<void()> activate;
    std::function<void(const QList<QUrl>& urls)> open;
    std::function<void(const QString& name)> activateAction;

    /// Takes the name; false where another process has it. Without a bus there is nobody to share with.
    [[nodiscard]] bool claim();

    /// Gives the name back; whoever waits for an answer has it by then.
    static void release();

    /// Asks the process that has the name to open `urls`, or to come up where there are none. False where it
    /// does not answer within some seconds.
    [[nodiscard]] static bool handOver(const QList<QUrl>& urls);

public slots: // the interface; the names are its own
    void Activate(const QVariantMap& platformData) const;
    void Open(const QStringList& uris, const QVariantMap& platformData) const;
    void ActivateAction(const QString& name, const QVariantList& parameters,
                        const QVariantMap& platformData) const;
};

} // namespace brenvale
