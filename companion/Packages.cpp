#include "companion/Packages.h"

#include <cstdio>

#include "foundation/values/Error.h"

namespace tavio::companion {
namespace {

std::string IsoDate(double date) {
  SYSTEMTIME time = {};
  VariantTimeToSystemTime(date, &time);
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth, time.wDay, time.wHour,
                time.wMinute, time.wSecond);
  return text;
}

Json FromBytes(const Value& value, const Secrets& secrets) {
  const auto bytes = value.ToBytes();
  const std::string_view content(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return Utf8(secrets.Masked(FromCodePage(CP_ACP, content)));
}

// What does not convert must not cost the rest of a trace.
Json FromText(const Value& value, const Secrets& secrets) {
  try {
    return Utf8(secrets.Masked(value.ToText()));
  } catch (const Error&) {
    return "(type " + std::to_string(value.Type()) + ")";
  }
}

Json FromValue(const Value& value, const Secrets& secrets) {
  switch (value.Type()) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_ERROR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return nullptr;
    case VT_BOOL:
      return value.ToBool();
    case VT_I2:
    case VT_I4:
    case VT_UI1:
      return value.ToInt32();
    case VT_R4:
    case VT_R8:
      return value.ToDouble();
    case VT_DATE:
      return IsoDate(value.Raw().date);
    case VT_ARRAY | VT_I4:
      return value.ToIntegers();
    case VT_ARRAY | VT_UI1:
      return FromBytes(value, secrets);
    default:
      return value.Type() & VT_ARRAY ? Json("(array)") : FromText(value, secrets);
  }
}

constexpr char kLeftOut[] = "(left out)";

}  // namespace

Json ToJson(const Snapshot& snapshot, const Secrets& secrets) {
  if (snapshot.kind == Snapshot::Kind::kObject) return "(object)";
  if (snapshot.kind == Snapshot::Kind::kValue) return FromValue(snapshot.value, secrets);
  const bool record = snapshot.kind == Snapshot::Kind::kRecord;
  const auto leftOut = snapshot.count - static_cast<std::int32_t>(snapshot.entries.size());
  Json json = record ? Json::object() : Json::array();
  for (const auto& entry : snapshot.entries) {
    Json value = ToJson(entry.value, secrets);
    if (record) {
      json[Utf8(entry.key)] = std::move(value);
    } else {
      json.push_back(std::move(value));
    }
  }
  if (leftOut > 0 && record) json[kLeftOut] = leftOut;
  if (leftOut > 0 && !record) json.push_back(Json{{kLeftOut, leftOut}});
  return json;
}

Value ToPackage(const Json& json) {
  if (json.is_object()) {
    const auto record = Dictionary::New();
    for (const auto& [key, value] : json.items()) record.Set(Key(TextView(FromUtf8(key))), ToPackage(value));
    return record.AsValue();
  }
  if (json.is_array()) {
    const auto list = Vector::New();
    for (const auto& item : json) list.Add(ToPackage(item));
    return list.AsValue();
  }
  if (json.is_boolean()) return Value(json.get<bool>());
  if (json.is_number_integer()) return ReadInteger<std::int32_t>(json);
  if (json.is_number()) return Value(json.get<double>());
  return json.is_string() ? Value(TextView(FromUtf8(json.get_ref<const std::string&>()))) : Value();
}

Text ToText(const Json& json) {
  constexpr int kIndent = 2;
  return FromUtf8(json.is_string() ? json.get<std::string>() : json.dump(kIndent));
}

}  // namespace tavio::companion
