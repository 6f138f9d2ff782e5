#include <windows.h>
// Needs the one above.
#include <commctrl.h>

#include <numeric>

#include "foundation/Error.h"
#include "message/Message.h"
#include "message/frmMsgUser.h"
#include "tests/support/DialogUser.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using Strings = std::vector<std::string>;
using Ids = std::vector<std::int32_t>;

class RecipientDialogTest : public LibraryTest {
 protected:
  RecipientDialogTest() {
    props->props = L"UserID=16394;ConnectString=c;";
    command_.On(L"SendMessage", [this](Arguments& a) {
      receivers = a.At(4).ToIntegers();
      return Value();
    });
    message.ClassType(Record({}));
    message.TableInfo(Record({}));
    message.MustSelectMsgUser(true);
    users = Record({});
    for (const auto* name : {L"张伟", L"王芳", L"李娜"}) AddUser(name);
  }

  void AddUser(const Text& name) {
    const auto id = users.Count() + 1;
    users.Set(Key(id), Record({{L"FUserID", id}, {L"FName", name}}));
  }

  // Sends to `users` while a person does `actions`.
  bool Send(DialogUser::Actions actions, const Text& title = L"") {
    message.SetMessage(Record({{L"FTitle", title}, {L"FMessage", L"内容"}, {L"MessageUsers", users}}));
    DialogUser user(std::move(actions));
    const bool sent = message.SendMessage(Dictionary());
    shown = user.Shown();
    return sent;
  }

  Message message;
  Dictionary users;
  Ids receivers;  // of what was sent
  int shown = 0;

 private:
  FakeComponent command_{L"TavioAppCommand.Command"};
};

TEST_F(RecipientDialogTest, ShowsTheRecipientsAndSendsToThoseThatStayTicked) {
  EXPECT_TRUE(Send(
      [](const RecipientWindow& window) {
        EXPECT_EQ(window.Caption(), "消息接收用户 - 已审核");
        EXPECT_EQ(window.Texts(), (Strings{"消息接收用户", "用户名", "发送(&O)", "不发送(&C)"}));
        EXPECT_EQ(window.Rows(), (Strings{"[x] 张伟", "[x] 王芳", "[x] 李娜"}));
        EXPECT_EQ(GetFocus(), window.List());
        window.Press(VK_SPACE);
        window.Press(VK_DOWN);
        window.Press(VK_SPACE);
        EXPECT_EQ(window.Rows(), (Strings{"[ ] 张伟", "[ ] 王芳", "[x] 李娜"}));
        window.Press(VK_SPACE);
        window.PressAlt(L'o');
      },
      L"已审核"));
  EXPECT_EQ(receivers, (Ids{2, 3}));
  EXPECT_EQ(Show(message.SelectedUser()), R"({2: {FUserID: 2, FName: "王芳"}, 3: {FUserID: 3, FName: "李娜"}})");
  EXPECT_EQ(users.Count(), 3) << "the stored list";
}

TEST_F(RecipientDialogTest, TicksByMouseForManyAndAfterTyping) {
  AddUser(L"Ann");
  AddUser(L"anna");
  BYTE keys[256] = {};
  Send([&](const RecipientWindow& window) {
    window.Click(1);
    EXPECT_EQ(window.Rows(), (Strings{"[x] 张伟", "[ ] 王芳", "[x] 李娜", "[x] Ann", "[x] anna"}));
    window.Click(1);
    keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
    window.Press(VK_DOWN);
    window.Press(VK_DOWN);
    keys[VK_SHIFT] = 0;
    SetKeyboardState(keys);
    EXPECT_EQ(SendMessageW(window.List(), LVM_GETSELECTEDCOUNT, 0, 0), 3);
    window.Press(VK_SPACE);
    EXPECT_EQ(window.Rows(), (Strings{"[ ] 张伟", "[ ] 王芳", "[ ] 李娜", "[x] Ann", "[x] anna"}));
    for (const auto letter : {L'A', L'n', L'n', L'a'}) window.Type(letter);
    window.Press(VK_SPACE);
    EXPECT_EQ(window.Rows()[4], "[ ] anna");
    window.Press(VK_RETURN);
  });
  EXPECT_EQ(receivers, Ids{4});
}

