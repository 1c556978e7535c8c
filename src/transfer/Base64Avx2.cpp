#include "transfer/Base64Avx2.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>

namespace brenvale {

namespace {

// A 128-bit lane holds 16 characters, which are 12 bytes: a lane is stored or loaded whole, so four bytes
// more than it is about. The next lane overwrites them, and behind the last lane there must be room for them.
constexpr std::ptrdiff_t charactersPerLane = 16;
constexpr std::ptrdiff_t bytesPerLane = 12;

[[gnu::target("avx2")]] inline __m256i bothLanes(__m128i lane) {
    return _mm256_broadcastsi128_si256(lane);
}

[[gnu::target("avx2")]] inline __m256i highNibbles(__m256i characters) {
    return _mm256_and_si256(_mm256_srli_epi32(characters, 4), _mm256_set1_epi8(0x0f));
}

/// A byte is not zero where the character is outside the alphabet.
///
/// The high nibble puts a character into a class, one bit each: 1 for 0x2_ ('+' and '/' only), 2 for 0x3_
/// (the digits), 4 for 0x4_ and 0x6_ (all letters but the first place), 8 for 0x5_ and 0x7_ (letters up to
/// 0x_a), 16 for the rest, which has no valid character. The low nibble names the classes in which it is
/// foreign.
[[gnu::target("avx2")]] inline __m256i foreignCharacters(__m256i characters) {
    const __m256i classes =
        bothLanes(_mm_setr_epi8(16, 16, 1, 2, 4, 8, 4, 8, 16, 16, 16, 16, 16, 16, 16, 16));
    const __m256i foreignIn = bothLanes(_mm_setr_epi8(16 + 1 + 4,     // 0
                                                      16 + 1,         // 1
                                                      16 + 1,         // 2
                                                      16 + 1,         // 3
                                                      16 + 1,         // 4
                                                      16 + 1,         // 5
                                                      16 + 1,         // 6
                                                      16 + 1,         // 7
                                                      16 + 1,         // 8
                                                      16 + 1,         // 9
                                                      16 + 1 + 2,     // a
                                                      16 + 2 + 8,     // b
                                                      16 + 1 + 2 + 8, // c
                                                      16 + 1 + 2 + 8, // d
                                                      16 + 1 + 2 + 8, // e
                                                      16 + 2 + 8));   // f
    const __m256i lowNibbles = _mm256_and_si256(characters, _mm256_set1_epi8(0x0f));
    return _mm256_and_si256(_mm256_shuffle_epi8(foreignIn, lowNibbles),
                            _mm256_shuffle_epi8(classes, highNibbles(characters)));
}

/// The six bits that each character stands for. The distance between the two depends on the high nibble
/// alone, except that '/' differs from '+': it takes the unused place before.
[[gnu::target("avx2")]] inline __m256i sixBits(__m256i characters) {
    const __m256i distances = bothLanes(_mm_setr_epi8(0, 63 - '/', 62 - '+', 52 - '0', 0 - 'A', 0 - 'A',
                                                      26 - 'a', 26 - 'a', 0, 0, 0, 0, 0, 0, 0, 0));
    const __m256i isSlash = _mm256_cmpeq_epi8(characters, _mm256_set1_epi8('/'));
    const __m256i places = _mm256_add_epi8(highNibbles(characters), isSlash);
    return _mm256_add_epi8(characters, _mm256_shuffle_epi8(distances, places));
}

/// Four times six bits to three bytes, twelve bytes at the start of each lane.
[[gnu::target("avx2")]] inline __m256i packed(__m256i sixBits) {
    // Neighbours to 12 bits: the first of a pair times 64 plus the second. Then those to 24 bits.
    const __m256i pairs = _mm256_maddubs_epi16(sixBits, _mm256_set1_epi16(0x0140));
    const __m256i groups = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
    return _mm256_shuffle_epi8(
        groups, bothLanes(_mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1)));
}

[[gnu::target("avx2")]] inline void storeLanes(__m256i bytes, char* out) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(bytes));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + bytesPerLane), _mm256_extracti128_si256(bytes, 1));
}

