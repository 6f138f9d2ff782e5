#include <windows.h>
#include <commctrl.h>

#include "message/Message.h"
#include "message/dialog/frmMsgUser.h"
#include "tests/support/BoxWindow.h"
#include "tests/support/LibraryTest.h"

namespace tavio::test {
namespace {

using Ids = std::vector<std::int32_t>;

// The recipient dialog as a person sees and works it. Keys go the way of every message of a dialog.
class RecipientWindow {
 public:
  explicit RecipientWindow(HWND dialog) noexcept : dialog_(dialog) {}

  HWND Window() const noexcept { return dialog_; }
  HWND List() const noexcept { return GetDlgItem(dialog_, kLvwUserSelect); }
  std::string Caption() const { return Utf8(TextOf(dialog_)); }

  // "[x] Ann" or "[ ] Ann", in UTF-8.
  Strings Rows() const {
    Strings rows;
    const auto count = static_cast<WPARAM>(SendMessageW(List(), LVM_GETITEMCOUNT, 0, 0));
    for (WPARAM row = 0; row < count; ++row) {
      const auto state = SendMessageW(List(), LVM_GETITEMSTATE, row, LVIS_STATEIMAGEMASK);
      const auto name = Read<LVITEMW>(List(), LVM_GETITEMTEXTW, row, 0, &LVITEMW::pszText, &LVITEMW::cchTextMax);
      rows.push_back((state == INDEXTOSTATEIMAGEMASK(2) ? "[x] " : "[ ] ") + name);
    }
    return rows;
  }
  // The texts of tab, column, and the buttons that send and do not.
  Strings Texts() const {
    return {Read<TCITEMW>(GetDlgItem(dialog_, kTabMain), TCM_GETITEMW, 0, TCIF_TEXT, &TCITEMW::pszText,
                          &TCITEMW::cchTextMax),
            Read<LVCOLUMNW>(List(), LVM_GETCOLUMNW, 0, LVCF_TEXT, &LVCOLUMNW::pszText, &LVCOLUMNW::cchTextMax),
            Utf8(TextOf(GetDlgItem(dialog_, IDOK))), Utf8(TextOf(GetDlgItem(dialog_, IDCANCEL)))};
  }

