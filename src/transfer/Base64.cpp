#include "transfer/Base64.h"

#include "transfer/Base64Avx2.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace brenvale {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// What a byte of a text stands for: six bits, or one of these.
constexpr std::uint8_t foreignByte = 64;
constexpr std::uint8_t padByte = 65;

constexpr auto meanings = [] {
    std::array<std::uint8_t, 256> table{};
    table.fill(foreignByte);
    table['='] = padByte;
    for (std::size_t bits = 0; bits < alphabet.size(); ++bits) {
        table[static_cast<unsigned char>(alphabet[bits])] = static_cast<std::uint8_t>(bits);
    }
    return table;
}();

/// By how much to shift a byte so that it becomes the `index`-th in the memory of a 32-bit number.
constexpr unsigned shiftToByte(unsigned index) {
    return std::endian::native == std::endian::little ? 8 * index : 24 - (8 * index);
}

/// The fourth byte of a group, which no character of the alphabet contributes to.
constexpr std::uint32_t irregular = std::uint32_t{1} << shiftToByte(3);

using GroupTable = std::array<std::uint32_t, 256>;

/// For each of the four characters of a group, what it contributes to the three decoded bytes as they lie in
/// memory: one "or" of four numbers decodes a group, and `irregular` shows whether it was one.
constexpr auto contributions = [] {
    std::array<GroupTable, 4> tables{};
    for (unsigned place = 0; place < 4; ++place) {
        for (unsigned byte = 0; byte < 256; ++byte) {
            const std::uint32_t group = std::uint32_t{meanings[byte]} << (18 - 6 * place);
            tables[place][byte] = meanings[byte] >= foreignByte ? irregular
                                                                : (group >> 16 & 0xff) << shiftToByte(0) |
                                                                      (group >> 8 & 0xff) << shiftToByte(1) |
                                                                      (group & 0xff) << shiftToByte(2);
        }
    }
    return tables;
}();

inline std::uint32_t decodedGroup(const unsigned char* in) {
    return contributions[0][in[0]] | contributions[1][in[1]] | contributions[2][in[2]] |
           contributions[3][in[3]];
}

/// Like decodeBase64RunAvx2, for every processor.
void decodeRunScalar(Base64Cursor& cursor) {
    constexpr std::size_t margin = 4; // one more group: a group is stored with a fourth byte
    const unsigned char* in = cursor.in;
    char* out = cursor.out;
    while (static_cast<std::size_t>(cursor.end - in) >= 8 + margin) {
        const std::uint32_t first = decodedGroup(in);
        const std::uint32_t second = decodedGroup(in + 4);
        if (((first | second) & irregular) != 0) {
            break;
        }
        std::memcpy(out, &first, 4);
        std::memcpy(out + 3, &second, 4);
        in += 8;
        out += 6;
    }
    cursor.in = in;
    cursor.out = out;
}

/// A group of four characters that is not complete yet.
struct PartialGroup {
    std::uint32_t bits = 0;
    int characters = 0;
};

/// Writes the whole bytes of a group of two, three or four characters.
void storeGroup(const PartialGroup& group, char*& out) {
    const std::uint32_t bits = group.bits << (24 - 6 * group.characters);
    for (int byte = 0; byte < group.characters - 1; ++byte) {
        *out++ = static_cast<char>(bits >> (16 - 8 * byte) & 0xff);
    }
}

void skipForeignBytes(Base64Cursor& cursor) {
    while (cursor.in != cursor.end && meanings[*cursor.in] == foreignByte) {
        ++cursor.in;
    }
}

/// Decodes the next group across the foreign bytes between its characters. Where a '=' or the end comes
/// first, gives what there was of the group.
std::optional<PartialGroup> decodeIrregularGroup(Base64Cursor& cursor) {
    PartialGroup group;
    while (group.characters < 4) {
        skipForeignBytes(cursor);
        if (cursor.in == cursor.end || *cursor.in == '=') {
            return group;
        }
        group.bits = group.bits << 6 | meanings[*cursor.in++];
        ++group.characters;
    }
    storeGroup(group, cursor.out);
    return std::nullopt;
}

/// Whether from here on there are only '=' and foreign bytes, and as many '=' as make the text complete.
bool endsWell(Base64Cursor cursor, const PartialGroup& lastGroup) {
    auto count = static_cast<std::size_t>(lastGroup.characters);
    for (skipForeignBytes(cursor); cursor.in != cursor.end; skipForeignBytes(cursor)) {
        if (*cursor.in++ != '=') {
            return false;
        }
        ++count;
    }
    return count % 4 == 0;
}

