#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "bench/Bench.h"
#include "bench/Library.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/Walk.h"
#include "tests/support/FakeComponent.h"

namespace tavio::bench {
namespace {

constexpr std::int32_t kAdded = 4000;
constexpr std::int32_t kSaved = 500;
constexpr std::int32_t kClass = 1005;

ComPtr<_BillActions> Bound() {
  const auto holder = NewBillActions();
  Check(holder->put_ClassTypeID(kClass));
  return holder;
}

std::int32_t AddOneByOne(const std::vector<Dictionary>& actions) {
  const auto holder = Bound();
  std::int32_t added = 0;
  for (const auto& action : actions) {
    VARIANT_BOOL stored = VARIANT_FALSE;
    ComPtr<IDispatch> given = action.Object();
    Check(holder->AddNew(given.GetAddressOf(), &stored));
    added += stored != VARIANT_FALSE;
  }
  return added;
}

std::int32_t PlainAddition(const std::vector<std::wstring>& given) {
  std::vector<std::unique_ptr<std::wstring>> codes;
  for (const auto& code : given) {
    bool known = false;
    for (const auto& other : codes) known = known || *other == code;
    if (!known) codes.push_back(std::make_unique<std::wstring>(code));
  }
  return static_cast<std::int32_t>(codes.size());
}

void MeasureAddition(Bench& bench) {
  std::vector<Dictionary> actions;
  std::vector<std::wstring> codes;
  const Dictionary made(Actions(bench.Size(kAdded)));
  for (const auto& entry : Entries(made)) {
    actions.push_back(entry.Record());
    codes.emplace_back(entry.KeyView());
  }
  bench.Compare(
      {"AddNew of 4,000 actions, one by one", "the same search in std::wstrings behind pointers", 4},
      [&] { return AddOneByOne(actions); }, [&] { return PlainAddition(codes); });
}

// The components that saving calls. What they were asked comes back as one text.
class MiddleTier {
 public:
  MiddleTier() {
    props_.On(L"GetProperty", [] { return L"UserID=16394;"; });
    catalogue_.On(L"SetList", [] {});
    catalogue_.On(L"GetList", [this] { return predefined; });
    catalogue_.On(L"LookupRightMask", [this](test::Arguments& a) {
      asked += a.At(0).ToText() + L";";
      return false;
    });
    classInfo_.On(L"GetData", [this](test::Arguments& a) {
      asked += a.At(1).ToText() + L";";
      return noRows_.New();
    });
    noRows_.On(L"EOF", [] { return true; });
    classInfo_.On(L"GetBillActions", [this] { return actions; });
    update_.On(L"SaveBillActions", [this] { asked += L"saved"; });
  }

  // Before the first save: every second action comes from the catalogue, and none has a mask.
  void Renew() {
    asked.clear();
    std::int32_t position = 0;
    for (const auto& entry : Entries(actions)) {
      const auto action = entry.Record();
      action.Set(L"FIsPredefine"_key, Value(++position % 2 == 0));
      action.Set(L"FRightMask"_key, Value(std::int32_t{0}));
    }
  }

  Dictionary actions;
  Vector predefined = Vector::New();
  Text asked;

 private:
  test::FakeComponent props_{L"TavioSharedProps.PropStore"};
  test::FakeComponent catalogue_{L"TavioClassBillAction.PredefineActions"};
  test::FakeComponent classInfo_{L"TavioMClass.ClassInfo"};
  test::FakeComponent update_{L"TavioMClass.ClassDefineUpdate"};
  test::FakeObject noRows_;
};

Text Props() {
  std::int32_t process = 0;
  Text name(L"PropsString");
  const auto store = Component::Create(L"TavioSharedProps.PropStore");
  store.Call(L"GetProperty", ByRef(process), ByRef(name));
  return store.Call(L"GetProperty", ByRef(process), ByRef(name)).ToText();
}

// The calls that saving cannot do without, decided over plain structs. After the 31st action all masks are taken.
struct PlainAction {
  std::wstring code;
  bool predefined;
};

const Text& SavePlainly(MiddleTier& middle, const std::vector<PlainAction>& actions) {
  const auto catalogue = Component::Create(L"TavioClassBillAction.PredefineActions");
  catalogue.Call(L"SetList", ByRef(middle.predefined));
  std::unordered_set<std::wstring> known;
  for (const auto& action : Records(Vector(catalogue.Call(L"GetList")))) {
    known.insert(action.Get(L"FCode"_key)->ToText());
  }
  const auto classInfo = Component::Create(L"TavioMClass.ClassInfo");
  const auto props = Props();
  std::int32_t bit = 0, classType = kClass;
  for (const auto& action : actions) {
    if ((action.predefined && known.contains(action.code)) || bit == 31) continue;
    const auto mask = std::int32_t{1} << bit++;
    catalogue.Call(L"LookupRightMask", mask);
    const Component rows(classInfo
                             .Call(L"GetData", props,
                                   L"select 1 from t_ObjectAccessType where fobjectid=0 and (" + std::to_wstring(mask) +
                                       L" & faccessuse <> 0)")
                             .ToObject());
    rows.Read(L"EOF");
  }
  Dictionary saved = middle.actions, classTemplate;
  Component::Create(L"TavioMClass.ClassDefineUpdate")
      .Call(L"SaveBillActions", Props(), ByRef(classType), ByRef(saved), ByRef(classTemplate));
  Component::Create(L"TavioMClass.ClassInfo").Call(L"GetBillActions", Props(), ByRef(classType));
  return middle.asked;
}

void MeasureSave(Bench& bench) {
  MiddleTier middle;
  middle.actions = Dictionary(Actions(bench.Size(kSaved)));
  std::vector<PlainAction> plain;
  for (const auto& entry : Entries(middle.actions)) {
    plain.push_back({Text(entry.KeyView()), plain.size() % 2 == 1});
    middle.predefined.Add(entry.Record().Clone());
  }
  const auto holder = Bound();
  ComPtr<IDispatch> actions = middle.actions.Object();
  Check(holder->SetBillActions(actions.GetAddressOf()));
  Check(holder->put_ClassTypeID(kClass));
  const auto renew = [&] { middle.Renew(); };
  bench.Compare({"Save of 500 actions, half of them predefined", "the calls that it must make", 2},
                OnNew(renew,
                      [&]() -> const Text& {
                        VARIANT_BOOL saved = VARIANT_FALSE;
                        Check(holder->Save(&saved));
                        return middle.asked;
                      }),
                OnNew(renew, [&]() -> const Text& { return SavePlainly(middle, plain); }));
}

}  // namespace

void MeasureEditing(Bench& bench) {
  bench.Heading("Editing");
  MeasureAddition(bench);
  MeasureSave(bench);
}

}  // namespace tavio::bench
