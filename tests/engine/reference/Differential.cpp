#include "tests/engine/reference/Differential.h"

#include <cstdio>
#include <functional>
#include <vector>

#include "common/Error.h"
#include "engine/ExtractPieces.h"
#include "engine/FindValues.h"
#include "engine/Split.h"
#include "tests/engine/reference/Reference.h"

namespace nv::reference {
namespace {

// A printable form of a text: ASCII as is, every other unit escaped.
std::string Quoted(TextView text) {
  std::string out = "\"";
  for (const char16_t c : text) {
    if (c >= 0x20 && c < 0x7F && c != u'"' && c != u'\\') {
      out += static_cast<char>(c);
    } else {
      char buffer[8];
      std::snprintf(buffer, sizeof buffer, "\\u%04X", static_cast<unsigned>(c));
      out += buffer;
    }
  }
  return out + "\"";
}

template <typename Item>
std::string Listed(const std::vector<Item>& list) {
  std::string out = "[";
  for (const Item& item : list) out += (out.size() > 1 ? "," : "") + Quoted(item);
  return out + "]";
}

// Runs `call`; its failure, if any, becomes part of the outcome.
std::string Guarded(const std::function<std::string()>& call) {
  try {
    return call();
  } catch (const RuntimeError& error) {
    return "error " + std::to_string(error.Number());
  }
}

std::string Differ(const char* what, const std::string& engine, const std::string& reference) {
  if (engine == reference) return {};
  return std::string(what) + "\n  engine:    " + engine + "\n  reference: " + reference;
}

struct Positions {
  std::int16_t start = 0;
  std::int16_t end = 0;

  std::string Printed() const { return " start=" + std::to_string(start) + " end=" + std::to_string(end); }
  void Take(const FieldCall& field) {
    if (field.start) start = *field.start;
    if (field.end) end = *field.end;
  }
};

// One side of a find: its in/out arguments and the values it gave.
template <typename Value>
struct FindSide {
  Text text, mask;
  std::int16_t start, end;
  std::vector<Value> values{Value(u"untouched")};
  std::string Printed(const std::string& outcome) const {
    return outcome + " values=" + Listed(values) + " text=" + Quoted(text) + " mask=" + Quoted(mask) +
           " start=" + std::to_string(start) + " end=" + std::to_string(end);
  }
};

}  // namespace

std::string CompareSplit(const Text& text, const Text& separator) {
  Text engineText = text, referenceText = text;
  nv::SplitPieces enginePieces;
  std::vector<Text> referencePieces;
  const std::vector<TextView> engineViews = nv::SplitViews(text, separator);
  nv::SplitBySeparator(engineText, separator, enginePieces);
  SplitBySeparator(referenceText, separator, referencePieces);
  const std::string expected = Listed(referencePieces);
  std::string difference = Differ("SplitBySeparator", Listed(enginePieces.Views()) + " text=" + Quoted(engineText),
                                  expected + " text=" + Quoted(referenceText));
  if (difference.empty()) difference = Differ("SplitViews", Listed(engineViews), expected);
  return difference;
}

std::string CompareExtractPieces(const Text& text, const Text& separator, std::span<const FieldCall> fields) {
  const PieceCut cut(text, separator);
  Positions withCut, oneShot, reference;
  std::string engineLog, oneShotLog, referenceLog;
  for (const FieldCall& field : fields) {
    withCut.Take(field);
    oneShot.Take(field);
    reference.Take(field);
    const auto show = field.showSeparators;
    engineLog += Guarded([&] { return Quoted(nv::ExtractPieces(cut, withCut.start, withCut.end, show)); }) +
                 withCut.Printed() + "; ";
    oneShotLog +=
        Guarded([&] { return Quoted(nv::ExtractPieces(text, separator, oneShot.start, oneShot.end, show)); }) +
        oneShot.Printed() + "; ";
    referenceLog +=
        Guarded([&] { return Quoted(ExtractPieces(text, separator, reference.start, reference.end, show)); }) +
        reference.Printed() + "; ";
  }
  std::string difference = Differ("ExtractPieces over one cut", engineLog, referenceLog);
  if (difference.empty()) difference = Differ("ExtractPieces", oneShotLog, referenceLog);
  return difference;
}

std::string CompareFindValues(const Text& text, const Text& mask, const Text& filter, std::int16_t start,
                              std::int16_t end, bool caseSensitive, bool trim) {
  FindSide<TextView> engine{text, mask, start, end};
  FindSide<Text> plain{text, mask, start, end};
  const std::string engineOutcome = Guarded([&] {
    nv::FindValues(engine.text, engine.mask, filter, engine.start, engine.end, caseSensitive, trim, engine.values);
    return std::string("ok");
  });
  const std::string plainOutcome = Guarded([&] {
    FindValues(plain.text, plain.mask, filter, plain.start, plain.end, caseSensitive, trim, plain.values);
    return std::string("ok");
  });
  return Differ("FindValues", engine.Printed(engineOutcome), plain.Printed(plainOutcome));
}

}  // namespace nv::reference