constexpr std::size_t pairCount = 4096;

/// The two characters for each twelve bits.
constexpr auto characterPairs = [] {
    std::array<std::array<char, 2>, pairCount> table{};
    for (std::size_t bits = 0; bits < pairCount; ++bits) {
        table[bits] = {alphabet[bits / 64], alphabet[bits % 64]};
    }
    return table;
}();

inline void storePair(std::uint64_t bits, char* out) {
    std::memcpy(out, characterPairs[bits % pairCount].data(), 2);
}

/// The eight bytes as a number, the first of them in its highest bits.
inline std::uint64_t eightBytes(const unsigned char* in) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, in, sizeof bits);
    return std::endian::native == std::endian::little ? std::byteswap(bits) : bits;
}

/// Like encodeBase64RunAvx2, for every processor.
void encodeRunScalar(Base64Cursor& cursor) {
    const unsigned char* in = cursor.in;
    char* out = cursor.out;
    for (; cursor.end - in >= 8; in += 6, out += 8) {
        const std::uint64_t bits = eightBytes(in);
        storePair(bits >> 52, out);
        storePair(bits >> 40, out + 2);
        storePair(bits >> 28, out + 4);
        storePair(bits >> 16, out + 6);
    }
    cursor.in = in;
    cursor.out = out;
}

/// Encodes the next three bytes, or the last ones with padding.
void encodeGroup(Base64Cursor& cursor) {
    const auto byteCount = std::min<std::ptrdiff_t>(cursor.end - cursor.in, 3);
    std::uint32_t bits = 0;
    for (std::ptrdiff_t byte = 0; byte < 3; ++byte) {
        bits = bits << 8 | (byte < byteCount ? *cursor.in++ : 0U);
    }
    storePair(bits >> 12, cursor.out);
    storePair(bits, cursor.out + 2);
    std::fill(cursor.out + byteCount + 1, cursor.out + 4, '=');
    cursor.out += 4;
}

} // namespace

Base64Way fastestBase64Way() {
    return hasBase64Avx2() ? Base64Way::avx2 : Base64Way::scalar;
}

std::optional<std::size_t> decodeBase64(std::string_view text, char* out, Base64Way way) {
    const auto* begin = reinterpret_cast<const unsigned char*>(text.data());
    Base64Cursor cursor{.in = begin, .end = begin + text.size(), .out = out};
    const auto decodeRun = way == Base64Way::avx2 ? decodeBase64RunAvx2 : decodeRunScalar;
    std::optional<PartialGroup> lastGroup;
    while (!lastGroup) {
        // What stops a run is mostly a line end, so between groups: no need for the slow step then.
        decodeRun(cursor);
        const auto* stopped = cursor.in;
        skipForeignBytes(cursor);
        if (cursor.in == stopped || cursor.in == cursor.end) {
            lastGroup = decodeIrregularGroup(cursor);
        }
    }
    if (!endsWell(cursor, *lastGroup)) {
        return std::nullopt;
    }
    storeGroup(*lastGroup, cursor.out);
    return static_cast<std::size_t>(cursor.out - out);
}

std::optional<QByteArrayView> Base64Decoder::decode(std::string_view text) {
    if (const std::size_t needed = base64DecodedCapacity(text.size()); needed > capacity_) {
        release();
        bytes_ = std::make_unique_for_overwrite<char[]>(needed);
        capacity_ = needed;
    }
    const auto size = decodeBase64(text, bytes_.get());
    if (!size) {
        return std::nullopt;
    }
    return QByteArrayView(bytes_.get(), static_cast<qsizetype>(*size));
}

void Base64Decoder::release() {
    bytes_.reset();
    capacity_ = 0;
}

char* encodeBase64(QByteArrayView bytes, char* out, Base64Way way) {
    const auto* begin = reinterpret_cast<const unsigned char*>(bytes.data());
    Base64Cursor cursor{.in = begin, .end = begin + bytes.size(), .out = out};
    if (way == Base64Way::avx2) {
        encodeBase64RunAvx2(cursor);
    } else {
        encodeRunScalar(cursor);
    }
    while (cursor.in != cursor.end) {
        encodeGroup(cursor);
    }
    return cursor.out;
}

void appendBase64(QByteArrayView bytes, QByteArray& text) {
    const qsizetype start = text.size();
    text.resize(start + static_cast<qsizetype>(base64EncodedSize(static_cast<std::size_t>(bytes.size()))));
    encodeBase64(bytes, text.data() + start);
}

} // namespace brenvale
