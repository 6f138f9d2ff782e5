// How long the recipient dialog takes to open, beside putting the same names into a bare list view.
// Windows are shown and closed; nothing needs to be answered.

#include <windows.h>
// Needs the one above.
#include <commctrl.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

#include "foundation/values/Error.h"
#include "message/dialog/frmMsgUser.h"

namespace {

using namespace tavio;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::int32_t kMost = 32767;
constexpr std::int32_t kFew = kMost / 10;
constexpr std::size_t kRounds = 5;

Clock::time_point opened;

Dictionary Users(std::int32_t count) {
  const auto users = Dictionary::New();
  for (std::int32_t id = 1; id <= count; ++id) {
    const auto entry = Dictionary::New();
    entry.Set(L"FUserID"_key, Value(id));
    entry.Set(L"FName"_key, Value(TextView(L"用户 " + std::to_wstring(id))));
    users.Set(Key(id), entry);
  }
  return users;
}

// Runs in the dialog's own message loop: notes that it is open, and closes it. A hook would slow every message down.
void CALLBACK OnOpened(HWND, UINT, UINT_PTR timer, DWORD) {
  opened = Clock::now();
  KillTimer(nullptr, timer);
  EndDialog(GetActiveWindow(), IDCANCEL);
}

double OpenDialog(const Dictionary& users) {
  const auto start = Clock::now();
  SetTimer(nullptr, 0, 1, &OnOpened);
  RecipientSelection selection;
  selection.UserDct(users);
  selection.InitForm();
  frmMsgUser(selection, L"").Show();
  return Milliseconds(opened - start).count();
}

double FillBareList(const std::vector<RecipientSelection::Row>& rows) {
  const auto start = Clock::now();
  const HWND list = CreateWindowExW(0, WC_LISTVIEWW, nullptr, WS_POPUP | WS_VISIBLE | LVS_REPORT, 0, 0, 300, 300,
                                    nullptr, nullptr, nullptr, nullptr);
  LVCOLUMNW column = {};
  column.mask = LVCF_WIDTH;
  column.cx = 280;
  SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  LVITEMW item = {};
  item.mask = LVIF_TEXT;
  for (const auto& row : rows) {
    item.pszText = const_cast<wchar_t*>(row.name.c_str());
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    ++item.iItem;
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  const Milliseconds taken = Clock::now() - start;
  DestroyWindow(list);
  return taken.count();
}

// Whatever else the machine does only adds to a time.
template <class Work>
double Fastest(Work&& work) {
  std::array<double, kRounds> rounds;
  std::generate(rounds.begin(), rounds.end(), work);
  return *std::min_element(rounds.begin(), rounds.end());
}

double Measure(std::int32_t count) {
  const auto users = Users(count);
  RecipientSelection selection;
  selection.UserDct(users);
  selection.InitForm();
  const double bare = Fastest([&] { return FillBareList(selection.Rows()); });
  const double dialog = Fastest([&] { return OpenDialog(users); });
  std::printf("%6d recipients: dialog %8.2f ms, bare list %8.2f ms, ratio %.2f\n", static_cast<int>(count), dialog,
              bare, dialog / bare);
  return dialog;
}

}  // namespace

int main() try {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&classes);
  const double few = Measure(kFew);
  const double most = Measure(kMost);
  std::printf("10 times the recipients: %.1f times as long\n", most / few);
  CoUninitialize();
  return 0;
} catch (const Error& error) {
  std::fprintf(stderr, "0x%08lX\n", static_cast<unsigned long>(error.Number()));
  return 1;
}
