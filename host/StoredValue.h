#pragma once
// How the stand-in host reads and writes its own values (variables, actions): any text
// type reads as its text without the terminator, a REG_DWORD as its number.
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "common/Utf.h"
#include "common/Variant.h"
#include "engine/PieceCut.h"
#include "engine/VariablesService.h"
#include "store/Registry.h"

namespace nv {

// A text value goes through `scanner`, when given, piece by piece as it is read.
std::optional<Variant> ReadStoredValue(Registry& registry, RegKey key, TextView name, PieceScanner* scanner = nullptr);
// A long text value (of kPartlyReadBytes or more) read through `scanner` in pieces, none
// of them kept, then only in the stretches that `select` names. Nothing when the value is
// another or the registry cannot read values so. A scanner told to stop after some
// separators ends the reading there: the text is then the part read, up to that point.
inline constexpr std::uint32_t kPartlyReadBytes = 1 << 20;
std::optional<PartlyReadText> ReadStoredTextPartly(Registry& registry, RegKey key, TextView name,
                                                   PieceScanner& scanner, const StretchSelector& select);

// Where a value goes when it is written out as UTF-8 in pieces.
class Utf8Output {
 public:
  // Called once the value is found, first with nothing, then with each piece in order.
  virtual void Write(std::string_view bytes) = 0;

 protected:
  ~Utf8Output() = default;
};
// How units become UTF-8 bytes, appended to `out`: as they are, or escaped for some syntax.
// Each call has whole characters (a surrogate pair is never cut in two).
using Utf8Encoder = void (*)(TextView units, std::string& out);

// The value as ReadStoredValue gives it, written to `out` as UTF-8 (as `encode` writes it)
// while it is read, never held whole: a text without its terminator, a REG_DWORD as its
// number. A failure after the first Write leaves the pieces before it written.
RegStatus WriteStoredValueAsUtf8(Registry& registry, RegKey key, TextView name, Utf8Output& out,
                                 Utf8Encoder encode = &AppendUtf8);

RegStatus WriteStoredText(Registry& registry, RegKey key, TextView name, TextView value);

// Takes a text a piece at a time, in order.
using TextPieceSink = std::function<void(TextView piece)>;
// Makes a text, giving it to the sink in pieces as it goes.
using TextMaker = std::function<void(const TextPieceSink& sink)>;
// A text of `units` units that `make` gives in pieces, stored as WriteStoredText stores it
// without ever being whole in memory where the registry writes in pieces. Pieces that do
// not come to `units` units are InvalidParameter, and nothing is written.
RegStatus WriteStoredTextMade(Registry& registry, RegKey key, TextView name, std::size_t units, const TextMaker& make);
RegStatus WriteStoredNumber(Registry& registry, RegKey key, TextView name, std::uint32_t value);

}  // namespace nv
