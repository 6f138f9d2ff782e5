#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/Bench.h"
#include "bench/Library.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"

namespace tavio::bench {
namespace {

constexpr std::int32_t kFields = 60;

// A business object with that many header fields, and a bill of it.
struct Bill {
  struct Field {
    std::wstring key, caption, value;
  };

  Dictionary tableInfo = Dictionary::New();
  Dictionary data = Dictionary::New();
  std::vector<Field> fields;
};

Bill BillWith(std::int32_t count) {
  Bill bill;
  const auto page = Dictionary::New(), values = Dictionary::New();
  for (std::int32_t i = 1; i <= count; ++i) {
    bill.fields.push_back(
        {L"FField" + std::to_wstring(i), L"字段 " + std::to_wstring(i), L"value " + std::to_wstring(i)});
    const auto& plain = bill.fields.back();
    const auto field = Dictionary::New();
    field.Set(L"FKey"_key, Value(TextView(plain.key)));
    field.Set(L"FCaption"_key, Value(TextView(plain.caption)));
    field.Set(L"FNeedSave"_key, Value(true));
    field.Set(L"FVisible"_key, Value(std::int32_t{4}));
    field.Set(L"FLookUpType"_key, Value(std::int32_t{0}));
    const Key key{TextView(plain.key)};
    page.Set(key, Value(i));
    bill.tableInfo.Set(key, field);
    values.Set(key, Value(TextView(plain.value)));
  }
  bill.tableInfo.Set(L"Page1"_key, page);
  bill.data.Set(L"FID"_key, Value(std::int32_t{77}));
  bill.data.Set(L"Page1"_key, values);
  return bill;
}

Dictionary VariablesOf(const ComPtr<_Message>& message) {
  ComPtr<IDispatch> list;
  Check(message->GetVariableList(&list));
  return Dictionary(list);
}

// All captions or values, which tells whether both sides have made the same.
Text Joined(const Dictionary& variables, const Key& field) {
  Text joined;
  for (const auto& entry : Entries(variables)) joined += TextAt(entry.Record(), field);
  return joined;
}

// The same lists in the same containers, by whoever knows what is in them.
Dictionary BuildPlainly(const Bill& bill) {
  const auto variables = Dictionary::New(), users = Dictionary::New();
  for (const auto& field : bill.fields) {
    const auto entry = Dictionary::New();
    entry.Set(L"FName"_key, Value(TextView(field.key)));
    entry.Set(L"FCaption"_key, Value(TextView(field.caption)));
    variables.Set(Key(TextView(field.key)), entry);
  }
  return variables;
}

}  // namespace

void MeasureVariables(Bench& bench) {
  bench.Heading("Variables of a bill with 60 header fields");
  const auto bill = BillWith(bench.Size(kFields));
  const auto message = NewBoundMessage();
  Check(message->putref_TableInfo(bill.tableInfo.Object().Get()));
  Check(message->RefreshVariableList());
  constexpr Work kList = {"RefreshVariableList", "building the same packages from structs", 4};
  const auto captions = [](const Dictionary& list) { return Joined(list, L"FCaption"_key); };
  Bench::Require(captions(VariablesOf(message)) == captions(BuildPlainly(bill)), kList);
  bench.Time(
      kList, [&] { return message->RefreshVariableList(); }, [&] { return BuildPlainly(bill); });

  constexpr Work kValues = {"RefreshVariableValue", "std::wstrings from a hash map"};
  ComPtr<IDispatch> data = bill.data.Object();
  VARIANT_BOOL refreshed = VARIANT_FALSE;
  std::unordered_map<std::wstring, std::wstring> held;
  std::vector<std::pair<std::wstring, std::wstring>> plain;
  Text values;
  for (const auto& field : bill.fields) {
    held[field.key] = field.value;
    plain.emplace_back(field.key, L"");
    values += field.value;
  }
  Check(message->RefreshVariableValue(data.GetAddressOf(), &refreshed));
  Bench::Require(Joined(VariablesOf(message), L"FValue"_key) == values, kValues);
  bench.Time(
      kValues, [&] { return message->RefreshVariableValue(data.GetAddressOf(), &refreshed); },
      [&] {
        for (auto& [name, value] : plain) value = held.find(name)->second;
        return plain.size();
      });
}

}  // namespace tavio::bench
