#pragma once

#include <windows.h>
#include <oaidl.h>

#include <memory>
#include <vector>

#include "com/server/ComObject.h"
#include "foundation/values/Value.h"

namespace tavio::vexo {

// Walks what a container held when the walk began ("For Each"): the container may be changed, or let go, meanwhile.
class Enumerator final : public com::ComObject<IEnumVARIANT> {
 public:
  using Items = std::vector<Value>;

  explicit Enumerator(std::shared_ptr<const Items> items, std::size_t next = 0) noexcept
      : items_(std::move(items)), next_(next) {}
  // A new one, with its first reference.
  static IUnknown* Over(Items items) { return new Enumerator(std::make_shared<const Items>(std::move(items))); }

  STDMETHODIMP Next(ULONG wanted, VARIANT* items, ULONG* fetched) override;
  STDMETHODIMP Skip(ULONG count) override;
  STDMETHODIMP Reset() override;
  STDMETHODIMP Clone(IEnumVARIANT** result) override;

 private:
  std::size_t Left() const noexcept { return items_->size() - next_; }

  std::shared_ptr<const Items> items_;
  std::size_t next_;
};

}  // namespace tavio::vexo