/// The first 24 bytes, twelve in each lane, spread to six bits in each byte.
[[gnu::target("avx2")]] inline __m256i unpacked(const unsigned char* in) {
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + bytesPerLane));
    // Each group of bytes abc becomes the 16-bit numbers ab and bc. The first holds the six bits of
    // characters 0 and 1, the second those of 2 and 3; a multiplication shifts each of the two numbers by its
    // own count.
    const __m256i numbers =
        _mm256_shuffle_epi8(_mm256_set_m128i(high, low),
                            bothLanes(_mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10)));
    const __m256i even = _mm256_mulhi_epu16(_mm256_and_si256(numbers, _mm256_set1_epi32(0x0fc0fc00)),
                                            _mm256_set1_epi32(0x04000040));
    const __m256i odd = _mm256_mullo_epi16(_mm256_and_si256(numbers, _mm256_set1_epi32(0x003f03f0)),
                                           _mm256_set1_epi32(0x01000010));
    return _mm256_or_si256(even, odd);
}

/// The characters of the alphabet for six bits in each byte.
[[gnu::target("avx2")]] inline __m256i alphabetCharacters(__m256i sixBits) {
    // Places: 0 the lower case, 1 to 10 the digits, 11 '+', 12 '/', 13 the upper case.
    constexpr char digit = '0' - 52;
    const __m256i distances =
        bothLanes(_mm_setr_epi8('a' - 26, digit, digit, digit, digit, digit, digit, digit, digit, digit,
                                digit, '+' - 62, '/' - 63, 'A', 0, 0));
    const __m256i isUpper = _mm256_cmpgt_epi8(_mm256_set1_epi8(26), sixBits);
    const __m256i places = _mm256_or_si256(_mm256_subs_epu8(sixBits, _mm256_set1_epi8(51)),
                                           _mm256_and_si256(isUpper, _mm256_set1_epi8(13)));
    return _mm256_add_epi8(sixBits, _mm256_shuffle_epi8(distances, places));
}

} // namespace

bool hasBase64Avx2() {
    return __builtin_cpu_supports("avx2");
}

[[gnu::target("avx2")]] void decodeBase64RunAvx2(Base64Cursor& cursor) {
    constexpr std::ptrdiff_t characters = 2 * charactersPerLane;
    constexpr std::ptrdiff_t margin = 8; // two more groups: in their room lie the four bytes too many
    const unsigned char* in = cursor.in;
    char* out = cursor.out;
    while (cursor.end - in >= characters + margin) {
        const __m256i block = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
        const __m256i foreign = foreignCharacters(block);
        storeLanes(packed(sixBits(block)), out);
        if (_mm256_testz_si256(foreign, foreign) == 0) {
            const __m256i isClean = _mm256_cmpeq_epi8(foreign, _mm256_setzero_si256());
            const auto clean = static_cast<std::uint32_t>(_mm256_movemask_epi8(isClean));
            const std::ptrdiff_t groups = std::countr_one(clean) / 4;
            in += groups * 4;
            out += groups * 3;
            break;
        }
        in += characters;
        out += 2 * bytesPerLane;
    }
    cursor.in = in;
    cursor.out = out;
}

[[gnu::target("avx2")]] void encodeBase64RunAvx2(Base64Cursor& cursor) {
    constexpr std::ptrdiff_t bytes = 2 * bytesPerLane;
    constexpr std::ptrdiff_t margin = charactersPerLane - bytesPerLane; // the last lane is loaded whole
    const unsigned char* in = cursor.in;
    char* out = cursor.out;
    while (cursor.end - in >= bytes + margin) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), alphabetCharacters(unpacked(in)));
        in += bytes;
        out += 2 * charactersPerLane;
    }
    cursor.in = in;
    cursor.out = out;
}

} // namespace brenvale

#else

namespace brenvale {

bool hasBase64Avx2() {
    return false;
}

void decodeBase64RunAvx2(Base64Cursor&) {}
void encodeBase64RunAvx2(Base64Cursor&) {}

} // namespace brenvale

#endif
