#include "transfer/Base64.h"
#include "transfer/PlainBase64.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace brenvale;

namespace {

constexpr std::string_view alphabet = base64Alphabet;
constexpr std::string_view canary = "nobody may write here";

using Decoded = std::optional<std::string>;

std::vector<Base64Way> ways() {
    std::vector<Base64Way> all{Base64Way::scalar};
    if (fastestBase64Way() != Base64Way::scalar) {
        all.push_back(fastestBase64Way());
    }
    return all;
}

/// Keeps the text in memory of exactly its size, so that the address sanitizer sees a read beyond it.
Decoded decodedIn(Base64Way way, std::string_view text) {
    const auto exact = std::make_unique_for_overwrite<char[]>(text.size());
    std::ranges::copy(text, exact.get());
    const std::size_t capacity = base64DecodedCapacity(text.size());
    const auto out = std::make_unique_for_overwrite<char[]>(capacity + canary.size());
    std::ranges::copy(canary, out.get() + capacity);

    const auto size = decodeBase64({exact.get(), text.size()}, out.get(), way);

    EXPECT_EQ(std::string_view(out.get() + capacity, canary.size()), canary) << text;
    return size ? Decoded(std::string(out.get(), *size)) : std::nullopt;
}

/// The result of all ways, which must be the same.
Decoded decoded(std::string_view text) {
    const Decoded expected = plainlyDecoded(text);
    for (const Base64Way way : ways()) {
        // Comparing strings by gtest's macro for each of a million texts would take longer than the rest.
        if (decodedIn(way, text) != expected) {
            ADD_FAILURE() << "way " << static_cast<int>(way) << ": " << testing::PrintToString(text);
        }
    }
    return expected;
}

std::string encodedIn(Base64Way way, QByteArrayView bytes) {
    const std::size_t size = base64EncodedSize(static_cast<std::size_t>(bytes.size()));
    const auto exact = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(bytes.size()));
    std::ranges::copy(bytes, exact.get());
    const auto out = std::make_unique_for_overwrite<char[]>(size + canary.size());
    std::ranges::copy(canary, out.get() + size);

    const char* end = encodeBase64({exact.get(), bytes.size()}, out.get(), way);

    EXPECT_EQ(static_cast<std::size_t>(end - out.get()), size);
    EXPECT_EQ(std::string_view(out.get() + size, canary.size()), canary);
    return {out.get(), size};
}

class Random {
public:
    std::size_t below(std::size_t bound) { return engine_() % bound; }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    char byte() { return static_cast<char>(below(256)); }
    char letter() { return alphabet[below(alphabet.size())]; }

    QByteArray bytes(std::size_t size) {
        QByteArray result(static_cast<qsizetype>(size), Qt::Uninitialized);
        std::ranges::generate(result, [this] { return byte(); });
        return result;
    }

private:
    std::minstd_rand engine_{20}; // NOLINT(cert-msc51-cpp): the same texts in every run
};

/// Mostly clean or mostly noise, whole or cut off, with its padding right, wrong or in the midst.
std::string randomText(Random& random, std::size_t characters) {
    static constexpr std::string_view likelyNoise("\r\n \t-_.\\\0\x7f\x80\xff", 12);
    static constexpr std::array<std::size_t, 5> noiseRates{2, 8, 80, 400,
                                                           std::numeric_limits<std::size_t>::max()};
    const std::size_t noiseRate = noiseRates[random.below(noiseRates.size())];
    std::string text;
    const auto add = [&](char character) {
        while (random.oneIn(noiseRate)) {
            const char noise =
                random.oneIn(2) ? likelyNoise[random.below(likelyNoise.size())] : random.byte();
            text += noise == '=' ? '~' : noise;
        }
        text += character;
    };
    for (std::size_t i = 0; i < characters; ++i) {
        add(random.letter());
    }
    const auto known = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char character) {
        return alphabet.find(character) != std::string_view::npos;
    }));
    const std::size_t missing = (4 - known % 4) % 4;
    const std::size_t pads = random.oneIn(4) ? random.below(9) : missing + (random.oneIn(8) ? 4 : 0);
    for (std::size_t i = 0; i < pads; ++i) {
        add('=');
    }
    if (!text.empty() && random.oneIn(8)) {
        text[random.below(text.size())] = random.oneIn(2) ? '=' : random.byte();
    }
    return text;
}

