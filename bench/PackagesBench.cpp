#include <array>
#include <cstdio>
#include <memory>
#include <vector>

#include "bench/Bench.h"
#include "bench/Library.h"
#include "foundation/packages/NewContainer.h"
#include "foundation/values/InvokeByName.h"
#include "foundation/values/OwnModule.h"

namespace tavio::bench {
namespace {

constexpr std::int32_t kMost = 32767;
constexpr int kTogether = 1000;  // what is shorter than a look at the clock

ComPtr<IClassFactory> ContainerFactory() {
  const HMODULE library = LoadLibraryW((GetAppFolder() + L"Vexo10.dll").c_str());
  CheckWindows(library != nullptr);
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const auto get =
      reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
  ComPtr<IClassFactory> factory;
  Check(get(__uuidof(::Dictionary), IID_PPV_ARGS(&factory)));
  return factory;
}

void MeasureCreation(Bench& bench) {
  const auto factory = ContainerFactory();
  bench.Compare(
      {"1,000 new containers", "a class factory that is held", 3},
      [] {
        int made = 0;
        for (int i = 0; i < kTogether; ++i) made += NewContainer(Container::kDictionary) != nullptr;
        return made;
      },
      [&] {
        int made = 0;
        for (int i = 0; i < kTogether; ++i) {
          ComPtr<IDispatch> object;
          made += SUCCEEDED(factory->CreateInstance(nullptr, IID_PPV_ARGS(&object)));
        }
        return made;
      });
}

ComPtr<_BillActions> Holding(const ComPtr<IDispatch>& actions) {
  const auto holder = NewBillActions();
  ComPtr<IDispatch> given = actions;
  Check(holder->SetBillActions(given.GetAddressOf()));
  return holder;
}

bool LookUp(const ComPtr<_BillActions>& holder, const BString& code) {
  VARIANT_BOOL found = VARIANT_FALSE;
  Check(holder->LookUp(code.Get(), &found));
  return found != VARIANT_FALSE;
}

std::vector<std::unique_ptr<std::wstring>> Codes(std::int32_t count) {
  std::vector<std::unique_ptr<std::wstring>> codes;
  for (std::int32_t i = 1; i <= count; ++i) codes.push_back(std::make_unique<std::wstring>(CodeOf(i)));
  return codes;
}

// What a search in a host's packages cannot do without: the key and the value of each entry, the field of its record,
// and the names of two members of that, one to know the record by and one to call.
bool SearchByName(const ComPtr<IDispatch>& actions, TextView code) {
  const Value field(L"FCode");
  const auto count = InvokeByName(actions.Get(), L"Count", kCallOrRead, {}).ToInt32();
  const auto name = MemberOf(actions.Get(), L"Name"), value = MemberOf(actions.Get(), L"Value");
  for (std::int32_t i = 1; i <= count; ++i) {
    VARIANT position[] = {Value(i).Raw()};
    const Value key = InvokeMember(actions.Get(), name, kCallOrRead, position);
    VARIANT keys[] = {key.Raw()};
    const Value record = InvokeMember(actions.Get(), value, kCallOrRead, keys);
    IDispatch* const object = record.Raw().pdispVal;
    VARIANT fields[] = {field.Raw()};
    if (!HasMember(object, L"Lookup")) return false;
    if (InvokeByName(object, L"Value", kCallOrRead, fields).EqualsText(code)) return true;
  }
  return false;
}

bool SearchThroughInterface(const ComPtr<IDispatch>& actions, TextView code) {
  const BString field(L"FCode");
  ComPtr<_Dictionary> published;
  LONG count = 0;
  Check(actions.As(&published));
  Check(published->get_Count(&count));
  for (LONG i = 1; i <= count; ++i) {
    BString key;
    Value record, stored;
    ComPtr<_Dictionary> action;
    Check(published->get_Name(i, key.Receive()));
    Check(published->get_Value(key.Get(), record.Receive()));
    Check(record.ToObject().As(&action));
    Check(action->get_Value(field.Get(), stored.Receive()));
    if (stored.EqualsText(code)) return true;
  }
  return false;
}

void MeasureLookUp(Bench& bench) {
  const auto count = bench.Size(kMost);
  const auto last = CodeOf(count);
  const BString code(last);
  const auto codes = Codes(count);
  const auto own = Holding(Actions(count));
  bench.Compare(
      {"LookUp of the last of 32,767", "a loop over std::wstrings behind pointers", 2},
      [&] { return LookUp(own, code); },
      [&] {
        for (const auto& known : codes) {
          if (*known == last) return true;
        }
        return false;
      });
  const auto published = Actions(count, Maker::kPublished), byName = Actions(count, Maker::kByName);
  const auto asPublished = Holding(published), asHosts = Holding(byName);
  bench.Compare(
      {"LookUp in 32,767, another's by its interface", "the calls that it must make", 1.2},
      [&] { return LookUp(asPublished, code); }, [&] { return SearchThroughInterface(published, last); });
  bench.Compare(
      {"LookUp in 32,767, a host's by name", "the calls that it must make", 1.2}, [&] { return LookUp(asHosts, code); },
      [&] { return SearchByName(byName, last); });
}

std::int32_t ItemsOf(const ComPtr<_BillActions>& holder) {
  ComPtr<IDispatch> items;
  Check(holder->GetEnvironmentItems(1, &items));
  return Dictionary(items).Count();
}

void MeasureItems(Bench& bench) {
  const auto many = Holding(Actions(bench.Size(kMost))), few = Holding(Actions(bench.Size(kMost / 10)));
  bench.Time(
      {"GetEnvironmentItems, 32,767 actions", "3,277 actions", 12}, [&] { return ItemsOf(many); },
      [&] { return ItemsOf(few); });
}

// What it costs a host that its packages are its own.
void CompareMakers(Bench& bench) {
  constexpr Work kWork = {"three makers", "each other"};
  const auto count = bench.Size(kMost);
  const BString code(CodeOf(count));
  const auto ours = Holding(Actions(count)), published = Holding(Actions(count, Maker::kPublished)),
             byName = Holding(Actions(count, Maker::kByName));
  for (const auto& holder : {ours, published, byName}) {
    Bench::Require(LookUp(holder, code) && ItemsOf(holder) == ItemsOf(ours), kWork);
  }
  if (!bench.ChecksOnly()) std::printf("\n%-52s %12s %12s %12s\n", "Packages of", "our own", "interface", "by name");
  const auto search = [&](const auto& holder) { return [&] { return LookUp(holder, code); }; };
  const auto items = [](const auto& holder) { return [&] { return ItemsOf(holder); }; };
  bench.Row("LookUp in 32,767 actions", search(ours), search(published), search(byName));
  bench.Row("GetEnvironmentItems of 32,767 actions", items(ours), items(published), items(byName));
}

// What the heaps of the process have given out, with what each block costs beside its content.
std::size_t BytesInUse() {
  std::array<HANDLE, 64> heaps;
  const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  std::size_t bytes = 0;
  for (DWORD i = 0; i < count && i < heaps.size(); ++i) {
    PROCESS_HEAP_ENTRY entry = {};
    while (HeapWalk(heaps[i], &entry)) {
      if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData + entry.cbOverhead;
    }
  }
  return bytes;
}

void PrintMemory(const Bench& bench) {
  if (bench.ChecksOnly()) return;
  const auto before = BytesInUse();
  const auto actions = Actions(kMost);
  const auto bytes = BytesInUse() - before;
  std::printf("\nMemory of 32,767 actions of 4 fields: %.2f MB, %.0f bytes each\n", static_cast<double>(bytes) / 1e6,
              static_cast<double>(bytes) / kMost);
}

}  // namespace

void MeasurePackages(Bench& bench) {
  bench.Heading("Packages");
  MeasureCreation(bench);
  MeasureLookUp(bench);
  MeasureItems(bench);
  CompareMakers(bench);
  PrintMemory(bench);
}

}  // namespace tavio::bench
