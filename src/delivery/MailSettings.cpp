#include "delivery/MailSettings.h"

#include <windows.h>

#include "foundation/environment/SharedProperties.h"
#include "foundation/packages/Component.h"
#include "foundation/packages/Fields.h"
#include "foundation/values/Error.h"

namespace tavio {
namespace {

constexpr const wchar_t* kEmailSettings[] = {
    L"txtMailSrv",    L"txtAccountName",    L"txtShowName",        L"chkSmtp",           L"txtRZName",
    L"txtRZPassword", L"SendOnTimeAccount", L"SendOnTimePassword", L"txtRecivePassword",
};

Dictionary OrEmpty(const Value& section) {
  const Dictionary settings(section);
  return settings ? settings : Dictionary::New();
}

Dictionary Profile(const Dictionary& sms, const Dictionary& email) {
  const auto profile = Dictionary::New();
  profile.Set(L"sms"_key, sms);
  profile.Set(L"email"_key, email);
  return profile;
}

Dictionary ClientProfile() {
  const auto profile = Component::Create(L"TavioClientBase.UserProfile");
  profile.Assign(L"UserIndependent", Value(true));
  const auto load = [&](const wchar_t* section) { return OrEmpty(profile.Call(L"Load", section, L"Setting")); };
  const auto sms = load(L"Base_SMS");
  return Profile(sms, load(L"Base_EMAIL"));
}

Dictionary ServerProfile() {
  const auto profile = Component::Create(L"TavioServerBase.UserProfile");
  Text props = GetPropsString();
  const auto load = [&](const wchar_t* section) {
    return OrEmpty(profile.Call(L"LoadUserProfile", ByRef(props), section, L"Setting", true));
  };
  const auto sms = load(L"Base_SMS");
  return Profile(sms, load(L"Base_EMAIL"));
}

Dictionary StoredProfile() {
  try {
    return ClientProfile();
  } catch (const Error&) {
  }
  try {
    return ServerProfile();
  } catch (const Error&) {
    return Profile(Dictionary::New(), Dictionary::New());
  }
}

// Empty if there is no such value, or one that is no text.
Text RegistryValue(const wchar_t* name) {
  constexpr wchar_t kKey[] = L"SoftWare\\Morla\\SMReg";
  DWORD bytes = 0;
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kKey, name, RRF_RT_REG_SZ, nullptr, nullptr, &bytes) != ERROR_SUCCESS) return {};
  Text text(bytes / sizeof(wchar_t), L'\0');
  if (RegGetValueW(HKEY_LOCAL_MACHINE, kKey, name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) != ERROR_SUCCESS) {
    return {};
  }
  return text.c_str();
}

Text Setting(const Dictionary& profile, const wchar_t* name) {
  Text stored;
  profile.GetValue(Key(TextView(name)))->AppendTo(stored);
  const auto trimmed = TrimBlanks(stored);
  return Text(trimmed.empty() ? TrimBlanks(RegistryValue(name)) : trimmed);
}

}  // namespace

Dictionary LoadMailSettings() {
  const auto settings = StoredProfile();
  const auto profile = PackageAt(settings, L"email"_key);
  const auto email = Dictionary::New();
  for (const auto* name : kEmailSettings) email.Set(Key(TextView(name)), Value(TextView(Setting(profile, name))));
  settings.Set(L"email"_key, email);
  return settings;
}

}  // namespace tavio
