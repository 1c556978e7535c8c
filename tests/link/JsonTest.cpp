#include "link/Json.h"
#include "link/MessageBuffer.h"

#include <gtest/gtest.h>

#include <string>

using namespace brenvale;

namespace {

/// Keeps text, reader and document together, as long as a test looks at them.
struct Parsed {
    explicit Parsed(std::string_view json) : text(json), document(reader.parse(text)) {}

    [[nodiscard]] JsonObject object() const { return *document->root().object(); }

    MessageBuffer text;
    JsonReader reader;
    std::expected<JsonDocument, QByteArray> document;
};

std::string nested(int depth) {
    return std::string(static_cast<std::size_t>(depth), '[') +
           std::string(static_cast<std::size_t>(depth), ']');
}

} // namespace

TEST(JsonReader, RefusesWhatIsNoJson) {
    for (const std::string_view text :
         {"", " ", "{", "{}x", "{} {}", R"({"a":1,})", "{'a':1}", "{a:1}", "nul", "01", "1.", "+1", "\"\t\"",
          R"("\x")", "[1 2]", "NaN", "\"open"}) {
        EXPECT_FALSE(Parsed(text).document.has_value()) << text;
    }
    EXPECT_FALSE(Parsed(std::string_view("{}\0", 3)).document.has_value()) << "a trailing NUL";
}

TEST(JsonReader, RefusesAByteOrderMark) {
    EXPECT_FALSE(Parsed("\xef\xbb\xbf{}").document.has_value());
}

TEST(JsonReader, RefusesInvalidUtf8) {
    for (const std::string_view text :
         {"\"\xff\"", "\"\xc0\x80\"", "\"\xed\xa0\x80\"", "\"\xf4\x90\x80\x80\""}) {
        EXPECT_FALSE(Parsed(text).document.has_value());
    }
}

TEST(JsonReader, SaysWhyWithoutAFullStop) {
    const Parsed parsed("{bad");
    EXPECT_FALSE(parsed.document.error().isEmpty());
    EXPECT_FALSE(parsed.document.error().endsWith('.'));
}

TEST(JsonReader, ReadsNestingUpTo1024) {
    EXPECT_TRUE(Parsed(nested(1024)).document.has_value());
    EXPECT_FALSE(Parsed(nested(1025)).document.has_value());
    EXPECT_FALSE(Parsed(nested(1'000'000)).document.has_value());
}

TEST(JsonReader, ReadsAnyValueAtTheTopLevel) {
    for (const std::string_view text : {"[]", "\"a\"", "1", "true", "null"}) {
        const Parsed parsed(text);
        ASSERT_TRUE(parsed.document.has_value()) << text;
        EXPECT_FALSE(parsed.document->root().object().has_value()) << text;
    }
}

TEST(JsonReader, GivesBackWhatALargeMessageNeeded) {
    JsonReader reader;
    const MessageBuffer large("[\"" + std::string(std::size_t{8} << 20, 'a') + "\"]");
    const MessageBuffer small("{\"a\":1}");
    EXPECT_TRUE(reader.parse(large).has_value());
    const auto document = reader.parse(small);
    EXPECT_EQ(document->root().object()->integer("a"), 1);
}

TEST(JsonObject, TheFirstOfEqualKeysCounts) {
    EXPECT_EQ(Parsed(R"({"a":1,"a":2})").object().integer("a"), 1);
}

TEST(JsonObject, AMemberThatIsNullIsThere) {
    const Parsed parsed(R"({"a":null})");
    EXPECT_TRUE(parsed.object().contains("a"));
    EXPECT_TRUE(parsed.object().value("a")->isNull());
    EXPECT_FALSE(parsed.object().contains("b"));
    EXPECT_FALSE(parsed.object().string("a").has_value());
}

TEST(JsonObject, KeysAreComparedUnescaped) {
    EXPECT_EQ(Parsed(R"({"\u0061":1})").object().integer("a"), 1);
}

