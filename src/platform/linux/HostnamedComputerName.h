#pragma once

#include "platform/ComputerName.h"

#include <QObject>
#include <QVariantMap>

#include <mutex>

namespace brenvale {

/// The pretty host name that systemd-hostnamed (org.freedesktop.hostname1) keeps, else the plain host name.
/// It is asked for when this object is made and followed from then on; until the answer is there the host
/// name serves.
class HostnamedComputerName final : public QObject, public ComputerName {
    Q_OBJECT

public:
    HostnamedComputerName();

    [[nodiscard]] QString localizedName() const override;

private slots:
    void propertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated);

private:
    void ask();
    void setPrettyName(const QString& name);

    mutable std::mutex mutex_;
    QString prettyName_; ///< under `mutex_`
};

} // namespace brenvale