TEST(Base64Decoding, WholeGroups) {
    EXPECT_EQ(decoded(""), "");
    EXPECT_EQ(decoded("QUJD"), "ABC");
    EXPECT_EQ(decoded("QUJDREVG"), "ABCDEF");
    EXPECT_EQ(decoded("+/+/"), "\xfb\xff\xbf");
}

TEST(Base64Decoding, PaddedGroups) {
    EXPECT_EQ(decoded("QUI="), "AB");
    EXPECT_EQ(decoded("QQ=="), "A");
    EXPECT_EQ(decoded("QUJDQQ=="), "ABCA");
}

TEST(Base64Decoding, BitsBeyondTheLastByteAreDropped) {
    EXPECT_EQ(decoded("QR=="), "A");
    EXPECT_EQ(decoded("QUJ="), "AB");
}

TEST(Base64Decoding, PadsCountLikeCharacters) {
    EXPECT_EQ(decoded("A==="), "");
    EXPECT_EQ(decoded("===="), "");
    EXPECT_EQ(decoded("QUJD===="), "ABC");
    EXPECT_EQ(decoded("QQ======"), "A");
}

TEST(Base64Decoding, IncompleteTextIsRefused) {
    for (const char* text :
         {"Q", "QU", "QUJ", "QUJDR", "=", "==", "===", "Q=", "Q==", "QU=", "QUJD=", "QQ==="}) {
        EXPECT_EQ(decoded(text), std::nullopt) << text;
    }
}

TEST(Base64Decoding, AnAlphabetCharacterAfterAPadIsRefused) {
    for (const char* text : {"QQ==QUJD", "QU=I", "=QUJ", "====QUJD", "QQ=\n=Q", "QQ==\nQQ=="}) {
        EXPECT_EQ(decoded(text), std::nullopt) << text;
    }
}

TEST(Base64Decoding, ForeignBytesAreSkippedAnywhere) {
    using namespace std::string_view_literals;
    EXPECT_EQ(decoded("\r\n Q\0U-J_D\x80\xff.\n"sv), "ABC");
    EXPECT_EQ(decoded("Q Q = \n ="), "A");
    EXPECT_EQ(decoded("\\/\\/\\/\\/"), "\xff\xff\xff");
    EXPECT_EQ(decoded(" \n\0"sv), "");
}

TEST(Base64Decoding, EveryByteAtEveryPlaceOfALongText) {
    for (std::size_t place = 0; place < 100; ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string text(100, 'x');
            text[place] = static_cast<char>(byte);
            decoded(text);
            decoded(text + '=');
        }
    }
}

TEST(Base64Decoding, LinesOfEveryLength) {
    Random random;
    for (qsizetype lineLength = 1; lineLength <= 130; ++lineLength) {
        const QByteArray bytes = random.bytes(1000);
        QByteArray text = bytes.toBase64();
        for (qsizetype end = lineLength; end < text.size(); end += lineLength + 2) {
            text.insert(end, "\r\n");
        }
        EXPECT_EQ(decoded({text.constData(), static_cast<std::size_t>(text.size())}), bytes.toStdString());
    }
}

