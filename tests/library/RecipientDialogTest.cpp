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
    std::int32_t id = 0;
    for (const auto* name : {L"张伟", L"王芳", L"李娜"}) {
      ++id;
      users.Set(Key(id), Record({{L"FUserID", id}, {L"FName", name}}));
    }
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
  Dictionary users = Record({});
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

TEST_F(RecipientDialogTest, TakesManyRecipientsAndUnusualTexts) {
  const Text title(300, L'长');
  users.Set(Key(4), Record({{L"FUserID", 4}, {L"FName", L"李娜 \U0001F600"}}));
  users.Set(Key(5), Record({{L"FUserID", 5}, {L"FName", L"محمد علي"}}));
  for (std::int32_t id = 6; id <= 1000; ++id) users.Set(Key(id), Record({{L"FUserID", id}, {L"FName", L"用户"}}));
  const auto actions = [&](const RecipientWindow& window) {
    EXPECT_EQ(window.Caption(), Utf8(L"消息接收用户 - " + title));
    const auto rows = window.Rows();
    EXPECT_EQ(rows.size(), 1000u);
    EXPECT_EQ(rows[3], "[x] 李娜 \xF0\x9F\x98\x80");
    EXPECT_EQ(rows[4], "[x] محمد علي");
    for (const UINT key : {VK_END, VK_SPACE, VK_RETURN}) window.Press(key);
  };
  EXPECT_TRUE(Send(actions, title));
  EXPECT_EQ(receivers.size(), 999u);
  EXPECT_EQ(receivers.back(), 999);
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
      {pressing({VK_ESCAPE}), {}},
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
  }
}

TEST_F(RecipientDialogTest, CaptionsOfTheFormTextLoaderArrive) {
  FakeComponent loader(L"TavioFormText.FormTextLoader");
  loader.On(L"LoadFrmResStrings", [&](Arguments& a) {
    const Component form(a.At(0).ToObject());
    EXPECT_EQ(Show(form.Read(L"Name")) + Show(form.Read(L"caption")), R"("frmMsgUser""消息接收用户")");
    form.Assign(L"Caption", Value(L"Recipients"));
    for (const auto* control : {L"tabMain", L"lvwUserSelect", L"cmdOK", L"CMDCANCEL"}) {
      const Component found(form.Read(control).ToObject());
      found.Assign(L"Caption", Value(TextView(found.Read(L"Name").ToText() + L"!")));
    }
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
}

TEST_F(RecipientDialogTest, LeavesTheHostAsItWas) {
  const HWND host = CreateWindowExW(0, L"EDIT", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                    nullptr, nullptr, nullptr);
  SetActiveWindow(host);
  SetFocus(host);
  Send([&](const RecipientWindow& window) {
    EXPECT_EQ(GetWindow(window.Window(), GW_OWNER), host);
    EXPECT_FALSE(IsWindowEnabled(host));
    EXPECT_EQ(window.Caption(), "消息接收用户") << "without a title";
    window.Press(VK_ESCAPE);
  });
  EXPECT_TRUE(IsWindowEnabled(host));
  EXPECT_EQ(GetFocus(), host);
  DestroyWindow(host);
}

}  // namespace
}  // namespace tavio::test
