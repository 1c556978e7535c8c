#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <simdjson.h>

#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string_view>
#include <variant>

namespace brenvale {

class JsonObject;
class MessageBuffer;

/// What a number is that fits no double.
enum class OutOfRange : std::uint8_t { tooHigh, tooLow };

using JsonNumber = std::variant<double, OutOfRange>;

/// One value of a parsed message, a view that holds for as long as its JsonDocument. The typed reads give
/// nothing where the value is of another type: types are JSON's own, so a Boolean is no number and a number
/// no string.
class JsonValue {
public:
    explicit JsonValue(simdjson::dom::element element) : element_(element) {}

    [[nodiscard]] bool isNull() const { return element_.is_null(); }
    [[nodiscard]] std::optional<std::string_view> utf8() const; ///< a string without a copy
    [[nodiscard]] std::optional<QString> string() const;
    [[nodiscard]] std::optional<bool> boolean() const;

    /// A number without a fraction that fits 64 bits, however it is written: 12, 12.0 and 1e3 are integers.
    [[nodiscard]] std::optional<qint64> integer() const;

    /// A number that fits a double.
    [[nodiscard]] std::optional<double> number() const;

    /// Any number.
    [[nodiscard]] std::optional<JsonNumber> anyNumber() const;

    [[nodiscard]] std::optional<JsonObject> object() const;
    [[nodiscard]] std::optional<simdjson::dom::array> array() const;

private:
    simdjson::dom::element element_;
};

/// An object of a parsed message, a view like JsonValue. Of members with the same key the first one counts.
class JsonObject {
public:
    explicit JsonObject(simdjson::dom::object object) : object_(object) {}

    [[nodiscard]] bool contains(std::string_view key) const { return value(key).has_value(); }

    /// The member, JSON null included; nothing where it is absent.
    [[nodiscard]] std::optional<JsonValue> value(std::string_view key) const;

    /// Typed reads of a member: nothing where it is absent, null or of another type.
    [[nodiscard]] std::optional<std::string_view> utf8(std::string_view key) const;
    [[nodiscard]] std::optional<QString> string(std::string_view key) const;
    [[nodiscard]] std::optional<qint64> integer(std::string_view key) const;
    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const;

private:
    simdjson::dom::object object_;
};

/// A parsed message: any JSON value at the top level.
class JsonDocument {
public:
    JsonDocument(simdjson::dom::element root, std::unique_ptr<simdjson::dom::parser> parser)
        : root_(root), parser_(std::move(parser)) {}

    [[nodiscard]] JsonValue root() const { return JsonValue(root_); }

private:
    simdjson::dom::element root_;
    std::unique_ptr<simdjson::dom::parser> parser_; ///< null while the reader's own serves
};

/// Parses messages one after another. Small ones share the reader's memory, so a document holds only until
/// the next parse; a large one brings memory of its own and gives it back. One thread.
class JsonReader {
public:
    /// The document of `text`, or why it is not JSON.
    [[nodiscard]] std::expected<JsonDocument, QByteArray> parse(const MessageBuffer& text);

private:
    simdjson::dom::parser parser_;
};

/// `object` as compact JSON text, the one way in which messages with free text are written.
[[nodiscard]] QByteArray writeJson(const QJsonObject& object);

} // namespace brenvale