TEST_F(RecipientDialogTest, EveryWayOutIsAnAnswer) {
  const auto pressing = [](std::vector<UINT> keys) {
    return [keys](const RecipientWindow& window) {
      for (const UINT key : keys) window.Press(key);
    };
  };
  const struct {
    DialogUser::Actions leave;
    Ids receivers;
  } cases[] = {
      {pressing({VK_RETURN}), {1, 2, 3}},
      {pressing({VK_TAB, VK_RETURN}), {1, 2, 3}},
      {pressing({VK_ESCAPE}), {}},
      {pressing({VK_TAB, VK_TAB, VK_RETURN}), {}},
      {pressing({VK_SPACE, VK_DOWN, VK_SPACE, VK_DOWN, VK_SPACE, VK_RETURN}), {}},
      {[](const auto& window) { window.PressAlt(L'c'); }, {}},
      {[](const auto& window) { window.ClickCloseBox(); }, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    receivers.clear();
    EXPECT_EQ(Send(c.leave), !c.receivers.empty());
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(receivers, c.receivers);
    EXPECT_EQ(message.SelectedUser().Count(), static_cast<std::int32_t>(c.receivers.size()));
    EXPECT_EQ(users.Count(), 3);
  }
}

TEST_F(RecipientDialogTest, NoUserToShowIsNoWindow) {
  users = Record({});
  EXPECT_FALSE(Send({}));
  users = Record({{L"7", L"no package"}});
  EXPECT_TRUE(Send({}));
  EXPECT_EQ(receivers, Ids{7});
  EXPECT_EQ(shown, 0);
  message.ExcludeUser(List({Record({})}));
  EXPECT_FALSE(Send({}));
  EXPECT_EQ(shown, 0) << "the recipients are not known";
  EXPECT_EQ(boxes.Take(),
            (Boxes{Warning(L"类型不匹配"), Warning(L"TavioClassBillAction.Message : SendMessage\r\n对象未设置")}));
}

TEST_F(RecipientDialogTest, AThousandRecipientsOfAnyNameWithoutTranslations) {
  const Text title(300, L'长');
  texts.reset();
  const Text names[] = {L"李娜 🌸", L"R&D", Text(200, L'名'), L"", L"a\r\nb"};
  for (const auto& name : names) AddUser(name);
  while (users.Count() < 1000) AddUser(L"用户 " + std::to_wstring(users.Count() + 1));
  Strings expected;
  for (std::int32_t i = 1; i <= 1000; ++i) {
    expected.push_back("[x] " + Utf8(PackageAt(users, Key(i)).Get(L"FName"_key)->ToText()));
  }
  const auto untickTheLast = [&](const RecipientWindow& window) {
    EXPECT_EQ(window.Caption(), "消息接收用户 - " + Utf8(title));
    EXPECT_EQ(window.Texts(), (Strings{"消息接收用户", "用户名", "发送(&O)", "不发送(&C)"}));
    EXPECT_EQ(window.Rows(), expected);
    for (const UINT key : {VK_END, VK_SPACE, VK_RETURN}) window.Press(key);
  };
  EXPECT_TRUE(Send(untickTheLast, title));
  Ids all(999);
  std::iota(all.begin(), all.end(), 1);
  EXPECT_EQ(receivers, all);
}

TEST_F(RecipientDialogTest, CaptionsOfTheFormTextLoaderArrive) {
  FakeComponent loader(L"TavioFormText.FormTextLoader");
  ComPtr<IDispatch> kept;
  loader.On(L"LoadFrmResStrings", [&](Arguments& a) {
    kept = a.At(0).ToObject();
    const Component form(kept);
    EXPECT_EQ(Show(form.Read(L"Name")) + Show(form.Read(L"caption")), R"("frmMsgUser""消息接收用户")");
    form.Assign(L"Caption", Value(L"Recipients"));
    for (const auto* control : {L"tabMain", L"lvwUserSelect", L"cmdOK", L"CMDCANCEL"}) {
      const Component found(form.Read(control).ToObject());
      found.Assign(L"Caption", Value(TextView(found.Read(L"Name").ToText() + L"!")));
    }
    form.Read(L"cmdHelp");
    return Value();
  });
  Send(
      [](const RecipientWindow& window) {
        EXPECT_EQ(window.Caption(), "Recipients - 标题");
        EXPECT_EQ(window.Texts(), (Strings{"tabMain!", "lvwUserSelect!", "cmdOK!", "cmdCancel!"}));
        window.Press(VK_ESCAPE);
      },
      L"标题");
  EXPECT_EQ(loader.Calls(L"LoadFrmResStrings"), 1);
  Component(kept).Assign(L"Caption", Value(L"too late"));
}

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  return TRUE;
}

int Windows() {
  int count = 0;
  EnumThreadWindows(GetCurrentThreadId(), &CountWindow, reinterpret_cast<LPARAM>(&count));
  return count;
}

HANDLE Look() {
  HANDLE context = nullptr;
  GetCurrentActCtx(&context);
  ReleaseActCtx(context);
  return context;
}

TEST_F(RecipientDialogTest, LeavesTheHostAsItWas) {
  const HWND host = CreateWindowExW(0, L"EDIT", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                    nullptr, nullptr, nullptr);
  SetActiveWindow(host);
  SetFocus(host);
  const HANDLE look = Look();
  Send([](const RecipientWindow& window) { window.Press(VK_ESCAPE); });
  const int windows = Windows();
  Send([&](const RecipientWindow& window) {
    EXPECT_EQ(GetWindow(window.Window(), GW_OWNER), host);
    EXPECT_FALSE(IsWindowEnabled(host));
    EXPECT_NE(Look(), look);
    EXPECT_EQ(window.Caption(), "消息接收用户") << "without a title";
    window.Press(VK_ESCAPE);
  });
  EXPECT_EQ(Windows(), windows);
  EXPECT_TRUE(IsWindowEnabled(host));
  EXPECT_EQ(GetFocus(), host);
  EXPECT_EQ(Look(), look);
  DestroyWindow(host);
}

LRESULT CALLBACK RefuseLists(int code, WPARAM window, LPARAM details) {
  wchar_t name[32] = {};
  if (code == HCBT_CREATEWND) GetClassNameW(reinterpret_cast<HWND>(window), name, 32);
  return TextView(name) == WC_LISTVIEWW ? 1 : CallNextHookEx(nullptr, code, window, details);
}

TEST_F(RecipientDialogTest, AFailureInsideIsSilentAndChangesNothing) {
  const HHOOK hook = SetWindowsHookExW(WH_CBT, &RefuseLists, nullptr, GetCurrentThreadId());
  EXPECT_TRUE(Send({}));
  UnhookWindowsHookEx(hook);
  EXPECT_EQ(receivers, (Ids{1, 2, 3}));
  EXPECT_EQ(message.SelectedUser().Count(), 3);
  users.Set(L"2"_key, Record({{L"FName", Value::Integers({})}}));
  receivers.clear();
  EXPECT_TRUE(Send({}));
  EXPECT_EQ(receivers, (Ids{1, 2, 3}));
  EXPECT_EQ(shown, 0);
}

}  // namespace
}  // namespace tavio::test
