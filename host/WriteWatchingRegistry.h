#pragma once
// A registry that passes every call on and remembers the value writes that failed, so that a
// command can say what could not be stored where the plug-in, as it must, carried on.
#include <optional>
#include <vector>

#include "store/Registry.h"

namespace nv {

class WriteWatchingRegistry final : public Registry {
 public:
  struct FailedWrite {
    Text name;
    std::uint32_t type = 0;
    std::vector<std::uint8_t> data;
    RegStatus status = 0;
  };

  explicit WriteWatchingRegistry(Registry& inner) : inner_(inner) {}

  // The last failed write of a value of this name, if any.
  std::optional<FailedWrite> LastFailedWrite(TextView name) const;

  RegStatus OpenKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) override {
    return inner_.OpenKey(parent, subKey, access, result);
  }
  RegStatus CreateKey(RegKey parent, TextView subKey, std::uint32_t access, RegKey& result) override {
    return inner_.CreateKey(parent, subKey, access, result);
  }
  RegStatus CloseKey(RegKey key) override { return inner_.CloseKey(key); }
  RegStatus QueryValue(RegKey key, TextView name, std::uint32_t* type, std::uint8_t* data,
                       std::uint32_t* size) override {
    return inner_.QueryValue(key, name, type, data, size);
  }
  RegStatus SetValue(RegKey key, TextView name, std::uint32_t type, const std::uint8_t* data,
                     std::uint32_t size) override;
  RegStatus SetValueParts(RegKey key, TextView name, std::uint32_t type, ValueParts parts) override;
  RegStatus SetValueMade(RegKey key, TextView name, std::uint32_t type, std::uint32_t size,
                         const ValueMaker& make) override;
  RegStatus DeleteValue(RegKey key, TextView name) override { return inner_.DeleteValue(key, name); }
  RegStatus DeleteTree(RegKey key, TextView subKey) override { return inner_.DeleteTree(key, subKey); }
  RegStatus EnumKey(RegKey key, std::uint32_t index, Text& name) override { return inner_.EnumKey(key, index, name); }
  RegStatus EnumValue(RegKey key, std::uint32_t index, Text& name, std::uint32_t& type,
                      std::vector<std::uint8_t>& data) override {
    return inner_.EnumValue(key, index, name, type, data);
  }
  RegStatus VisitValues(RegKey key, std::uint32_t maxDataBytes, const ValueVisitor& visit) override {
    return inner_.VisitValues(key, maxDataBytes, visit);
  }
  RegStatus ReadValue(RegKey key, TextView name, ValueSink& sink) override {
    return inner_.ReadValue(key, name, sink);
  }
  bool ReadsValuesInPieces() const override { return inner_.ReadsValuesInPieces(); }
  bool ValueNamesUniqueUpperCased() const override { return inner_.ValueNamesUniqueUpperCased(); }
  RegStatus ReadValueRanges(RegKey key, TextView name, std::uint32_t size, std::span<const ByteRange> ranges,
                            std::uint8_t* data) override {
    return inner_.ReadValueRanges(key, name, size, ranges, data);
  }
  void BeginBatch() override { inner_.BeginBatch(); }
  void CommitBatch() override { inner_.CommitBatch(); }
  void AbandonBatch() override { inner_.AbandonBatch(); }
  void BeginReading() override { inner_.BeginReading(); }
  void EndReading() override { inner_.EndReading(); }

 private:
  void Remember(TextView name, std::uint32_t type, std::span<const std::uint8_t> data, RegStatus status);

  Registry& inner_;
  std::vector<FailedWrite> failed_;  // the last few only
};

}  // namespace nv
