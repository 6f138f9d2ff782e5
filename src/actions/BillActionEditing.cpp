#include "actions/ActionCode.h"
#include "actions/ActionStatus.h"
#include "actions/BillActions.h"
#include "foundation/environment/Operation.h"
#include "foundation/environment/ResText.h"
#include "foundation/environment/ShowMessage.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/Text.h"

namespace tavio {
namespace {

constexpr wchar_t kDeleteAllQuestion[] = L"如果删除全部操作，系统会重新加载预定义操作给单据，仍然确定要删除吗?";
// Yes and No, the second one default. Removing the last action asks with the question icon, removing all with the
// information icon.
constexpr std::int32_t kAskForLast = MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2;
constexpr std::int32_t kAskForAll = MB_YESNO | MB_ICONINFORMATION | MB_DEFBUTTON2;

const wchar_t* TextOf(ActionCodeFault fault) noexcept {
  switch (fault) {
    case ActionCodeFault::kEmpty:
      return L"操作代码不能为空！";
    case ActionCodeFault::kNoLetterFirst:
      return L"操作代码必须以字符开头！";
    case ActionCodeFault::kBlankInside:
      return L"操作代码中间不能包含空格！";
    default:
      return L"操作代码只能由字符和数字组成！";
  }
}

bool UserAgrees(std::int32_t style) { return ShowMessage(LoadResText(kDeleteAllQuestion), style, kTitle) == IDYES; }

// An action that never got a status counts as new.
std::int32_t StatusOf(const Dictionary& action) {
  const auto status = action.GetValue(L"FStatus"_key, Value(kStatusNew));
  return status->IsNull() ? kStatusNew : status->ToInt32();
}

void MarkDeleted(const Dictionary& action) { action.Set(L"FStatus"_key, Value(StatusAfterRemoval(StatusOf(action)))); }

void TakeOverIdentity(const Dictionary& stored, const Dictionary& copy) {
  copy.Set(L"FID"_key, *stored.Get(L"FID"_key));
  const auto status = stored.GetValue(L"FStatus"_key);
  const bool hasStatus = !status->IsEmpty() && !status->IsNull();
  copy.Set(L"FStatus"_key, Value(hasStatus ? StatusAfterEdit(status->ToInt32()) : kStatusModified));
}

}  // namespace

// Shows why a code is refused.
bool BillActions::Accept(const Dictionary& action) const {
  const auto fault = CheckActionCode(TextAt(action, L"FCode"_key));
  if (fault == ActionCodeFault::kNone) return true;
  Warn(TextOf(fault));
  return false;
}

// The copy that is stored as a new action, unless a stored one lends it its identity.
Dictionary BillActions::Prepare(const Dictionary& action) {
  auto copy = action.Clone();
  copy.Set(L"FID"_key, Value(std::int32_t{0}));
  copy.Set(L"FStatus"_key, Value(kStatusNew));
  if (!copy.Lookup(L"Messages"_key)) copy.Set(L"Messages"_key, Dictionary());
  if (!actions_) actions_ = Dictionary::New();
  return copy;
}

// Stores one more copy, in place of the entry `replacedKey` if there is one. All that can fail of a host's package
// comes before the entry goes.
void BillActions::Store(const Dictionary& copy, const Key* replacedKey) {
  const auto collection = actions_;
  const auto stored = copy.Clone();
  const Key key{TextView(stored.Get(L"FCode"_key)->ToText())};
  if (replacedKey) collection.Remove(*replacedKey);
  collection.Set(key, stored);
}

bool BillActions::AddNew(const Dictionary& action) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillActions.AddNew 加入操作集合",
                           .report = L"TavioClassBillAction.BillActions : AddNew "};
  return Operation<bool>(kLabels, [&](bool& stored) {
    RequireBinding(L"AddNew");
    if (!action || !Accept(action)) return;
    const auto copy = Prepare(action);
    auto storedCode = TextAt(copy, L"FCode_Old"_key);
    if (storedCode.empty()) storedCode = TextAt(copy, L"FCode"_key);
    if (const auto found = FindReported(storedCode)) {
      Replace(*found, copy);
    } else {
      Store(copy);
    }
    stored = true;
  });
}

// The action-management screen knows nothing of messages: those stored stay.
void BillActions::Replace(const Found& found, const Dictionary& copy) {
  TakeOverIdentity(found.action, copy);
  if (const auto messages = found.action.Find(L"Messages"_key)) copy.Set(L"Messages"_key, **messages);
  const Key key{TextView(found.key)};
  Store(copy, &key);
}

bool BillActions::Update(const Dictionary& action) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillActions.Update 更新操作数据包",
                           .report = L"TavioClassBillAction.BillActions : Update "};
  return Operation<bool>(kLabels, [&](bool& stored) {
    RequireBinding(L"Update");
    if (!action || !Accept(action)) return;
    const auto copy = Prepare(action);
    if (const auto found = FindReported(TextAt(copy, L"FCode"_key))) TakeOverIdentity(found->action, copy);
    Store(copy);
    stored = true;
  });
}

bool BillActions::IsLastLive(TextView code) const {
  const Text upperCode = ToUpper(code);
  for (const auto& entry : Entries(actions_)) {
    if (ToUpper(entry.KeyView()) != upperCode && !IsDeleted(StatusOf(entry.Record()))) return false;
  }
  return true;
}

bool BillActions::Remove(TextView code) noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillActions.Remove 从操作集合中移去指定的操作",
                           .report = L"TavioClassBillAction.BillActions : Remove "};
  return Operation<bool>(kLabels, [&](bool& removed) {
    const auto found = FindReported(code);
    if (!found || (IsLastLive(code) && !UserAgrees(kAskForLast))) return;
    const auto collection = actions_;  // the host goes on while its user is asked
    const auto stored = collection ? collection.Find(Key(TextView(found->key))) : std::nullopt;
    if (!stored) return;
    MarkDeleted(Dictionary(**stored));
    removed = true;
  });
}

void BillActions::RemoveAll() noexcept {
  constexpr Labels kLabels{.log = L"TavioClassBillAction.BillActions.RemoveAll 清空所有操作",
                           .report = L"TavioClassBillAction.BillActions : RemoveAll "};
  Operation(kLabels, [&] {
    if (!actions_ || !UserAgrees(kAskForAll) || !actions_) return;
    for (const auto& entry : Entries(actions_)) MarkDeleted(entry.Record());
  });
}

}  // namespace tavio
