#include "development/storage/Storage.h"

#include <windows.h>

#include <map>
#include <mutex>

#include "development/storage/Files.h"
#include "development/storage/Schema.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"
#include "foundation/values/OwnModule.h"

namespace tavio::development {
namespace {

Text Absolute(const Text& path) {
  Text full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  CheckWindows(!full.empty());
  return full.back() == L'\\' ? full : full + L'\\';
}

// The drivers of Wine are those of the system below it, which knows no drive letters, and names them in its own way.
Text SqliteConnection(const Text& path) {
  using UnixName = char*(__cdecl*)(const wchar_t*);
  const auto unixName = reinterpret_cast<UnixName>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
  char* name = unixName ? unixName(path.c_str()) : nullptr;
  if (!name) return L"DRIVER=SQLite3 ODBC Driver;Database=" + path;
  const Text text = FromUtf8(name);
  HeapFree(GetProcessHeap(), 0, name);
  return L"DRIVER=SQLite3;Database=" + text;
}

Text ConnectionText() {
  const Text folder = StorageFolder();  // asked for before a host changes the current folder
  const Text chosen = Environment(L"TAVIO_DEV_DATABASE");
  if (!chosen.empty()) return chosen;
  // Nothing here needs to survive a failure of the power supply, and every operation of a host writes log entries.
  return SqliteConnection(folder + L"platform.db") + L";Timeout=20000;SyncPragma=OFF";
}

std::shared_ptr<Database> Connect() {
  auto database = std::make_shared<Database>(ConnectionText());
  PrepareTables(*database);
  return database;
}

Text UsualFolder() {
  const Text local = Environment(L"LOCALAPPDATA");
  return local.empty() ? GetAppFolder() + L"devplatform" : local + L"\\TavioDevPlatform";
}

}  // namespace

Text Environment(const wchar_t* name) {
  Text value(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return value;
}

Text StorageFolder() {
  static std::mutex guard;
  static Text asChosen, absolute;
  const std::scoped_lock lock(guard);
  Text chosen = Environment(L"TAVIO_DEV_FOLDER");
  if (chosen.empty()) chosen = UsualFolder();
  // It would end the value in the connection string.
  if (chosen.find(L';') != Text::npos)
    throw Error(E_INVALIDARG, L"DevPlatform", L"数据文件夹的路径不能含有分号: " + chosen);
  if (chosen != asChosen) absolute = Absolute(chosen);
  asChosen = std::move(chosen);
  MakeFolder(absolute);
  return absolute;
}

std::shared_ptr<Database> OpenStorage() {
  static std::mutex guard;
  static std::map<DWORD, std::weak_ptr<Database>> byThread;
  const std::scoped_lock lock(guard);
  auto& known = byThread[GetCurrentThreadId()];
  auto database = known.lock();
  if (!database) known = database = Connect();
  return database;
}

std::int32_t ReserveIds(Database& database, const wchar_t* series, std::int32_t count) {
  const auto changed = database.Execute(L"UPDATE t_Identity SET FNext = FNext + ? WHERE FName = ?", count, series);
  if (changed == 0) throw Error(E_INVALIDARG, L"DevPlatform", Text(L"未知的编号序列 ") + series);
  const Rows rows = database.Query(L"SELECT FNext FROM t_Identity WHERE FName = ?", series);
  return rows.cells[0][0].ToInt32() - count;
}

Text NowText() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  wchar_t text[32];
  std::swprintf(text, std::size(text), L"%04d-%02d-%02d %02d:%02d:%02d.%03d", now.wYear, now.wMonth, now.wDay,
                now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
  return text;
}

}  // namespace tavio::development
