#include "companion/recorder/Snapshot.h"

#include <Vexo.h>

#include "foundation/values/Error.h"
#include "foundation/values/InvokeByName.h"

namespace tavio::companion {
namespace {

constexpr int kDeepest = 8;

template <class Interface>
bool Offers(IDispatch* object) noexcept {
  ComPtr<Interface> offered;
  return SUCCEEDED(object->QueryInterface(IID_PPV_ARGS(&offered)));
}

// Ours are known by their interface, which is asked for faster than a name.
Snapshot::Kind KindOf(IDispatch* object) noexcept {
  if (Offers<_Dictionary>(object)) return Snapshot::Kind::kRecord;
  if (Offers<_Vector>(object)) return Snapshot::Kind::kList;
  if (HasMember(object, L"Lookup")) return Snapshot::Kind::kRecord;
  return HasMember(object, L"UBound") ? Snapshot::Kind::kList : Snapshot::Kind::kObject;
}

class Copier {
 public:
  explicit Copier(std::int32_t room) noexcept : room_(room) {}

  void Copy(const VARIANT& variant, Snapshot& copy, int depth) {
    const auto value = Value::CopyOf(variant);
    if (!value.HoldsObject()) {
      copy.value = value.Copy();
    } else {
      CopyObject(value, copy, depth);
    }
  }

 private:
  void CopyObject(const Value& value, Snapshot& copy, int depth) {
    const auto object = value.ToObject();
    copy.kind = KindOf(object.Get());
    if (copy.kind == Snapshot::Kind::kRecord) {
      const Dictionary record(object);
      Walk(copy, depth, record.Count(), [&](std::int32_t i, Snapshot::Entry& entry) {
        const auto stored = record.At(i);
        entry.key = stored.KeyView();
        Copy(stored.Stored().Raw(), entry.value, depth + 1);
      });
    } else if (copy.kind == Snapshot::Kind::kList) {
      const Vector list(object);
      Walk(copy, depth, list.Count(),
           [&](std::int32_t i, Snapshot::Entry& entry) { Copy(list.Item(i)->Raw(), entry.value, depth + 1); });
    }
  }

  template <class CopyEntry>
  void Walk(Snapshot& copy, int depth, std::int32_t count, CopyEntry&& copyEntry) {
    copy.count = count;
    for (std::int32_t i = 1; i <= count && room_ > 0 && depth < kDeepest; ++i) {
      --room_;
      copyEntry(i, copy.entries.emplace_back());
    }
  }

  std::int32_t room_;
};

}  // namespace

Snapshot Snapshot::Of(const VARIANT& variant, std::int32_t room) noexcept {
  Snapshot copy;
  try {
    Copier(room).Copy(variant, copy, 0);
  } catch (...) {
    // A container of the host's may fail half-way; the call that is recorded must not.
  }
  return copy;
}

const Snapshot* Snapshot::Find(TextView key) const noexcept {
  for (const auto& entry : entries) {
    if (entry.key == key) return &entry.value;
  }
  return nullptr;
}

Text Snapshot::ToText() const {
  Text text;
  const bool array = (value.Type() & VT_ARRAY) != 0;
  try {
    if (kind == Kind::kValue && !array) value.AppendTo(text);
  } catch (const Error&) {
    // It is no text.
  }
  return text;
}

}  // namespace tavio::companion
