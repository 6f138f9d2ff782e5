#include "delivery/MailSettings.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Component.h"
#include "foundation/values/Error.h"

namespace tavio {
namespace {

constexpr const wchar_t* kEmailSettings[] = {
    L"txtMailSrv",    L"txtAccountName",    L"txtShowName",        L"chkSmtp",           L"txtRZName",
    L"txtRZPassword", L"SendOnTimeAccount", L"SendOnTimePassword", L"txtRecivePassword",
};

using Source = Dictionary (*)(const wchar_t* section);

Dictionary FromClient(const wchar_t* section) {
  const auto profile = Component::Create(L"TavioClientBase.UserProfile");
  profile.Assign(L"UserIndependent", Value(true));
  return Dictionary(profile.Call(L"Load", section, L"Setting"));
}

Dictionary FromServer(const wchar_t* section) {
  const auto profile = Component::Create(L"TavioServerBase.UserProfile");
  Text props = GetPropsString();
  return Dictionary(profile.Call(L"LoadUserProfile", ByRef(props), section, L"Setting", true));
}

// Unset if it cannot be had.
Dictionary Read(Source source, const wchar_t* section) try { return source(section); } catch (const Error&) {
  return {};
}

Dictionary Section(const wchar_t* name) {
  for (const Source source : {&FromClient, &FromServer}) {
    if (auto settings = Read(source, name)) return settings;
  }
  return Dictionary::New();
}

// Empty if there is no such value, or one that is neither text nor number.
Text RegistryValue(const wchar_t* name) {
  constexpr wchar_t kKey[] = L"SoftWare\\Morla\\SMReg";
  constexpr DWORD kKinds = RRF_RT_REG_SZ | RRF_RT_REG_DWORD | RRF_RT_REG_QWORD;
  DWORD type = REG_NONE, bytes = 0;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kKey, name, kKinds, nullptr, nullptr, &bytes) != ERROR_SUCCESS) return {};
  std::vector<std::byte> data(bytes + sizeof(wchar_t));  // ends with a zero, whatever is stored
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kKey, name, kKinds, &type, data.data(), &bytes) != ERROR_SUCCESS) return {};
  if (type != REG_DWORD && type != REG_QWORD) return reinterpret_cast<const wchar_t*>(data.data());
  std::uint64_t number = 0;
  std::memcpy(&number, data.data(), std::min<std::size_t>(bytes, sizeof number));
  return std::to_wstring(number);
}

Text Setting(const Dictionary& profile, const wchar_t* name) {
  Text stored;
  profile.GetValue(Key(TextView(name)))->AppendTo(stored);
  const auto trimmed = TrimBlanks(stored);
  return Text(trimmed.empty() ? TrimBlanks(RegistryValue(name)) : trimmed);
}

}  // namespace

Dictionary LoadMailSettings() {
  const auto sms = Section(L"Base_SMS");
  const auto profile = Section(L"Base_EMAIL");
  const auto email = Dictionary::New();
  for (const auto* name : kEmailSettings) email.Set(Key(TextView(name)), Value(TextView(Setting(profile, name))));
  const auto settings = Dictionary::New();
  settings.Set(L"sms"_key, sms);
  settings.Set(L"email"_key, email);
  return settings;
}

}  // namespace tavio