TEST(JsonValue, TypesAreJsonsOwn) {
    const Parsed parsed(R"({"text":"1","number":1,"yes":true,"list":[],"object":{}})");
    const auto json = parsed.object();
    EXPECT_FALSE(json.integer("text").has_value());
    EXPECT_FALSE(json.boolean("text").has_value());
    EXPECT_FALSE(json.string("number").has_value());
    EXPECT_FALSE(json.boolean("number").has_value());
    EXPECT_FALSE(json.integer("yes").has_value());
    EXPECT_FALSE(json.value("yes")->number().has_value());
    EXPECT_FALSE(json.string("list").has_value());
    EXPECT_FALSE(json.string("object").has_value());
    EXPECT_EQ(json.boolean("yes"), true);
}

TEST(JsonValue, ANumberWithoutAFractionIsAnInteger) {
    const Parsed parsed(R"({"a":12,"b":12.0,"c":1e3,"d":-0.0,"e":1200e-2,"f":-9223372036854775808})");
    const auto json = parsed.object();
    EXPECT_EQ(json.integer("a"), 12);
    EXPECT_EQ(json.integer("b"), 12);
    EXPECT_EQ(json.integer("c"), 1000);
    EXPECT_EQ(json.integer("d"), 0);
    EXPECT_EQ(json.integer("e"), 12);
    EXPECT_EQ(json.integer("f"), std::numeric_limits<qint64>::min());
}

TEST(JsonValue, ANumberWithAFractionIsNoInteger) {
    const Parsed parsed(R"({"a":12.5,"b":1e-3})");
    EXPECT_FALSE(parsed.object().integer("a").has_value());
    EXPECT_FALSE(parsed.object().integer("b").has_value());
    EXPECT_EQ(parsed.object().value("a")->number(), 12.5);
}

TEST(JsonValue, AnIntegerBeyond64BitsIsANumberButNoInteger) {
    const Parsed parsed(
        R"({"a":9223372036854775808,"b":18446744073709551616,"c":-9223372036854775809,"d":1e19,
                            "e":123456789012345678901234567890})");
    ASSERT_TRUE(parsed.document.has_value());
    for (const std::string_view key : {"a", "b", "c", "d", "e"}) {
        EXPECT_FALSE(parsed.object().integer(key).has_value()) << key;
        EXPECT_TRUE(parsed.object().value(key)->number().has_value()) << key;
    }
    EXPECT_DOUBLE_EQ(*parsed.object().value("e")->number(), 123456789012345678901234567890.0);
}

TEST(JsonValue, ANumberBeyondADoubleIsReadButOutOfRange) {
    const Parsed parsed(R"({"a":1e400,"b":-1e400,"name":"kept"})");
    ASSERT_TRUE(parsed.document.has_value());
    EXPECT_FALSE(parsed.object().value("a")->number().has_value());
    EXPECT_FALSE(parsed.object().integer("a").has_value());
    EXPECT_FALSE(parsed.object().value("b")->number().has_value());
    EXPECT_EQ(parsed.object().value("a")->anyNumber(), JsonNumber(OutOfRange::tooHigh));
    EXPECT_EQ(parsed.object().value("b")->anyNumber(), JsonNumber(OutOfRange::tooLow));
    EXPECT_EQ(parsed.object().string("name"), QStringLiteral("kept"));
}

TEST(JsonValue, HalfASurrogatePairIsTheReplacementCharacter) {
    const Parsed parsed(R"({"a":"x\ud83d","b":"\udc00y","c":"\ud83d\ude00"})");
    ASSERT_TRUE(parsed.document.has_value());
    EXPECT_EQ(parsed.object().string("a"), QStringLiteral("x\uFFFD"));
    EXPECT_EQ(parsed.object().string("b"), QStringLiteral("\uFFFDy"));
    EXPECT_EQ(parsed.object().string("c"), QStringLiteral("😀"));
}

TEST(JsonValue, EscapesAndNulsAreRead) {
    EXPECT_EQ(Parsed(R"({"a":"\/\"\\\n\u0000é"})").object().string("a"),
              QStringLiteral("/\"\\\n") + QChar::Null + QStringLiteral("é"));
}

TEST(WriteJson, EscapesWhatMustBe) {
    const auto text = writeJson({{QStringLiteral("a"), QStringLiteral("\"\\\n\r\t\b\f\u0001/é😀")}});
    EXPECT_EQ(text, "{\"a\":\"\\\"\\\\\\n\\r\\t\\b\\f\\u0001/é😀\"}");
}
