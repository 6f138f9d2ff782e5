// Sendings over the four channels, each tenth of them failing: 300, or as many as TAVIO_SOAK_SENDINGS tells.

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "com/server/Dispatch.h"
#include "foundation/values/OwnModule.h"
#include "tests/library/faults/FaultTable.h"
#include "tests/library/faults/Hosts.h"
#include "tests/support/Held.h"

namespace tavio::test {
namespace {

namespace fs = std::filesystem;

fs::path Folder() { return GetAppFolder(); }
std::ptrdiff_t Files() { return std::distance(fs::directory_iterator(Folder()), {}); }

class SendingSoakTest : public LibraryTest {
 protected:
  SendingSoakTest() {
    props->props = L"Language=chs;ConnectString=x;UserID=16394;";
    RemoveMessageFiles();
  }

  ~SendingSoakTest() override { com::Dispatch::ForgetAll(); }

  // Four sendings, one over each channel, all of which fail where there are no gateways.
  void SendFour(bool fails) {
    gateways_.absent = fails ? kGateways : std::vector<std::wstring>();
    for (const auto* channel : {L"SendMessage", L"SendEmail", L"SendShortMessage", L"SendSMS"}) {
      const bool mails = TextView(channel) == L"SendEmail";
      const Value sent = mails ? sender_.message.Call(channel, nobody_) : sender_.message.Call(channel);
      EXPECT_EQ(sent.ToBool(), !fails) << Utf8(channel);
    }
    EXPECT_EQ(boxes.Take().size(), fails ? 2u : 0u) << "of the system message and of the mail";
    // The file of a system message stays if it fails between its writing and its end.
    if (fails) {
      EXPECT_EQ(RemoveMessageFiles(), 1u);
    }
    platform_.Forget();
    log->Forget();
  }

 private:
  const std::vector<std::wstring> kGateways = {L"TavioAppCommand.Command", L"Jmail.Message",
                                               L"MorlaMobileOpen.MorlaSendMail", L"MorlaMobileOpen.MobileOpen"};
  Platform platform_;
  Fault gateways_{false};
  const Value nobody_{ComPtr<IDispatch>()};
  Sender sender_;
};

TEST_F(SendingSoakTest, UseStaysFlat) {
  constexpr std::size_t kNoise = 256 * 1024;
  const auto* told = std::getenv("TAVIO_SOAK_SENDINGS");
  const long rounds = (told ? std::atol(told) : 300) / 4;
  Held first = {};
  const auto files = Files();
  for (long round = 0; round < rounds; ++round) {
    if (round == rounds / 3) first = HeldNow();
    SendFour(round % 10 == 9);
    if (HasFailure()) break;
  }
  const auto last = HeldNow();
  std::printf("%ld sendings: from %zu to %zu KB, from %lu to %lu handles\n", rounds * 4, first.memory / 1024,
              last.memory / 1024, first.handles, last.handles);
  EXPECT_LE(last.memory, first.memory + kNoise);
  EXPECT_LE(last.handles, first.handles);
  EXPECT_EQ(Files(), files);
}

}  // namespace
}  // namespace tavio::test
