#include "development/mail/Command.h"

#include <array>

#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"

namespace tavio::development {
namespace {

struct Expected {
  VARTYPE type;
  const wchar_t* name;
};

constexpr std::array<Expected, 9> kExpected = {{
    {VT_BSTR, L"连接字符串"},
    {VT_BYREF | VT_ARRAY | VT_UI1, L"按引用传递的字节数组"},
    {VT_BYREF | VT_I4, L"按引用传递的32位整数"},
    {VT_BSTR, L"标题字符串"},
    {VT_BYREF | VT_ARRAY | VT_I4, L"按引用传递的32位整数数组"},
    {VT_BYREF | VT_I4, L"按引用传递的32位整数"},
    {VT_I2, L"16位整数"},
    {VT_I2, L"16位整数"},
    {VT_BYREF | VT_BSTR, L"按引用传递的命令字符串"},
}};

[[noreturn]] void Refuse(HRESULT number, const Text& description) {
  throw Error(number, L"TavioAppCommand.Command", L"SendMessage " + description);
}

void CheckTypes(const Arguments& arguments) {
  if (arguments.Count() != kExpected.size()) Refuse(DISP_E_BADPARAMCOUNT, L"应有9个参数");
  for (std::size_t i = 0; i < kExpected.size(); ++i) {
    if (arguments.Raw(i).vt == kExpected[i].type) continue;
    Refuse(DISP_E_TYPEMISMATCH, L"的第" + std::to_wstring(i + 1) + L"个参数应为" + kExpected[i].name);
  }
}

Text Decode(const std::vector<std::byte>& bytes, std::int32_t length) {
  if (length < 0 || static_cast<std::size_t>(length) > bytes.size()) Refuse(E_INVALIDARG, L"的内容长度与字节数组不符");
  const auto* first = reinterpret_cast<const char*>(bytes.data());
  return FromCodePage(CP_ACP, {first, static_cast<std::size_t>(length)});
}

}  // namespace

Command::Command() {
  Add(L"SendMessage", [this](Arguments& a) {
    SendMessage(a);
    return Value();
  });
}

void Command::SendMessage(const Arguments& arguments) {
  CheckTypes(arguments);
  if (arguments.At(0).ToText().empty()) Refuse(E_INVALIDARG, L"的连接字符串为空");
  const Text content = Decode(arguments.At(1).ToBytes(), arguments.At(2).ToInt32());
  const auto recipients = arguments.At(4).ToIntegers();
  const Text time = NowText();
  Transaction transaction(Store());
  std::int32_t id = ReserveIds(Store(), L"Inbox", static_cast<std::int32_t>(recipients.size()));
  for (const std::int32_t recipient : recipients) {
    Store().Execute(
        L"INSERT INTO t_Inbox (FID, FTime, FSenderID, FRecipientID, FTitle, FContent, FCommand, FFlag1, FFlag2) "
        L"VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
        id++, time, arguments.At(5), recipient, arguments.At(3), content, arguments.At(8), arguments.At(6),
        arguments.At(7));
  }
  transaction.Commit();
}

}  // namespace tavio::development
