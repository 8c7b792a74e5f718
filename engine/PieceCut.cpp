#include "engine/PieceCut.h"

#include <algorithm>
#include <array>
#include <exception>
#include <limits>
#include <thread>

#include "common/Error.h"
#include "engine/RunTogether.h"
#include "engine/Scan.h"

namespace nv {
namespace {

// Below this many units a text is scanned by the calling thread alone: starting another
// costs more than it saves.
constexpr std::size_t kUnitsPerStretch = std::size_t{1} << 20;
constexpr unsigned kMostStretches = 8;
constexpr std::size_t kManySeparators = 4096;

// Collects the ends of one stretch, the last ones in a ring that ends up in order.
class EndsCollector {
 public:
  // `begin` and `end`: the stretch, when known (end 0: a text still arriving).
  EndsCollector(std::size_t reach, std::size_t begin = 0, std::size_t end = 0)
      : reach_(reach), lastReach_(reach == kEveryPiece ? 0 : reach), begin_(begin), end_(end) {}

  void Add(std::uint32_t end) {
    if (ends_.count == kManySeparators) MakeRoom(end);
    if (ends_.first.size() < reach_) ends_.first.push_back(end);
    if (lastReach_ != 0) {
      if (ends_.last.size() < lastReach_) {
        ends_.last.push_back(end);
      } else {
        ends_.last[oldest_] = end;
        if (++oldest_ == lastReach_) oldest_ = 0;
      }
    }
    ++ends_.count;
  }

  // Once a stretch has many separators, room for all of them is made at once rather than by
  // doubling, which would touch twice the memory and copy it: all that a reach keeps, or as
  // many as the stretch will hold at the rate found so far and an eighth more, never more
  // than the stretch's own size in bytes. Only a hint: without the room, doubling does.
  void MakeRoom(std::size_t end) noexcept {
    try {
      if (lastReach_ != 0) {
        ends_.first.reserve(reach_);
        ends_.last.reserve(lastReach_);
      } else if (end_ > end && end > begin_) {
        const double rate = static_cast<double>(kManySeparators) / static_cast<double>(end - begin_);
        const auto expected = static_cast<std::size_t>(rate * static_cast<double>(end_ - begin_) * 1.125);
        ends_.first.reserve(std::min(expected, (end_ - begin_) / 2));
      }
    } catch (const std::exception&) {
    }
  }

  std::size_t Count() const noexcept { return ends_.count; }
  // The end of the last separator added, or 0.
  std::size_t LastEnd() const noexcept {
    if (ends_.count == 0) return 0;
    if (lastReach_ == 0) return ends_.first.back();
    return ends_.last.size() < lastReach_ ? ends_.last.back() : ends_.last[(oldest_ + lastReach_ - 1) % lastReach_];
  }

  PieceCut::Ends Take() && {
    std::rotate(ends_.last.begin(), ends_.last.begin() + static_cast<std::ptrdiff_t>(oldest_), ends_.last.end());
    return std::move(ends_);
  }

