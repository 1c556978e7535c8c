#pragma once

#include "platform/UserDefaults.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <memory>
#include <mutex>
#include <optional>
#include <variant>

class QFileSystemWatcher;

namespace brenvale {

/// The settings in brenvale/brenvale.conf below the user's configuration folder (XDG base directory
/// specification), an INI file with the keys in [General].
class SettingsDefaults final : public UserDefaults {
public:
    SettingsDefaults();
    ~SettingsDefaults() override;
    SettingsDefaults(const SettingsDefaults&) = delete;
    SettingsDefaults& operator=(const SettingsDefaults&) = delete;

    [[nodiscard]] qint64 integer(QStringView key) const override;
    [[nodiscard]] bool contains(QStringView key) const override;
    [[nodiscard]] std::expected<SettingsSections, QString> sections() const override;
    void setInteger(QStringView key, qint64 value) override;
    [[nodiscard]] Subscription observe(std::function<void()> observer) override;

private:
    [[nodiscard]] std::optional<qint64> unwritten(QStringView key) const;
    void watch();

    mutable std::mutex mutex_;
    QHash<QString, qint64> unwritten_; ///< under `mutex_`; what no file would take
    Published<std::monostate> change_;
    std::unique_ptr<QFileSystemWatcher> watcher_; ///< once somebody observes
    std::optional<QByteArray> seenText_;          ///< of the file, when it was last told of
};

} // namespace brenvale
