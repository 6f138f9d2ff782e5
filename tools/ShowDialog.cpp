// Shows the recipient dialog with a few recipients of every kind, for looking at it, until it is answered.

#include <cstdio>

#include "foundation/values/Error.h"
#include "message/dialog/frmMsgUser.h"

namespace {

constexpr wchar_t kTitle[] = L"采购订单 PO-2024-0317 已审核";
const wchar_t* const kNames[] = {
    L"张伟",        L"王芳（采购部）", L"李娜 ★",
    L"Ann Smith",   L"محمد علي",       L"陈建国 — 华东区供应链管理中心采购计划与供应商协同办公室（外派苏州）",
    L"刘洋",        L"Unknown",        L"赵静",
    L"Jörg Müller", L"周磊",
};

void Show() {
  using namespace tavio;
  const auto users = Dictionary::New();
  std::int32_t id = 16394;
  for (const auto* name : kNames) {
    const auto entry = Dictionary::New();
    entry.Set(L"FUserID"_key, Value(id));
    entry.Set(L"FName"_key, Value(name));
    users.Set(Key(id++), entry);
  }
  RecipientSelection selection;
  selection.UserDct(users);
  selection.InitForm();
  frmMsgUser(selection, kTitle).Show();
  std::printf("%s, %d of %d\n", selection.ShowResult() ? "sent" : "not sent", selection.UserDct().Count(),
              users.Count());
}

}  // namespace

int main() try {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  Show();
  CoUninitialize();
  return 0;
} catch (const tavio::Error& error) {
  std::fprintf(stderr, "0x%08lX\n", static_cast<unsigned long>(error.Number()));
  return 1;
}
