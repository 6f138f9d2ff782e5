#include "foundation/environment/Operation.h"
#include "foundation/values/Error.h"
#include "message/Message.h"

namespace tavio {

void Message::RequireTemplate(TextView operation) const {
  if (classType_ && tableInfo_) return;
  throw Error::NotBound(L"TavioClassBillAction.Message." + Text(operation), L"请先设置本组件关联的业务对象模板信息!");
}

void Message::NewMessage() noexcept {
  Operation({.log = L"TavioClassBillAction.Message.NewMessage 新建消息",
             .report = L"TavioClassBillAction.Message : NewMessage"},
            [&] {
              RequireTemplate(L"NewMessage");
              message_ = Dictionary();  // gone too where no new one can be made
              message_ = Dictionary::New();
              message_.Set(L"FID"_key, Value(std::int16_t{0}));
              message_.Set(L"FTitle"_key, Value(L""));
              message_.Set(L"FMessage"_key, Value(L""));
              message_.Set(L"FMessageDescriptions"_key, Value(L""));
              message_.Set(L"FSendType"_key, Value(std::int16_t{1}));
              const auto empty = Dictionary::New();
              message_.Set(L"MessageUsers"_key, empty.Clone());
              message_.Set(L"EmailUsers"_key, empty.Clone());
              message_.Set(L"SMSUsers"_key, empty.Clone());
            });
}

bool Message::SetMessage(const Dictionary& message) noexcept {
  return Operation<bool>({.report = L"TavioClassBillAction.Message : SetMessage", .resultAfterFailure = Labels::kKept},
                         [&](bool& accepted) {
                           RequireTemplate(L"SetMessage");
                           message_ = message;
                           accepted = true;
                           if (!message_ || message_.Count() == 0) return NewMessage();
                           bool caption = true, value = false, name = false;
                           const auto shown =
                               TransMessage(message_.Get(L"FMessage"_key)->ToText(), caption, value, name);
                           message_.Set(L"FMessageDescriptions"_key, Value(TextView(shown)));
                         });
}

}  // namespace tavio