 private:
  std::size_t reach_;
  std::size_t lastReach_;  // 0: every end is among the first ones
  std::size_t begin_;
  std::size_t end_;
  std::size_t oldest_ = 0;
  PieceCut::Ends ends_;
};

// Collects the separators that start at or after `from` and end within `text`, which lies at
// `base` in the whole text. Returns where the scan of a longer text, with the same start,
// goes on.
std::size_t CollectEnds(TextView text, TextView separator, std::size_t from, EndsCollector& collector,
                        std::size_t base = 0) {
  std::array<std::size_t, 256> batch;
  for (;;) {
    const std::size_t count = FindEvery(text, from, separator, batch);
    for (std::size_t i = 0; i < count; ++i) collector.Add(static_cast<std::uint32_t>(base + batch[i]));
    if (count < batch.size()) {
      if (count != 0) from = batch[count - 1];
      // Every place a separator could start and still end within the text was looked at.
      return text.size() < separator.size() ? from : std::max(from, text.size() - separator.size() + 1);
    }
    from = batch.back();
  }
}

// The separators that start in [begin, end) of the text.
PieceCut::Ends ScanStretch(TextView text, TextView separator, std::size_t begin, std::size_t end, std::size_t reach) {
  EndsCollector collector(reach, begin, end);
  CollectEnds(text.substr(0, std::min(text.size(), end + separator.size() - 1)), separator, begin, collector);
  return std::move(collector).Take();
}

// The ends of two stretches, one after the other, as those of one.
PieceCut::Ends Joined(PieceCut::Ends left, PieceCut::Ends right, std::size_t reach) {
  const bool leftWhole = left.first.size() == left.count;
  const bool rightWhole = right.last.size() == right.count;
  PieceCut::Ends joined;
  joined.count = left.count + right.count;
  joined.first = std::move(left.first);
  if (leftWhole) {
    const std::size_t wanted = std::min(right.first.size(), reach - joined.first.size());
    joined.first.insert(joined.first.end(), right.first.begin(), right.first.begin() + static_cast<std::ptrdiff_t>(wanted));
  }
  joined.last = std::move(right.last);
  if (rightWhole && reach != kEveryPiece) {
    const std::size_t wanted = std::min(left.last.size(), reach - joined.last.size());
    joined.last.insert(joined.last.begin(), left.last.end() - static_cast<std::ptrdiff_t>(wanted), left.last.end());
  }
  return joined;
}

// A separator that cannot overlap itself (no proper prefix of it is also a suffix) is found at
// the same places whatever offset a scan starts from, so stretches of the text can be
// scanned apart. The prefix function of the separator tells, in one pass.
bool CannotOverlapItself(TextView separator) {
  std::vector<std::size_t> border(separator.size(), 0);
  for (std::size_t i = 1; i < separator.size(); ++i) {
    std::size_t k = border[i - 1];
    while (k > 0 && separator[i] != separator[k]) k = border[k - 1];
    border[i] = separator[i] == separator[k] ? k + 1 : k;
  }
  return separator.empty() || border.back() == 0;
}

unsigned StretchCount(TextView text, TextView separator) {
  const std::size_t bySize = text.size() / kUnitsPerStretch;
  if (bySize < 2 || !CannotOverlapItself(separator)) return 1;
  const unsigned processors = std::max(1u, std::thread::hardware_concurrency());
  return static_cast<unsigned>(std::min<std::size_t>({bySize, processors, kMostStretches}));
}

PieceCut::Ends ScanText(TextView text, TextView separator, std::size_t reach) {
  const unsigned stretches = StretchCount(text, separator);
  if (stretches == 1) return ScanStretch(text, separator, 0, text.size(), reach);

  std::vector<PieceCut::Ends> found(stretches);
  std::vector<std::exception_ptr> failures(stretches);
  const auto scan = [&](unsigned i) {
    try {
      found[i] = ScanStretch(text, separator, text.size() / stretches * i,
                             i + 1 == stretches ? text.size() : text.size() / stretches * (i + 1), reach);
    } catch (...) {
      failures[i] = std::current_exception();
    }
  };
  RunTogether(stretches, scan);
  for (const std::exception_ptr& failure : failures)
    if (failure) std::rethrow_exception(failure);
  PieceCut::Ends ends = std::move(found[0]);
  for (unsigned i = 1; i < stretches; ++i) ends = Joined(std::move(ends), std::move(found[i]), reach);
  return ends;
}

bool FitsOffsets(TextView text) { return text.size() <= std::numeric_limits<std::uint32_t>::max(); }

}  // namespace

PieceCut::PieceCut(TextView text, TextView separator, std::size_t reach) : text_(text), separator_(separator) {
  if (separator.empty()) return;
  if (!FitsOffsets(text)) RaiseError(ErrorNumber::OutOfMemory);
  ends_ = ScanText(text, separator, reach);
  count_ = ends_.count;
}

struct PieceScanner::State {
  explicit State(std::size_t reach) : collector(reach) {}
  EndsCollector collector;
  std::size_t from = 0;  // where the next stretch's scan starts
  std::size_t seen = 0;  // units given to ScanNext
  Text carried;          // with ScanNext, the units from `from` to `seen`
  bool finished = false;
  std::size_t enough = std::numeric_limits<std::size_t>::max();  // separators
  std::size_t lastNeeded = 0;                                     // separators
  const char16_t* finalData = nullptr;
  std::size_t finalSize = 0;
};

PieceScanner::PieceScanner(TextView separator, std::size_t reach)
    : separator_(separator), reach_(reach), state_(std::make_unique<State>(reach)) {}

PieceScanner::~PieceScanner() = default;

void PieceScanner::Scan(TextView textSoFar) {
  // A text too long for the offsets is left to the cut, which refuses it.
  if (separator_.empty() || !FitsOffsets(textSoFar)) return;
  state_->from = CollectEnds(textSoFar, separator_, state_->from, state_->collector);
}

void PieceScanner::Finish(TextView text) {
  Scan(text);
  state_->finished = FitsOffsets(text);
  state_->finalData = text.data();
  state_->finalSize = text.size();
}

void PieceScanner::ScanNext(TextView part) {
  State& state = *state_;
  if (separator_.empty() || part.size() > std::numeric_limits<std::uint32_t>::max() - state.seen) {
    state.seen += part.size();
    return;
  }
  const std::size_t partAt = state.seen;
  state.seen += part.size();
  if (!state.carried.empty()) {
    // A separator that starts in the carried units ends in the first units of the part.
    const std::size_t carriedAt = state.from;
    const TextView head = part.substr(0, separator_.size() - 1);
    Text joined = state.carried;
    joined.append(head);
    state.from = carriedAt + CollectEnds(joined, separator_, 0, state.collector, carriedAt);
    if (head.size() == part.size()) {  // a part shorter than the separator: all of it carried on
      state.carried = joined.substr(std::min(state.from - carriedAt, joined.size()));
      return;
    }
  }
  // The scan of the joined units went at least as far as the part's start.
  state.from = partAt + CollectEnds(part, separator_, state.from - partAt, state.collector, partAt);
  state.carried.assign(part.substr(state.from - partAt));
}

void PieceScanner::FinishParts(TextView text) {
  state_->finished = text.size() == state_->seen && FitsOffsets(text);
  state_->finalData = text.data();
  state_->finalSize = text.size();
}

bool PieceScanner::SawWhole(TextView text) const noexcept {
  return state_->finished && state_->finalData == text.data() && state_->finalSize == text.size();
}

void PieceScanner::NeedOnly(std::size_t fromStart, std::size_t fromEnd) {
  if (fromEnd > 0 && !CannotOverlapItself(separator_)) return;
  state_->enough = fromStart;
  state_->lastNeeded = fromEnd;
}

bool PieceScanner::Enough() const noexcept { return state_->collector.Count() >= state_->enough; }

std::size_t PieceScanner::LastNeeded() const noexcept { return state_->lastNeeded; }

std::size_t PieceScanner::ResumeAfterLastSeparator() {
  State& state = *state_;
  state.seen = state.from = state.collector.LastEnd();
  state.carried.clear();
  return state.seen;
}

PieceCut::PieceCut(TextView text, PieceScanner&& scanner) : text_(text), separator_(scanner.separator_) {
  if (separator_.empty()) return;
  if (scanner.SawWhole(text)) {
    ends_ = std::move(scanner.state_->collector).Take();
  } else {
    if (!FitsOffsets(text)) RaiseError(ErrorNumber::OutOfMemory);
    ends_ = ScanText(text, separator_, scanner.reach_);
  }
  count_ = ends_.count;
}

std::size_t PieceCut::EndOf(std::size_t separatorIndex) const noexcept {
  if (separatorIndex < ends_.first.size()) return ends_.first[separatorIndex];
  return ends_.last[separatorIndex - (count_ - ends_.last.size())];
}

TextView PieceCut::Range(std::size_t first, std::size_t last) const noexcept {
  const std::size_t begin = first == 0 ? 0 : EndOf(first - 1);
  const std::size_t end = last < count_ ? EndOf(last) : text_.size();
  return text_.substr(begin, end - begin);
}

}  // namespace nv
