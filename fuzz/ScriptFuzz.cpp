#include "FuzzTarget.h"
#include "platform/Script.h"

#include <algorithm>

using namespace brenvale;

namespace {

const QString locationStart = QStringLiteral("open location \"");

/// The source that says what `script` says.
QString written(const Script& script) {
    struct Writer {
        QString operator()(const ChangeOutputVolume& change) const {
            require(change.difference == 5 || change.difference == -5, "the volume changes by one step");
            return QStringLiteral("set volume output volume (output volume of (get volume settings) %1 5)")
                .arg(QChar(change.difference > 0 ? u'+' : u'-'));
        }
        QString operator()(const OpenLocation& open) const {
            require(!open.location.isEmpty() && !open.location.contains(u'"'), "a location is whole");
            require(!open.location.contains(QChar(u'\0')) && open.location.isValidUtf16(),
                    "a program can be given the location");
            return locationStart + open.location + u'"';
        }
        QString operator()(const EmptyTrash&) const {
            return QStringLiteral("tell application \"Finder\" to empty trash");
        }
        QString operator()(const LockScreen&) const {
            return QStringLiteral("tell application \"System Events\" to lock screen");
        }
        QString operator()(const Sleep&) const {
            return QStringLiteral("tell application \"System Events\" to sleep");
        }
    };
    return std::visit(Writer{}, script);
}

/// Whatever is read was written in exactly one way; all else is refused with a reason.
void check(const QString& source) {
    const auto script = readScript(source);
    if (script) {
        require(written(*script) == source, "what a script does, its source says to the letter");
    } else {
        require(!script.error().isEmpty(), "a refusal has a reason");
    }
}

} // namespace

/// The input is a source in UTF-8, and the same bytes as UTF-16, broken pairs and all; and an address between
/// the quotes of a location.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = inputText(data, size);
    const auto text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    check(text);
    check(locationStart + text + u'"');
    QString units(static_cast<qsizetype>(size / sizeof(QChar)), Qt::Uninitialized);
    std::copy_n(data, static_cast<std::size_t>(units.size()) * sizeof(QChar),
                reinterpret_cast<std::uint8_t*>(units.data()));
    check(units);
    check(locationStart + units + u'"');
    return 0;
}
