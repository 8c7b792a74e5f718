#pragma once
// Reading position in a registry file's lines; a hex list may go on over the next lines.
#include <cstddef>
#include <string>
#include <vector>

#include "common/Text.h"
#include "host/regfile/RegFile.h"

namespace nv {

class RegLineCursor {
 public:
  RegLineCursor(const std::vector<Text>& lines, std::size_t index) : lines_(lines), index_(index) {}

  std::size_t Index() const noexcept { return index_; }
  std::size_t LineNumber() const noexcept { return index_ + 1; }
  bool AtEnd() const noexcept { return position_ >= Line().size(); }
  // The current unit; only meaningful when not AtEnd().
  char16_t Peek() const noexcept { return AtEnd() ? u'\0' : Line()[position_]; }
  char16_t Next() noexcept { return AtEnd() ? u'\0' : Line()[position_++]; }
  TextView Rest() const noexcept { return TextView(Line()).substr(AtEnd() ? Line().size() : position_); }

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
    for (std::size_t i = position_ + 1; i < Line().size(); ++i) {
      if (Line()[i] != u' ' && Line()[i] != u'\t') return false;
    }
    return true;
  }
  // Moves to the text of the next line; false at the end of the file.
  bool NextLine() noexcept {
    if (index_ + 1 >= lines_.size()) return false;
    ++index_;
    position_ = 0;
    SkipBlanks();
    return true;
  }

  [[noreturn]] void Fail(const std::string& reason) const { throw RegFileError(LineNumber(), reason); }

 private:
  const Text& Line() const noexcept { return lines_[index_]; }

  const std::vector<Text>& lines_;
  std::size_t index_;
  std::size_t position_ = 0;
};

}  // namespace nv