TEST(Base64Decoding, AMillionRandomTextsAsByThePlainRules) {
    Random random;
    int valid = 0;
    for (int i = 0; i < 1'000'000 && !HasFailure(); ++i) {
        const std::size_t characters = random.oneIn(4) ? random.below(301) : random.below(60);
        valid += decoded(randomText(random, characters)).has_value() ? 1 : 0;
    }
    EXPECT_GT(valid, 300'000);
    EXPECT_LT(valid, 800'000);
}

TEST(Base64Decoding, LongRandomTextsAsByThePlainRules) {
    Random random;
    for (int i = 0; i < 200 && !HasFailure(); ++i) {
        decoded(randomText(random, random.below(20'000)));
    }
}

TEST(Base64Decoder, KeepsItsMemoryForTextsThatFit) {
    Base64Decoder decoder;
    const auto first = decoder.decode("QUJDREVG");
    ASSERT_EQ(first, QByteArrayView("ABCDEF"));
    const auto* memory = first->data();
    EXPECT_EQ(decoder.decode("QUI=")->data(), memory);
    EXPECT_EQ(decoder.decode("R0hJSktM"), QByteArrayView("GHIJKL"));
    EXPECT_EQ(decoder.decode("TU5P")->data(), memory);
}

TEST(Base64Decoder, GrowsForALongerText) {
    Base64Decoder decoder;
    EXPECT_EQ(decoder.decode("QUJD"), QByteArrayView("ABC"));
    const QByteArray bytes = Random().bytes(100'000);
    const std::string text = bytes.toBase64().toStdString();
    EXPECT_EQ(decoder.decode(text), QByteArrayView(bytes));
}

TEST(Base64Decoder, ARefusedTextDoesNotHinderTheNext) {
    Base64Decoder decoder;
    EXPECT_EQ(decoder.decode("QUJDR"), std::nullopt);
    EXPECT_EQ(decoder.decode("QUJD"), QByteArrayView("ABC"));
}

TEST(Base64Decoder, AnEmptyTextIsNoBytesRatherThanNothing) {
    Base64Decoder decoder;
    const auto bytes = decoder.decode("");
    ASSERT_TRUE(bytes.has_value());
    EXPECT_TRUE(bytes->isEmpty());
}

TEST(Base64Decoder, DecodesAfterItsMemoryWasReleased) {
    Base64Decoder decoder;
    EXPECT_EQ(decoder.decode("QUJD"), QByteArrayView("ABC"));
    decoder.release();
    EXPECT_EQ(decoder.decode("REVG"), QByteArrayView("DEF"));
}

TEST(Base64Encoding, EveryLengthAsQtDoes) {
    Random random;
    for (std::size_t size = 0; size <= 300; ++size) {
        for (int i = 0; i < 20; ++i) {
            const QByteArray bytes = random.bytes(size);
            for (const Base64Way way : ways()) {
                EXPECT_EQ(encodedIn(way, bytes), bytes.toBase64().toStdString());
            }
        }
    }
}

TEST(Base64Encoding, LongRandomBytesAsQtDoes) {
    Random random;
    for (int i = 0; i < 20; ++i) {
        const QByteArray bytes = random.bytes(random.below(200'000));
        for (const Base64Way way : ways()) {
            EXPECT_TRUE(encodedIn(way, bytes) == bytes.toBase64().toStdString()) << bytes.size();
        }
    }
}

TEST(Base64Encoding, EveryGroupOfSixBitsAtEveryPlace) {
    for (int value = 0; value < 64; ++value) {
        for (qsizetype place = 0; place < 64; ++place) {
            QByteArray text(64, 'k');
            text[place] = alphabet[static_cast<std::size_t>(value)];
            for (const Base64Way way : ways()) {
                EXPECT_EQ(encodedIn(way, QByteArray::fromBase64(text)), text.toStdString());
            }
        }
    }
}

TEST(Base64Encoding, AppendsBehindWhatIsThere) {
    QByteArray text = R"({"fileData":")";
    appendBase64("ABCD", text);
    text += R"("})";
    EXPECT_EQ(text, R"({"fileData":"QUJDRA=="})");
}

TEST(Base64Encoding, AppendsIntoReservedMemory) {
    QByteArray text;
    text.reserve(2000);
    const auto* memory = text.constData();
    appendBase64(QByteArray(1000, 'x'), text);
    EXPECT_EQ(text.constData(), memory);
    EXPECT_EQ(text, QByteArray(1000, 'x').toBase64());
}

TEST(Base64Encoding, DoesNotChangeACopyOfTheText) {
    QByteArray text = "before";
    const QByteArray copy = text;
    appendBase64("ABC", text);
    EXPECT_EQ(copy, "before");
    EXPECT_EQ(text, "beforeQUJD");
}

TEST(Base64Encoding, SlashesStandBare) {
    QByteArray text;
    appendBase64("\xff\xff\xff", text);
    EXPECT_EQ(text, "////");
}

} // namespace
