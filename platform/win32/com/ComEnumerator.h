#pragma once
// An IEnumXXXX over a snapshot taken when the enumerator is made: later changes to the
// source do not move an enumeration under way, and clones share the snapshot with their
// own position. Traits name the interface, what the snapshot keeps (Entry) and how Next
// hands an entry out (Copy, which adds the reference the caller then owns).
#include <windows.h>

#include <cstddef>
#include <memory>
#include <new>
#include <vector>

#include "platform/win32/com/ComObject.h"
#include "platform/win32/com/ComResult.h"

namespace nv::com {

template <typename Traits>
class ComEnumerator : public Traits::Interface {
 public:
  using Interface = typename Traits::Interface;
  using Item = typename Traits::Item;
  using Entry = typename Traits::Entry;
  using Snapshot = std::shared_ptr<const std::vector<Entry>>;

  explicit ComEnumerator(Snapshot entries, std::size_t position = 0)
      : entries_(std::move(entries)), position_(position) {}

  void* FindInterface(REFIID iid) noexcept {
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, Traits::Iid())) return static_cast<Interface*>(this);
    return nullptr;
  }

  // A caller may leave out the count fetched only when it asks for one item.
  STDMETHODIMP Next(ULONG count, Item* items, ULONG* fetched) override {
    if (fetched != nullptr) *fetched = 0;
    RETURN_HR_IF_NULL(E_POINTER, items);
    RETURN_HR_IF(E_INVALIDARG, count != 1 && fetched == nullptr);
    ULONG given = 0;
    while (given < count && position_ < entries_->size()) items[given++] = Traits::Copy((*entries_)[position_++]);
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }

  STDMETHODIMP Skip(ULONG count) override {
    const std::size_t left = entries_->size() - position_;
    const std::size_t skipped = count < left ? count : left;
    position_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }

  STDMETHODIMP Reset() override {
    position_ = 0;
    return S_OK;
  }

  STDMETHODIMP Clone(Interface** copy) override {
    RETURN_HR_IF_NULL(E_POINTER, copy);
    *copy = nullptr;
    try {
      *copy = MakeComObject<ComEnumerator>(entries_, position_).Detach();
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
    return S_OK;
  }

  // A new enumerator over these entries, handed out with the one reference the caller owns.
  static HRESULT Make(std::vector<Entry> entries, Interface** made) noexcept {
    RETURN_HR_IF_NULL(E_POINTER, made);
    *made = nullptr;
    try {
      *made = MakeComObject<ComEnumerator>(std::make_shared<const std::vector<Entry>>(std::move(entries))).Detach();
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
    return S_OK;
  }

 private:
  Snapshot entries_;
  std::size_t position_;
};

}  // namespace nv::com
