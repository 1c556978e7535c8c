#pragma once

#include "platform/SettingsText.h"

#include <QMultiMap>
#include <QString>

#include <boost/asio/ip/address_v6.hpp>

#include <expected>
#include <optional>
#include <string_view>
#include <vector>

namespace brenvale {

/// The addresses that share their first `prefix` bits with `address`. One of IPv4 is kept as IPv6 maps it.
struct AccessNetwork {
    boost::asio::ip::address_v6 address;
    unsigned prefix = 128;
};

/// Who may connect, and what those who do may do. The default is everyone and everything.
struct AccessRules {
    std::optional<std::vector<AccessNetwork>> allow; ///< nothing is everyone, an empty list is nobody
    bool remoteControl = true;                       ///< whether remote commands are listened to

    /// Whether a peer of that address may connect: IPv4, or IPv6 with or without the zone behind a '%'. Pure.
    [[nodiscard]] bool admits(std::string_view address) const;

    /// The rules that let nobody in.
    [[nodiscard]] static AccessRules nobody() {
        return {.allow = std::vector<AccessNetwork>(), .remoteControl = false};
    }
};

/// The rules that the settings file's section [Security] has, by key: `allow` is a list of addresses and
/// networks ("192.168.1.0/24 fd00::/8"), set apart by blanks or commas, `remoteControl` is true or false; the
/// case of keys and words does not matter. A network of IPv6 is of IPv6 alone unless all of it is mapped
/// IPv4. The error says to people what cannot be read: rules that are half understood would let in whom they
/// are to keep out. Pure.
[[nodiscard]] std::expected<AccessRules, QString>
parseAccessRules(const QMultiMap<QString, QString>& section);

/// The same of all that is written: a rule that stands in another section is an error too. Pure.
[[nodiscard]] std::expected<AccessRules, QString> accessRulesOf(const SettingsSections& sections);

} // namespace brenvale
