#pragma once

#include <windows.h>
#include <oaidl.h>

#include <atomic>
#include <memory>
#include <vector>

#include "foundation/Value.h"

namespace tavio::vexo {

// Walks what a container held when the walk began ("For Each"): the container may be changed, or let go, meanwhile.
class Enumerator final : public IEnumVARIANT {
 public:
  using Items = std::vector<Value>;

  explicit Enumerator(std::shared_ptr<const Items> items, std::size_t next = 0) noexcept;
  // Hands out an enumerator of `items`.
  static HRESULT HandOut(Items items, IUnknown** result);

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP Next(ULONG wanted, VARIANT* items, ULONG* fetched) override;
  STDMETHODIMP Skip(ULONG count) override;
  STDMETHODIMP Reset() override;
  STDMETHODIMP Clone(IEnumVARIANT** result) override;

 private:
  ~Enumerator();
  std::size_t Left() const noexcept { return items_->size() - next_; }

  std::shared_ptr<const Items> items_;
  std::size_t next_;
  std::atomic<ULONG> references_ = 1;
};

}  // namespace tavio::vexo
