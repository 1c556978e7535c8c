#include "link/AccessRules.h"

#include <QRegularExpression>

#include <boost/asio/ip/address.hpp>

#include <algorithm>

namespace brenvale {

namespace {

namespace ip = boost::asio::ip;

constexpr unsigned mappedPrefix = 96; ///< the bits that IPv6 sets before an IPv4 address

std::optional<ip::address> parseAddress(std::string_view text) {
    boost::system::error_code error;
    const auto address = ip::make_address(std::string(text), error);
    return error ? std::nullopt : std::optional(address);
}

ip::address_v6 asV6(const ip::address& address) {
    return address.is_v4() ? ip::make_address_v6(ip::v4_mapped, address.to_v4()) : address.to_v6();
}

std::optional<AccessNetwork> parseNetwork(const QString& text) {
    const auto slash = text.indexOf(u'/');
    const auto host = text.left(slash).toStdString();
    const auto address = parseAddress(host);
    if (!address || host.find('%') != std::string::npos) { // a network has no zone
        return {};
    }
    const unsigned bits = address->is_v4() ? 32 : 128;
    unsigned prefix = bits;
    if (slash >= 0) {
        static const QRegularExpression digits(QStringLiteral("^[0-9]{1,3}$"));
        const auto length = text.mid(slash + 1);
        prefix = length.toUInt();
        if (!digits.match(length).hasMatch() || prefix > bits) {
            return {};
        }
    }
    return AccessNetwork{.address = asV6(*address), .prefix = prefix + (address->is_v4() ? mappedPrefix : 0)};
}

bool contains(const AccessNetwork& network, const ip::address_v6& address) {
    if (address.is_v4_mapped() && network.prefix < mappedPrefix) {
        return false; // "::/0" is all of IPv6, not all there is
    }
    const auto wanted = network.address.to_bytes();
    const auto bytes = address.to_bytes();
    const auto whole = network.prefix / 8;
    if (!std::equal(bytes.begin(), bytes.begin() + whole, wanted.begin())) {
        return false;
    }
    const auto rest = network.prefix % 8;
    return rest == 0 || ((bytes.at(whole) ^ wanted.at(whole)) >> (8 - rest)) == 0;
}

std::expected<std::vector<AccessNetwork>, QString> parseNetworks(const QString& text) {
    static const QRegularExpression separators(QStringLiteral("[\\s,]+"));
    std::vector<AccessNetwork> networks;
    for (const auto& word : text.split(separators, Qt::SkipEmptyParts)) {
        const auto network = parseNetwork(word);
        if (!network) {
            return std::unexpected(QStringLiteral("\"%1\" is no address and no network").arg(word));
        }
        networks.push_back(*network);
    }
    return networks;
}

std::expected<bool, QString> parseSwitch(const QString& text) {
    const auto word = text.trimmed().toLower();
    if (word != u"true" && word != u"false") {
        return std::unexpected(QStringLiteral("\"%1\" is neither true nor false").arg(text));
    }
    return word == u"true";
}

std::expected<void, QString> readKey(const QString& key, const QString& value, AccessRules& rules) {
    if (key == u"allow") {
        auto networks = parseNetworks(value);
        if (!networks) {
            return std::unexpected(networks.error());
        }
        rules.allow = *std::move(networks);
        return {};
    }
    if (key == u"remotecontrol") {
        const auto isOn = parseSwitch(value);
        if (!isOn) {
            return std::unexpected(isOn.error());
        }
        rules.remoteControl = *isOn;
        return {};
    }
    return std::unexpected(QStringLiteral("there is no such key"));
}

} // namespace

bool AccessRules::admits(std::string_view address) const {
    if (!allow) {
        return true;
    }
    const auto peer = parseAddress(address.substr(0, address.find('%')));
    return peer && std::ranges::any_of(*allow, [bytes = asV6(*peer)](const AccessNetwork& network) {
               return contains(network, bytes);
           });
}

std::expected<AccessRules, QString> parseAccessRules(const QMultiMap<QString, QString>& section) {
    AccessRules rules;
    QStringList seen;
    for (auto entry = section.begin(); entry != section.end(); ++entry) {
        const auto key = entry.key().toLower();
        const auto read = seen.contains(key) ? std::unexpected(QStringLiteral("it is there twice"))
                                             : readKey(key, entry.value(), rules);
        if (!read) {
            return std::unexpected(QStringLiteral("[Security] %1: %2").arg(entry.key(), read.error()));
        }
        seen.append(key);
    }
    return rules;
}

std::expected<AccessRules, QString> accessRulesOf(const SettingsSections& sections) {
    const QStringList rules{QStringLiteral("allow"), QStringLiteral("remoteControl")};
    QMultiMap<QString, QString> security;
    for (auto section = sections.begin(); section != sections.end(); ++section) {
        if (section.key().compare(u"Security", Qt::CaseInsensitive) == 0) {
            security.unite(section.value());
        } else if (std::ranges::any_of(section.value().uniqueKeys(), [&rules](const QString& key) {
                       return rules.contains(key, Qt::CaseInsensitive);
                   })) {
            return std::unexpected(QStringLiteral("access rules stand outside of [Security]"));
        }
    }
    return parseAccessRules(security);
}

} // namespace brenvale
