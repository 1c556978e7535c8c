#include "platform/Script.h"

#include <array>
#include <string_view>

namespace brenvale {

namespace {

struct Form {
    std::u16string_view source;
    Script script;
};

const std::array forms{
    Form{u"set volume output volume (output volume of (get volume settings) + 5)", ChangeOutputVolume{+5}},
    Form{u"set volume output volume (output volume of (get volume settings) - 5)", ChangeOutputVolume{-5}},
    Form{uR"(tell application "Finder" to empty trash)", EmptyTrash{}},
    Form{uR"(tell application "System Events" to lock screen)", LockScreen{}},
    Form{uR"(tell application "System Events" to sleep)", Sleep{}},
};

constexpr QStringView locationStart = uR"(open location ")";
constexpr QChar quote = u'"';

std::expected<Script, QString> readLocation(QStringView rest) {
    const auto end = rest.indexOf(quote);
    if (end < 0) {
        return std::unexpected(QStringLiteral("The location has no end."));
    }
    if (end != rest.size() - 1) {
        return std::unexpected(QStringLiteral("The location ends early, at a quote in it."));
    }
    const auto location = rest.first(end);
    if (location.isEmpty()) {
        return std::unexpected(QStringLiteral("The location is empty."));
    }
    if (!location.isValidUtf16() || location.contains(QChar(u'\0'))) {
        return std::unexpected(QStringLiteral("The location has characters that no program can be given."));
    }
    return OpenLocation{location.toString()};
}

} // namespace

std::expected<Script, QString> readScript(const QString& source) {
    for (const auto& form : forms) {
        if (QStringView(form.source) == source) {
            return form.script;
        }
    }
    if (source.startsWith(locationStart)) {
        return readLocation(QStringView(source).sliced(locationStart.size()));
    }
    return std::unexpected(QStringLiteral("The script is not one of those that are known."));
}

} // namespace brenvale
