#include "companion/exchange/TypedJson.h"

#include <cstdio>

#include "companion/Members.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/InvokeByName.h"

namespace tavio::companion {
namespace {

Value Changed(const Value& value, VARTYPE type) {
  Value changed;
  Check(VariantChangeTypeEx(changed.InPlace(), const_cast<VARIANT*>(&value.Raw()), LOCALE_INVARIANT, 0, type));
  return changed;
}

std::string DateText(double date) {
  SYSTEMTIME time = {};
  char text[32];
  if (!VariantTimeToSystemTime(date, &time)) throw Error::TypeMismatch();
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth, time.wDay, time.wHour,
                time.wMinute, time.wSecond);
  return text;
}

Value DateValue(const std::string& text) {
  SYSTEMTIME time = {};
  Value date;
  const int read = std::sscanf(text.c_str(), "%4hu-%2hu-%2hu %2hu:%2hu:%2hu", &time.wYear, &time.wMonth, &time.wDay,
                               &time.wHour, &time.wMinute, &time.wSecond);
  if (read < 3 || !SystemTimeToVariantTime(&time, &date.InPlace()->date)) throw Error::TypeMismatch();
  date.InPlace()->vt = VT_DATE;
  return date;
}

Json Write(const Value& value, int depth);

Json WriteObject(const Value& value, int depth) {
  if (!value.HoldsObject()) return {{"$object", 0}};
  if (depth > kDeepestPackage) throw Refused(L"A package is nested too deeply");
  const auto object = value.ToObject();
  if (HasMember(object.Get(), L"Lookup")) {
    Json json = Json::object();
    for (const auto& entry : Entries(Dictionary(object)))
      json[Utf8(entry.KeyView())] = Write(entry.Stored(), depth + 1);
    return json;
  }
  Json json = Json::array();
  for (const auto& item : Items(Vector(object))) json.push_back(Write(*item, depth + 1));
  return json;
}

Json Write(const Value& value, int depth) {
  switch (value.Type()) {
    case VT_EMPTY:
    case VT_ERROR:
      return {{"$empty", 0}};
    case VT_NULL:
      return nullptr;
    case VT_BOOL:
      return value.ToBool();
    case VT_I2:
      return {{"$i2", value.ToInt16()}};
    case VT_UI1:
    case VT_I4:
    case VT_INT:
      return value.ToInt32();
    case VT_R4:
    case VT_R8:
      return value.ToDouble();
    case VT_DATE:
      return {{"$date", DateText(value.Raw().date)}};
    case VT_CY:
    case VT_DECIMAL:
      return {{"$decimal", Utf8(Changed(value, VT_BSTR).ToText())}};
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return WriteObject(value, depth);
    case VT_BSTR:
      return Utf8(value.ToText());
    default:
      throw Error::TypeMismatch();
  }
}

std::string TextIn(const Json& json) {
  if (!json.is_string()) throw Error::TypeMismatch();
  return json.get<std::string>();
}

Value ReadMarked(const std::string& mark, const Json& json) {
  if (mark == "$i2") return ReadInteger<std::int16_t>(json);
  if (mark == "$date") return DateValue(TextIn(json));
  if (mark == "$decimal") return Changed(Value(TextView(FromUtf8(TextIn(json)))), VT_DECIMAL);
  if (mark == "$object") return Value(ComPtr<IDispatch>());
  if (mark == "$empty") return Value();
  throw Refused(L"Unknown mark " + FromUtf8(mark));
}

}  // namespace

Json ToTypedJson(const Value& value) { return Write(value, 0); }

Value FromTypedJson(const Json& json) {
  if (json.is_object() && json.size() == 1 && json.begin().key().starts_with('$')) {
    return ReadMarked(json.begin().key(), json.begin().value());
  }
  if (json.is_object()) {
    const auto record = Dictionary::New();
    for (const auto& [key, value] : json.items()) record.Set(Key(TextView(FromUtf8(key))), FromTypedJson(value));
    return record.AsValue();
  }
  if (json.is_array()) {
    const auto list = Vector::New();
    for (const auto& item : json) list.Add(FromTypedJson(item));
    return list.AsValue();
  }
  return json.is_null() ? Value::Null() : ToPackage(json);
}

}  // namespace tavio::companion
