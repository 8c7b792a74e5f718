#pragma once
// The pieces of one text for one separator, found once and shared by every field that an
// execution extracts from that text.
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "common/Text.h"

namespace nv {

class PieceScanner;

// Every piece of the text can be addressed.
inline constexpr std::size_t kEveryPiece = std::numeric_limits<std::size_t>::max();

// Pieces end just after each occurrence of the separator (left to right, no overlap) and
// keep it; the last piece is the rest of the text, possibly empty. The empty separator
// does not cut: the whole text is the one piece.
//
// With a `reach`, only the ends of the `reach` first and the `reach` last pieces are kept and
// the others are counted: a cut of a text of millions of lines then costs no memory per line
// when its fields can only name pieces near either end. A large text is scanned by several
// threads when the separator allows it.
//
// The cut holds views: the text and the separator must outlive it.
class PieceCut {
 public:
  // Fails with OutOfMemory on a text of 2^32 units or more.
  PieceCut(TextView text, TextView separator, std::size_t reach = kEveryPiece);
  // The cut of `text` with the scanner's separator and reach, from what the scanner found as
  // the text was read when it saw this very text whole, else scanned now.
  PieceCut(TextView text, PieceScanner&& scanner);

  TextView Whole() const noexcept { return text_; }
  TextView Separator() const noexcept { return separator_; }
  // Index of the last piece (the piece count less one).
  std::size_t LastIndex() const noexcept { return count_; }
  // Pieces `first` through `last` joined; requires first <= last <= LastIndex(), each of
  // them below the reach or within it of LastIndex().
  TextView Range(std::size_t first, std::size_t last) const noexcept;
  TextView Piece(std::size_t index) const noexcept { return Range(index, index); }

  // The ends of the separators found in one stretch of the text: all of them, or, with a
  // reach, the first and the last `reach` of them (the two overlap in a short stretch).
  // Offsets fit 32 bits: a text comes from a BSTR or a registry value, both under 4 GiB.
  struct Ends {
    std::size_t count = 0;
    std::vector<std::uint32_t> first;
    std::vector<std::uint32_t> last;
  };

 private:
  std::size_t EndOf(std::size_t separatorIndex) const noexcept;

  TextView text_;
  TextView separator_;
  std::size_t count_ = 0;  // separators found
  Ends ends_;
};

// Finds a separator in a text that arrives in stretches (a variable read in pieces), each
// stretch while it is still in the processor's cache: the text is then not read from memory
// a second time to be cut.
class PieceScanner {
 public:
  // The separator must outlive the scanner and the cut made from it.
  PieceScanner(TextView separator, std::size_t reach);
  ~PieceScanner();
  PieceScanner(const PieceScanner&) = delete;
  PieceScanner& operator=(const PieceScanner&) = delete;

  // `text` is the text so far: the text of the previous call, perhaps moved, with more after.
  void Scan(TextView textSoFar);
  // The same, for the whole text.
  void Finish(TextView text);
  // The text goes on with `part`, when the text is not kept whole as it arrives: the parts
  // are seen one after the other, and a separator across two of them is found too.
  void ScanNext(TextView part);
  // After ScanNext: the text of all the parts is now at `text` (only its place is taken, the
  // text is not read), so that a cut of it takes what was found.
  void FinishParts(TextView text);
  // Whether `text` is the very text (the same units at the same place) last given whole.
  bool SawWhole(TextView text) const noexcept;

  // When every field names pieces counted from one end only, the fields take nothing but
  // the text up to the end of the first `fromStart` separators and the text after the last
  // `fromEnd` ones. Once the first are found, Enough() says so, and a reader may stop there:
  // with nothing needed from the end, it gives the cut that much of the text as if it were
  // all of it; else it skips the middle (ResumeAfterLastSeparator drops what was given after
  // the last separator found, and the text goes on with its end, from just after a
  // separator). The cut then holds the pieces at either end as they are and counts the ones
  // between wrong, so this is only for fields that count from their own end. A separator
  // that can overlap itself could be found elsewhere in a stretch scanned apart: with it,
  // a need from the end leaves the whole text to be scanned.
  void NeedOnly(std::size_t fromStart, std::size_t fromEnd);
  bool Enough() const noexcept;
  std::size_t LastNeeded() const noexcept;
  // Where the text given so far goes on: the end of the last separator found, or 0.
  std::size_t ResumeAfterLastSeparator();
  TextView Separator() const noexcept { return separator_; }

 private:
  friend class PieceCut;
  struct State;

  TextView separator_;
  std::size_t reach_;
  std::unique_ptr<State> state_;
};

}  // namespace nv
