#include "tests/support/Packages.h"

#include <Vexo.h>

#include "foundation/values/InvokeByName.h"

namespace tavio::test {
namespace {

std::string Joined(std::int32_t count, const auto& showAt) {
  std::string text;
  for (std::int32_t i = 1; i <= count; ++i) text += (i > 1 ? ", " : "") + showAt(i);
  return text;
}

std::string ShowObject(const ComPtr<IDispatch>& object) {
  if (!object) return "none";
  ComPtr<_Dictionary> asDictionary;
  ComPtr<_Vector> asVector;
  if (SUCCEEDED(object.As(&asDictionary)) || HasMember(object.Get(), L"Lookup")) {
    const Dictionary record(object);
    return "{" +
           Joined(record.Count(),
                  [&](std::int32_t i) {
                    const auto entry = record.At(i);
                    return Utf8(entry.KeyView()) + ": " + Show(entry.Stored());
                  }) +
           "}";
  }
  if (SUCCEEDED(object.As(&asVector)) || HasMember(object.Get(), L"UBound")) {
    const Vector list(object);
    return "[" + Joined(list.Count(), [&](std::int32_t i) { return Show(*list.Item(i)); }) + "]";
  }
  return "object";
}

}  // namespace

Dictionary Record(std::initializer_list<Field> fields) {
  auto record = Dictionary::New();
  for (const auto& field : fields) record.Set(Key(field.key), field.item.value);
  return record;
}

Vector List(std::initializer_list<Item> items) {
  auto list = Vector::New();
  for (const auto& item : items) list.Add(item.value);
  return list;
}

std::string Show(const Value& value) {
  switch (value.Type()) {
    case VT_EMPTY:
      return "empty";
    case VT_NULL:
      return "null";
    case VT_ERROR:
      return value.IsEmpty() ? "missing" : "error";
    case VT_BOOL:
      return value.ToBool() ? "true" : "false";
    case VT_I2:
      return std::to_string(value.ToInt16()) + "s";
    case VT_BSTR:
      return '"' + Utf8(value.ToText()) + '"';
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return ShowObject(value.ToObject());
    default:
      return value.Type() & VT_ARRAY ? "array of type " + std::to_string(value.Type() & VT_TYPEMASK)
                                     : Utf8(value.ToText());
  }
}

std::string Utf8(TextView text) {
  const int units = static_cast<int>(text.size());
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), units, nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(bytes), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), units, result.data(), bytes, nullptr, nullptr);
  return result;
}

}  // namespace tavio::test
