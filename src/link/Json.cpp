#include "link/Json.h"

#include "link/JsonRepair.h"
#include "link/MessageBuffer.h"

#include <QJsonDocument>

#include <algorithm>
#include <array>
#include <cmath>

namespace brenvale {

namespace {

/// Up to this size messages share one parser, whose memory grows to a multiple of the largest.
constexpr std::size_t sharedParserLimit = std::size_t{2} << 20;

std::expected<JsonDocument, simdjson::error_code> parseOnce(simdjson::dom::parser& shared,
                                                            const MessageBuffer& text) {
    auto own = text.size() > sharedParserLimit ? std::make_unique<simdjson::dom::parser>() : nullptr;
    auto& parser = own ? *own : shared;
    simdjson::dom::element root;
    const auto bytes = text.text();
    if (const auto error = parser.parse(bytes.data(), bytes.size(), false).get(root)) {
        return std::unexpected(error);
    }
    return JsonDocument(root, std::move(own));
}

/// Whether it may be a number or a string that was refused: how that is called differs between the parser's
/// versions, while these errors are of something else in all of them.
bool mayBeRepaired(simdjson::error_code error) {
    static constexpr std::array others{
        simdjson::CAPACITY,     simdjson::MEMALLOC,        simdjson::TAPE_ERROR,     simdjson::DEPTH_ERROR,
        simdjson::T_ATOM_ERROR, simdjson::F_ATOM_ERROR,    simdjson::N_ATOM_ERROR,   simdjson::UTF8_ERROR,
        simdjson::EMPTY,        simdjson::UNESCAPED_CHARS, simdjson::UNCLOSED_STRING};
    return std::ranges::find(others, error) == others.end();
}

} // namespace

std::optional<std::string_view> JsonValue::utf8() const {
    std::string_view text;
    return element_.get(text) ? std::nullopt : std::optional(text);
}

std::optional<QString> JsonValue::string() const {
    return utf8().transform([](std::string_view text) {
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    });
}

std::optional<bool> JsonValue::boolean() const {
    bool value = false;
    return element_.get(value) ? std::nullopt : std::optional(value);
}

std::optional<qint64> JsonValue::integer() const {
    if (element_.is_int64()) {
        return element_.get_int64().value_unsafe();
    }
    if (!element_.is_double()) {
        return {};
    }
    constexpr double limit = 9223372036854775808.0; // 2 to the power of 63, a double itself
    const double value = element_.get_double().value_unsafe();
    const bool fits = value >= -limit && value < limit && std::trunc(value) == value;
    return fits ? std::optional(static_cast<qint64>(value)) : std::nullopt;
}

std::optional<double> JsonValue::number() const {
    const auto any = anyNumber();
    const auto* value = any ? std::get_if<double>(&*any) : nullptr;
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

std::optional<JsonNumber> JsonValue::anyNumber() const {
    double value = 0;
    if (element_.get(value)) {
        return {};
    }
    if (isOutOfRangeMark(value)) {
        return value > 0 ? OutOfRange::tooHigh : OutOfRange::tooLow;
    }
    return value;
}

std::optional<JsonObject> JsonValue::object() const {
    simdjson::dom::object object;
    return element_.get(object) ? std::nullopt : std::optional(JsonObject(object));
}

std::optional<simdjson::dom::array> JsonValue::array() const {
    simdjson::dom::array array;
    return element_.get(array) ? std::nullopt : std::optional(array);
}

std::optional<JsonValue> JsonObject::value(std::string_view key) const {
    simdjson::dom::element element;
    return object_.at_key(key).get(element) ? std::nullopt : std::optional(JsonValue(element));
}

std::optional<std::string_view> JsonObject::utf8(std::string_view key) const {
    const auto member = value(key);
    return member ? member->utf8() : std::nullopt;
}

std::optional<QString> JsonObject::string(std::string_view key) const {
    const auto member = value(key);
    return member ? member->string() : std::nullopt;
}

std::optional<qint64> JsonObject::integer(std::string_view key) const {
    const auto member = value(key);
    return member ? member->integer() : std::nullopt;
}

std::optional<bool> JsonObject::boolean(std::string_view key) const {
    const auto member = value(key);
    return member ? member->boolean() : std::nullopt;
}

std::expected<JsonDocument, QByteArray> JsonReader::parse(const MessageBuffer& text) {
    if (text.text().starts_with("\xef\xbb\xbf")) {
        return std::unexpected(
            QByteArray("A byte order mark is no JSON")); // some versions of the parser skip it
    }
    auto document = parseOnce(parser_, text);
    if (!document && mayBeRepaired(document.error())) {
        document = parseOnce(parser_, repairJson(text.text()));
    }
    if (!document) {
        QByteArray reason(simdjson::error_message(document.error()));
        while (reason.endsWith('.')) {
            reason.chop(1); // the log's own sentence goes on
        }
        return std::unexpected(reason);
    }
    return std::move(*document);
}

QByteArray writeJson(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace brenvale
