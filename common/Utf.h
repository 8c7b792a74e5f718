#pragma once
// Conversions at the I/O edges only (argv, files, SQLite TEXT, terminal).
#include <string>
#include <string_view>

#include "common/Text.h"

namespace nv {

// UTF-16 to UTF-8. A lone surrogate is written as its own three-byte sequence so that
// names read back exactly (the registry allows any code unit).
std::string ToUtf8(TextView text);
// The same, appended to `out`. A surrogate pair split between two calls is written as two
// lone surrogates: a caller that converts a text in pieces keeps pairs in one piece.
void AppendUtf8(TextView text, std::string& out);

// UTF-8 to UTF-16; the three-byte form of a lone surrogate comes back as that unit, and
// any malformed byte becomes U+FFFD.
Text FromUtf8(std::string_view bytes);
// The same, appended to `out`: a caller that converts many names keeps one buffer.
void AppendFromUtf8(std::string_view bytes, Text& out);

// True when the bytes are well-formed UTF-8 (surrogate forms allowed, as written above).
bool IsUtf8(std::string_view bytes);
// How many bytes at the start are well-formed UTF-8: the offset of the first bad byte.
std::size_t Utf8ValidLength(std::string_view bytes);
// How many UTF-16 units well-formed UTF-8 bytes stand for, counted without converting them.
std::size_t Utf16Length(std::string_view utf8) noexcept;

// True when the bytes are UTF-8 as the standard defines it: no surrogate forms, no overlong
// forms, nothing above U+10FFFF. For text that comes from outside (files).
bool IsStandardUtf8(std::string_view bytes);

// Windows-1252, the ANSI code page of the host's French and English systems.
Text FromCp1252(std::string_view bytes);

}  // namespace nv
