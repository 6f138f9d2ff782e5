#include "development/storage/PackageJson.h"

#include <cstdint>
#include <cstdio>
#include <utility>

#include "foundation/packages/Walk.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"
#include "foundation/values/InvokeByName.h"

namespace tavio::development {
namespace {

constexpr int kDeepest = 64;

void CheckDepth(int depth) {
  if (depth > kDeepest) throw Error(E_INVALIDARG, L"DevPlatform", L"数据包嵌套过深,无法保存");
}

std::string IsoDate(double date) {
  SYSTEMTIME time;
  if (!VariantTimeToSystemTime(date, &time)) throw Error::TypeMismatch();
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth, time.wDay, time.wHour,
                time.wMinute, time.wSecond);
  return text;
}

Value FromIsoDate(const std::string& text) {
  SYSTEMTIME time = {};
  double date = 0;
  const int read = std::sscanf(text.c_str(), "%4hu-%2hu-%2hu %2hu:%2hu:%2hu", &time.wYear, &time.wMonth, &time.wDay,
                               &time.wHour, &time.wMinute, &time.wSecond);
  if (read < 3 || !SystemTimeToVariantTime(&time, &date)) throw Error::TypeMismatch();
  Value value;
  value.InPlace()->vt = VT_DATE;
  value.InPlace()->date = date;
  return value;
}

Value FromDecimal(const std::string& digits) {
  Value text{TextView(FromUtf8(digits))};
  Value value;
  Check(VariantChangeTypeEx(value.InPlace(), text.InPlace(), LOCALE_INVARIANT, 0, VT_DECIMAL));
  return value;
}

std::string DecimalDigits(const Value& value) {
  Value text;
  Check(VariantChangeTypeEx(text.InPlace(), const_cast<VARIANT*>(&value.Raw()), LOCALE_INVARIANT, 0, VT_BSTR));
  return ToUtf8(text.ToText());
}

// Whether an object stands for something else.
bool IsMarked(const Json& json) { return json.size() == 1 && json.begin().key().starts_with('$'); }

Json Write(const Value& value, int depth);

Json WriteRecord(const Dictionary& record, int depth) {
  Json json = Json::object();
  for (const auto& entry : Entries(record)) {
    std::string key = ToUtf8(entry.KeyView());  // what is stored may be a host's object, and change the record
    json[std::move(key)] = Write(entry.Stored(), depth + 1);
  }
  return IsMarked(json) ? Json{{"$record", std::move(json)}} : json;
}

Json WriteList(const Vector& list, int depth) {
  Json json = Json::array();
  for (const auto& item : Items(list)) json.push_back(Write(*item, depth + 1));
  return json;
}

Json WriteObject(const Value& value, int depth) {
  if (!value.HoldsObject()) return Json{{"$object", 0}};
  CheckDepth(depth);
  const auto object = value.ToObject();
  const bool keyed = HasMember(object.Get(), L"Lookup");
  return keyed ? WriteRecord(Dictionary(object), depth) : WriteList(Vector(object), depth);
}

Json Write(const Value& value, int depth) {
  switch (value.Type()) {
    case VT_EMPTY:
    case VT_ERROR:
      return Json{{"$empty", 0}};
    case VT_NULL:
      return nullptr;
    case VT_BOOL:
      return value.ToBool();
    case VT_I2:
      return Json{{"$i2", value.ToInt16()}};
    case VT_UI1:
    case VT_I4:
    case VT_INT:
      return value.ToInt32();
    case VT_R4:
      return Json{{"$r4", value.ToDouble()}};
    case VT_R8:
      return value.ToDouble();
    case VT_DATE:
      return Json{{"$date", IsoDate(value.Raw().date)}};
    case VT_CY:
    case VT_DECIMAL:
      return Json{{"$decimal", DecimalDigits(value)}};
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return WriteObject(value, depth);
    case VT_BSTR:
      return ToUtf8(value.ToText());
    default:
      throw Error::TypeMismatch();
  }
}

template <class Integer>
Value ReadInteger(const Json& json) {
  if (!json.is_number_integer()) throw Error::TypeMismatch();
  const bool fits = json.is_number_unsigned() ? std::in_range<Integer>(json.get<std::uint64_t>())
                                              : std::in_range<Integer>(json.get<std::int64_t>());
  if (!fits) throw Error::Overflow();
  return Value(json.get<Integer>());
}

Value Read(const Json& json, int depth);

Value ReadRecord(const Json& json, int depth) {
  const Dictionary record = Dictionary::New();
  for (const auto& [key, value] : json.items()) record.Set(Key(FromUtf8(key)), Read(value, depth + 1));
  return record.AsValue();
}

Value ReadMarked(const std::string& mark, const Json& json, int depth) {
  if (mark == "$i2") return ReadInteger<std::int16_t>(json);
  if (mark == "$r4") return Value(json.get<float>());
  if (mark == "$date") return FromIsoDate(json.get<std::string>());
  if (mark == "$decimal") return FromDecimal(json.get<std::string>());
  if (mark == "$object") return Value(ComPtr<IDispatch>());
  if (mark == "$record") return ReadRecord(json, depth);
  if (mark != "$empty") throw Error::TypeMismatch();
  return Value();
}

Value ReadList(const Json& json, int depth) {
  const Vector list = Vector::New();
  for (const auto& item : json) list.Add(Read(item, depth + 1));
  return list.AsValue();
}

Value Read(const Json& json, int depth) {
  CheckDepth(depth);
  if (json.is_object()) {
    const bool isMarked = IsMarked(json);
    return isMarked ? ReadMarked(json.begin().key(), json.begin().value(), depth) : ReadRecord(json, depth);
  }
  if (json.is_array()) return ReadList(json, depth);
  if (json.is_boolean()) return Value(json.get<bool>());
  if (json.is_number_integer()) return ReadInteger<std::int32_t>(json);
  if (json.is_number()) return Value(json.get<double>());
  if (json.is_string()) return Value(TextView(FromUtf8(json.get<std::string>())));
  return Value::Null();
}

// The parser makes a double of an integer of more than 64 bits, and nobody could tell the two apart afterwards.
class ExactParser : public nlohmann::detail::json_sax_dom_parser<Json> {
 public:
  using json_sax_dom_parser::json_sax_dom_parser;

  bool number_float(double number, const std::string& digits) {
    if (digits.find_first_of(".eE") == std::string::npos) throw Error::Overflow();
    return json_sax_dom_parser::number_float(number, digits);
  }
};

}  // namespace

Json ParseJson(std::string_view text) {
  Json json;
  ExactParser parser(json);
  Json::sax_parse(text, &parser);
  return json;
}

Json ToJson(const Value& value) { return Write(value, 0); }

Value FromJson(const Json& json) { return Read(json, 0); }

Text ToColumn(const Json& json) { return FromUtf8(json.dump()); }

Json FromColumn(const Value& cell) { return ParseJson(ToUtf8(cell.ToText())); }

}  // namespace tavio::development
