#include <string>

#include "bench/Bench.h"
#include "bench/Roads.h"
#include "message/Message.h"
#include "tests/support/FakeComponent.h"

namespace tavio::bench {
namespace {

Dictionary Recipients(std::int32_t count) {
  const auto recipients = Dictionary::New();
  for (std::int32_t i = 1; i <= count; ++i) {
    const auto entry = Dictionary::New();
    entry.Set(L"FUserID"_key, Value(16000 + i));
    entry.Set(L"FMessageID"_key, Value(std::int16_t{0}));
    recipients.Set(Key(16000 + i), entry);
  }
  return recipients;
}

void WalkByPosition(const Dictionary& recipients) {
  const auto count = recipients.Count();
  for (std::int32_t i = 1; i <= count; ++i) {
    const Text name = recipients.Name(i);
    const Value value = recipients.Get(Key(TextView(name)))->Copy();
  }
}

double Sending(Message& message, const Dictionary& recipients) {
  message.GetMessage().Set(L"MessageUsers"_key, recipients);
  return Seconds([&] { message.SendMessage(Dictionary()); });
}

}  // namespace

void MeasureSending() {
  test::FakeComponent props(L"TavioSharedProps.PropStore");
  props.On(L"GetProperty", [] { return Value(L"UserID=16394;ConnectString={Server=x};"); });
  test::FakeComponent command(L"TavioAppCommand.Command");
  command.On(L"SendMessage", [] { return Value(); });

  Message message;
  message.ClassType(Dictionary::New());
  message.TableInfo(Dictionary::New());
  message.NewMessage();
  const auto few = Recipients(3277), many = Recipients(32767);
  const double sending = Sending(message, many);
  PrintRatio("SendMessage to 32,767 / one walk over the recipients", sending, Seconds([&] { WalkByPosition(many); }),
             3);
  PrintRatio("SendMessage to 32,767 / to 3,277", sending, Sending(message, few), 0);
}

}  // namespace tavio::bench