  // A key, and Alt and a letter, that go to the control with the focus.
  void Press(UINT key) const { Send(WM_KEYDOWN, key, 1); }
  void PressAlt(wchar_t letter) const { Send(WM_SYSCHAR, letter, 1 << 29); }
  // On the check box of a row.
  void Click(int row) const {
    RECT place = {LVIR_BOUNDS, 0, 0, 0};
    SendMessageW(List(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    const LPARAM point = MAKELPARAM(place.left + 8, (place.top + place.bottom) / 2);
    SendMessageW(List(), WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(List(), WM_LBUTTONUP, 0, point);
  }
  // As a program ticks a box; -1 stands for all.
  void SetTick(int row, bool ticked) const {
    LVITEMW item = {};
    item.stateMask = LVIS_STATEIMAGEMASK;
    item.state = INDEXTOSTATEIMAGEMASK(ticked ? 2 : 1);
    SendMessageW(List(), LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  }
  void ClickCloseBox() const { PostMessageW(dialog_, WM_SYSCOMMAND, SC_CLOSE, 0); }

 private:
  // The text that a control puts into the structure of a question.
  template <class Asked>
  static std::string Read(HWND control, UINT question, WPARAM index, UINT mask, LPWSTR Asked::*text, int Asked::*size) {
    wchar_t buffer[256] = {};
    Asked asked = {};
    asked.mask = mask;
    asked.*text = buffer;
    asked.*size = 256;
    SendMessageW(control, question, index, reinterpret_cast<LPARAM>(&asked));
    return Utf8(buffer);
  }
  void Send(UINT message, WPARAM key, LPARAM details) const {
    MSG sent = {GetFocus(), message, key, details, 0, {}};
    if (!IsDialogMessageW(dialog_, &sent)) DispatchMessageW(&sent);
  }

  HWND dialog_;
};

// What a person does with the dialog, in the end closing it.
using Actions = std::function<void(const RecipientWindow&)>;

class RecipientDialogTest : public LibraryTest {
 protected:
  RecipientDialogTest() {
    props->props = L"UserID=16394;ConnectString={Server=a;Database=b};";
    command_.On(L"SendMessage", [this](Arguments& a) {
      receivers = a.At(4).ToIntegers();
      taken = Show(List({static_cast<std::int32_t>(a.At(1).ToBytes().size()), a.At(3), a.At(8)}));
    });
    message.ClassType(Record({}));
    message.TableInfo(Record({}));
    message.MustSelectMsgUser(true);
    std::int32_t id = 0;
    for (const auto* name : {L"张伟", L"王芳", L"李娜"}) {
      ++id;
      users.Set(Key(id), Record({{L"FUserID", id}, {L"FName", name}}));
    }
  }

  // Sends to `users` while a person does `actions`.
  bool Send(const Actions& actions, const Item& title = Value()) {
    message.SetMessage(Record({{L"FTitle", title}, {L"FMessage", L"内容"}, {L"MessageUsers", users}}));
    receivers.clear();
    int shown = 0;
    const DialogHook hook([&](HWND dialog) {
      if (!GetDlgItem(dialog, kLvwUserSelect)) return;
      ++shown;
      SetTimer(dialog, reinterpret_cast<UINT_PTR>(&actions), 1, &OnShown);
    });
    const bool sent = message.SendMessage(Dictionary());
    EXPECT_EQ(shown, 1);
    return sent;
  }

  Message message;
  Dictionary users = Record({});
  Ids receivers;      // of what was sent
  std::string taken;  // its bytes, title and command text

 private:
  // The window is shown, and has the focus, once its own message loop runs a timer.
  static void CALLBACK OnShown(HWND dialog, UINT, UINT_PTR actions, DWORD) noexcept {
    KillTimer(dialog, actions);
    (*reinterpret_cast<const Actions*>(actions))(RecipientWindow(dialog));
  }

  FakeComponent command_{L"TavioAppCommand.Command"};
};

TEST_F(RecipientDialogTest, ShowsTheRecipientsAndSendsToThoseThatStayTicked) {
  const auto actions = [](const RecipientWindow& window) {
    EXPECT_EQ(window.Caption(), "«消息接收用户» - 已审核");
    EXPECT_EQ(window.Texts(), (Strings{"«消息接收用户»", "«用户名»", "«发送(&O)»", "«不发送(&C)»"}));
    EXPECT_EQ(window.Rows(), (Strings{"[x] 张伟", "[x] 王芳", "[x] 李娜"}));
    EXPECT_EQ(GetFocus(), window.List());
    for (const UINT key : {VK_SPACE, VK_DOWN, VK_SPACE}) window.Press(key);
    EXPECT_EQ(window.Rows(), (Strings{"[ ] 张伟", "[ ] 王芳", "[x] 李娜"}));
    window.Press(VK_SPACE);
    window.PressAlt(L'o');
  };
  EXPECT_TRUE(Send(actions, L"已审核"));
  EXPECT_EQ(receivers, (Ids{2, 3}));
  EXPECT_EQ(Show(message.SelectedUser()), R"({2: {FUserID: 2, FName: "王芳"}, 3: {FUserID: 3, FName: "李娜"}})");
  EXPECT_EQ(users.Count(), 3) << "the stored list";
  const DialogHook hook([](HWND dialog) {
    ADD_FAILURE() << "given recipients are not asked about";
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  });
  EXPECT_TRUE(message.SendMessage(Record({{L"7", 1}})));
  EXPECT_EQ(receivers, Ids{7});
}

TEST_F(RecipientDialogTest, BoxesAreTickedByMouseAndByProgram) {
  EXPECT_TRUE(Send([](const RecipientWindow& window) {
    window.SetTick(-1, false);
    EXPECT_EQ(window.Rows(), (Strings{"[ ] 张伟", "[ ] 王芳", "[ ] 李娜"}));
    window.SetTick(0, true);
    window.Click(2);
    EXPECT_EQ(window.Rows(), (Strings{"[x] 张伟", "[ ] 王芳", "[x] 李娜"}));
    window.Click(0);
    window.Press(VK_RETURN);
  }));
  EXPECT_EQ(receivers, Ids{3});
}

TEST_F(RecipientDialogTest, TakesManyRecipientsAndUnusualTexts) {
  const Text title(300, L'长'), name = L"محمد 李\U0001F600";
  for (std::int32_t id = 4; id <= 1000; ++id) users.Set(Key(id), Record({{L"FUserID", id}, {L"FName", name}}));
  const auto actions = [&](const RecipientWindow& window) {
    EXPECT_EQ(window.Caption(), Utf8(L"«消息接收用户» - " + title));
    EXPECT_EQ(window.Rows().back(), "[x] " + Utf8(name));
    for (const UINT key : {VK_END, VK_SPACE, VK_RETURN}) window.Press(key);
  };
  EXPECT_TRUE(Send(actions, title));
  EXPECT_EQ(receivers.size(), 999u);
  EXPECT_EQ(receivers.back(), 999);
}

TEST_F(RecipientDialogTest, EveryOtherWayOutSendsToNobody) {
  const std::pair<const char*, Actions> ways[] = {
      {"Escape", [](const RecipientWindow& window) { window.Press(VK_ESCAPE); }},
      {"the button", [](const RecipientWindow& window) { window.PressAlt(L'c'); }},
      {"the close box", [](const RecipientWindow& window) { window.ClickCloseBox(); }},
      {"all unticked",
       [](const RecipientWindow& window) {
         window.SetTick(-1, false);
         window.Press(VK_RETURN);
       }},
  };
  for (const auto& [way, actions] : ways) {
    EXPECT_FALSE(Send(actions, Value::Null())) << way;
    EXPECT_EQ(receivers, Ids{}) << way;
    EXPECT_EQ(Show(message.SelectedUser()), "{}") << way;
  }
}

TEST_F(RecipientDialogTest, CaptionsOfTheFormTextLoaderArrive) {
  FakeComponent loader(L"TavioFormText.FormTextLoader");
  loader.On(L"LoadFrmResStrings", [&](Arguments& a) {
    const Component form(a.At(0).ToObject());
    EXPECT_EQ(Show(form.Read(L"Name")) + Show(form.Read(L"caption")), R"("frmMsgUser""«消息接收用户»")");
    form.Assign(L"Caption", Value(L"Recipients"));
    for (const auto* control : {L"tabMain", L"lvwUserSelect", L"cmdOK", L"CMDCANCEL"}) {
      const Component found(form.Read(control).ToObject());
      found.Assign(L"Caption", Value(TextView(found.Read(L"Name").ToText() + L"!")));
    }
  });
  const auto actions = [](const RecipientWindow& window) {
    EXPECT_EQ(window.Caption(), "Recipients");
    EXPECT_EQ(window.Texts(), (Strings{"tabMain!", "lvwUserSelect!", "cmdOK!", "cmdCancel!"}));
    window.Press(VK_ESCAPE);
  };
  Send(actions);
  EXPECT_EQ(loader.Calls(L"LoadFrmResStrings"), 1);
}

HWND HostWindow(DWORD style = 0) {
  return CreateWindowExW(0, L"EDIT", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE | style, 0, 0, 300, 200, nullptr,
                         nullptr, nullptr, nullptr);
}

TEST_F(RecipientDialogTest, NoWindowOfTheHostTakesInputMeanwhile) {
  const HWND windows[] = {HostWindow(), HostWindow(), HostWindow(WS_DISABLED)};
  for (const HWND active : {HWND(), windows[0]}) {
    SetActiveWindow(active);
    SetFocus(active);
    Send([&](const RecipientWindow& window) {
      EXPECT_EQ(GetWindow(window.Window(), GW_OWNER), active);
      for (const HWND host : windows) EXPECT_FALSE(IsWindowEnabled(host));
      window.Press(VK_ESCAPE);
    });
    for (const HWND host : windows) EXPECT_EQ(IsWindowEnabled(host), host != windows[2]);
    EXPECT_TRUE(IsWindowEnabled(GetActiveWindow()));
    EXPECT_TRUE(!active || GetFocus() == active);
  }
  for (const HWND host : windows) DestroyWindow(host);
}

TEST_F(RecipientDialogTest, HostThatGoesOnDoesNotChangeTheSending) {
  const auto lookUp = [](std::int32_t type) {
    return Record({{L"f", Record({{L"FKey", L"f"}, {L"FNeedSave", 1}, {L"FVisible", 1}, {L"FLookUpType", type}})},
                   {L"Page1", Record({{L"f", 1}})}});
  };
  message.ClassTypeID(5);
  message.TableInfo(lookUp(7));
  message.RefreshVariableValue(Record({{L"FID", 77}, {L"Page1", Record({{L"f", 9}})}}));
  message.ExcludeUser(List({2}));
  Send(
      [&](const RecipientWindow& window) {
        message.ClassTypeID(1003000);
        message.TableInfo(lookUp(0));
        message.RefreshVariableList();
        message.RefreshVariableValue(Record({{L"FID", 78}}));
        message.Data(Record({{L"Page1", Record({{L"f", 10}})}}));
        message.ExcludeUser({});
        message.GroupInfo(Record({{L"FCode", L"mnuEditUse"}}));
        message.NewMessage();
        message.SelectedUser(Record({}));
        window.Press(VK_RETURN);
      },
      L"标题");
  EXPECT_EQ(receivers, (Ids{1, 3, 9}));
  EXPECT_EQ(taken, R"([5, "标题", "FUNCID:-1|FFlag:5|FInterID:77"])");
  EXPECT_EQ(message.SelectedUser().Count(), 3) << "which the object itself keeps";
}

TEST_F(RecipientDialogTest, MissingNamesComeFromThePlatformIntoTheEntries) {
  FakeComponent billInfo(L"TavioMBOSMultiCheck.BillInfo");
  FakeRecords records(
      List({Record({{L"FUserID", 4}, {L"FName", L"王芳"}, {L"FUserName", L"wang"}}),
            Record({{L"FUserID", 99}, {L"FName", L"nobody's"}}), Record({{L"FUserID", L"5"}, {L"FUserName", L"li"}}),
            Record({{L"FUserID", 3}, {L"FName", L"not asked for"}})}));
  Strings connected;
  billInfo.On(L"GetUsers", [&](Arguments& a) {
    EXPECT_EQ(a.Count(), 1u);
    connected.push_back(Show(a.At(0)));
    return Value(records.New());
  });
  users = Record({{L"3", Record({{L"FName", L"张伟"}})}});
  const auto showing = [](Strings rows) {
    return [rows](const RecipientWindow& window) {
      EXPECT_EQ(window.Rows(), rows);
      window.Press(VK_SPACE);
      window.Press(VK_RETURN);
    };
  };
  EXPECT_FALSE(Send(showing({"[x] 张伟"})));
  EXPECT_EQ(billInfo.Created(), 0) << "nothing is asked where every name is known";
  users.Set(L"4"_key, Record({{L"FUserID", 4}}));
  users.Set(L"5"_key, Record({{L"FName", L"Unknown"}}));
  users.Set(L"6"_key, Record({}));
  users.Set(L"7"_key, Value(L"no record"));
  EXPECT_TRUE(Send(showing({"[x] 张伟", "[x] 王芳", "[x] li", "[x] Unknown"})));
  EXPECT_EQ(Show(message.SelectedUser()),
            R"({4: {FUserID: 4, FName: "王芳"}, 5: {FName: "li"}, 6: {}, 7: "no record"})");
  props->props = L"UserID=16394;Language=chs;";
  users = Record({{L"6", Record({})}});
  EXPECT_FALSE(Send(showing({"[x] Unknown"})));
  EXPECT_EQ(connected, (Strings{R"("Server=a;Database=b")", R"("UserID=16394;Language=chs;")"}));
}

}  // namespace
}  // namespace tavio::test
