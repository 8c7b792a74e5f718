#pragma once
// Reading position in a registry file's current line; a hex list may go on over the next
// lines, which the cursor then reads from the file.
#include <cstddef>
#include <string>

#include "common/Text.h"
#include "host/regfile/RegFile.h"
#include "host/regfile/RegFileText.h"

namespace nv {

class RegLineCursor {
 public:
  // At the start of `line`, the line `reader` gave last.
  RegLineCursor(RegLineReader& reader, Text& line) : reader_(reader), line_(line) {}

  std::size_t LineNumber() const noexcept { return reader_.LineNumber(); }
  bool AtEnd() const noexcept { return position_ >= line_.size(); }
  // The current unit; only meaningful when not AtEnd().
  char16_t Peek() const noexcept { return AtEnd() ? u'\0' : line_[position_]; }
  char16_t Next() noexcept { return AtEnd() ? u'\0' : line_[position_++]; }
  TextView Rest() const noexcept { return TextView(line_).substr(AtEnd() ? line_.size() : position_); }

  // Moves `units` on; the caller has read them through Rest().
  void Skip(std::size_t units) noexcept { position_ += units; }
  void SkipBlanks() noexcept {
    while (!AtEnd() && (Peek() == u' ' || Peek() == u'\t')) ++position_;
  }
  bool Accept(char16_t unit) noexcept {
    if (AtEnd() || Peek() != unit) return false;
    ++position_;
    return true;
  }
  // An ASCII word in any case ("dword:", "hex").
  bool AcceptWord(TextView word) noexcept {
    const TextView rest = Rest();
    if (rest.size() < word.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
      char16_t c = rest[i];
      if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
      if (c != word[i]) return false;
    }
    position_ += word.size();
    return true;
  }
  // At a backslash with nothing but blanks after it on its line.
  bool AtContinuation() const noexcept {
    if (AtEnd() || Peek() != u'\\') return false;
    for (std::size_t i = position_ + 1; i < line_.size(); ++i) {
      if (line_[i] != u' ' && line_[i] != u'\t') return false;
    }
    return true;
  }
  // Moves to the text of the next line; false at the end of the file.
  bool NextLine() {
    if (!reader_.Next(line_)) return false;
    position_ = 0;
    SkipBlanks();
    return true;
  }

  // The position in the line, and in-place access behind it: a quoted string is unescaped
  // into the line's own room (it never grows), and then the line is taken as its text.
  std::size_t Position() const noexcept { return position_; }
  void Put(std::size_t at, char16_t unit) noexcept { line_[at] = unit; }
  // Units [begin, end) of the line, which is left empty.
  Text TakeLine(std::size_t begin, std::size_t end) {
    line_.resize(end);
    line_.erase(0, begin);
    Text taken = std::move(line_);
    line_.clear();
    position_ = 0;
    return taken;
  }

  [[noreturn]] void Fail(const std::string& reason) const { throw RegFileError(LineNumber(), reason); }

 private:
  RegLineReader& reader_;
  Text& line_;
  std::size_t position_ = 0;
};

}  // namespace nv
