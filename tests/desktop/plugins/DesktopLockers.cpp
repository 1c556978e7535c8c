#include <QEventLoopLocker>
#include <QGenericPlugin>
#include <QTimer>

#include <cstdio>
#include <memory>

/// Does what the plugins of some desktops do while they have work under way: keeps the event loop locked, and
/// lets go of it. Tells on standard error when it has.
class DesktopLockers final : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "DesktopLockers.json")

public:
    QObject* create(const QString& /*name*/, const QString& /*specification*/) override {
        auto* work = new QObject(this);
        QTimer::singleShot(0, work, [work, locker = std::make_shared<QEventLoopLocker>()]() mutable {
            locker.reset();
            std::fputs("the event loop was unlocked\n", stderr);
            work->deleteLater();
        });
        return work;
    }
};

#include "DesktopLockers.moc"
