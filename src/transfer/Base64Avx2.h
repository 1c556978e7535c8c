#pragma once

// The part of Base64.cpp that works on 32 characters at a time. Nothing else includes this.

namespace brenvale {

/// How far an encoding or decoding got: what is left to read, and where to write on.
struct Base64Cursor {
    const unsigned char* in;
    const unsigned char* end;
    char* out;
};

/// Whether the program was built with AVX2 code and runs on a processor that has it.
[[nodiscard]] bool hasBase64Avx2();

/// Decodes up to the first byte outside the alphabet, less the characters that do not make up a group of four
/// before it, or until near the end. Reads and writes within the bounds of decodeBase64 only.
void decodeBase64RunAvx2(Base64Cursor& cursor);

/// Encodes whole groups of three bytes until near the end.
void encodeBase64RunAvx2(Base64Cursor& cursor);

} // namespace brenvale
