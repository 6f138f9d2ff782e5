#include "tests/library/faults/FaultRules.h"

namespace tavio::test {
namespace {

// The first rule that fits holds. Those for all ways are for failures; one that names its ways holds for answers too
// that are taken for what they stand for.
struct Rule {
  std::wstring_view act, object, member;  // whole, or what stands before a "*"
  unsigned ways;
  int left;  // so many of the same at least follow the touch
  Effect effect;
};

bool Fits(std::wstring_view name, std::wstring_view wanted) {
  if (!wanted.ends_with(L'*')) return name == wanted;
  return name.starts_with(wanted.substr(0, wanted.size() - 1));
}

constexpr wchar_t kNotSet[] = L"«对象未设置»";
constexpr unsigned kAnswers = kAllWays & ~(kNotCreated | kMissing | kRaises | kWritesBack);

const Effect kUnnoticed = {};
const Effect kSilent = {{}, Result::kFailed};
const Effect kReported = {{{kOwn}}, Result::kFailed, State::kAtTouch};
// Nothing is wrong, and something is left undone; or what came is taken as it is.
const Effect kLeftOut = {{}, Result::kHealthy, State::kAtTouch};
const Effect kTaken = {{}, Result::kHealthy, State::kAny};

const Effect kNoSender = {{{kOwn, L"«缺少共享属性» UserID"}}, Result::kFailed, State::kAtTouch};
const Effect kNotReloaded = {{{L"BillActions : Initialize"}, {kOwn}}, Result::kFailed, State::kAtTouch};
const Effect kUnmasked = {{{L"BillActions : AssignRightMask"}}};
const Effect kEmptied = {{{kOwn}}, Result::kFailed, State::kEmptied};
const Effect kNotFound = {{{L"BillActions : Lookup "}}, Result::kFailed, State::kAtTouch};
constexpr char kStoredAction[] =
    R"(FID: 5, FStatus: 0, FClassTypeID: 7, FEnvironment: 3, FBillType: 1, FRightMask: 0, FIsPredefine: false, )"
    R"(Messages: {1: {FEnvironment: 1, Message: {FTitle: "标题"}}}})";
const Effect kStoredAsNew = {{{L"BillActions : Lookup "}},
                             Result::kHealthy,
                             State::kAtTouch,
                             0,
                             {kStoredAction, "Messages: {}, FID: 0, FStatus: 1}"}};
const Effect kMismatch = {{{kOwn, L"«类型不匹配»"}}, Result::kFailed, State::kAtTouch};

const Effect kMissed = {{{kOwn, kNotSet}}, Result::kFailed};
const Effect kNoScenarios = {{{L"BillEnvironments : Initialize "}}, Result::kFailed};
const Effect kNoScenariosMissed = {{{L"BillEnvironments : Initialize "}, {kOwn, kNotSet}}, Result::kFailed};
const Effect kHalfSorted = {{{kOwn}}, Result::kBegun};
const Effect kNoCatalogue = {{{L"PredefineActions : Initialize "}}, Result::kFailed};
const Effect kNoCatalogueMissed = {{{L"PredefineActions : Initialize "}, {kOwn, kNotSet}}, Result::kFailed};

const Effect kNoText = {{{L"Message : TransMessage"}}};
const Effect kUndescribed = {
    {{L"Message : TransMessage"}}, Result::kHealthy, State::kHealthy, 0, {R"(s: "单号 [单号]")", R"(s: "")"}};
const Effect kKept = {{{kOwn}}, Result::kHealthy, State::kAtTouch};
const Effect kNameless = {{}, Result::kHealthy, State::kHealthy, 0, {R"(, FName: "张伟")", ""}};
const Effect kNotExcluded = {{{L""}, {kOwn, kNotSet}}, Result::kFailed, State::kAtTouch};
const Effect kNotExcludedAgain = {{{L"Message : ExcludeUsers"}, {kOwn, kNotSet}}, Result::kFailed, State::kAtTouch};
const Effect kAnotherUser = {{}, Result::kHealthy, State::kHealthy, 0, {"11", "9"}};
const Effect kNoLength = {{{L""}}};
const Effect kFileLeft = {{{kOwn}}, Result::kFailed, State::kAtTouch, 1};
const Effect kRefused = {{{L"", L"«发送邮件失败,请检查邮箱是否配置正确！»"}}, Result::kFailed};
const Effect kNotSent = {{{L"", L"«发送邮件失败！»"}}, Result::kFailed};

const Rule kRules[] = {
    // Without the registered containers, those beside the library serve as well.
    {L"*", L"Vexo.*", L"*", kAllWays, 0, kUnnoticed},
    // The log and the texts are never missed; the properties by the system message alone, whose sender they name.
    {L"*", L"MorlaLogMsg.Log", L"*", kAllWays, 0, kUnnoticed},
    {L"*", L"TavioResLoader.Loader", L"*", kAllWays, 0, kUnnoticed},
    {L"SendMessage*", L"TavioSharedProps.PropStore", L"*", kNotCreated, 1, kUnnoticed},
    {L"SendMessage*", L"TavioSharedProps.PropStore", L"*", kAllWays & ~kNotCreated, 2, kUnnoticed},
    {L"SendMessage*", L"TavioSharedProps.PropStore", L"*", kAllWays, 0, kNoSender},
    {L"*", L"TavioSharedProps.PropStore", L"*", kAllWays, 0, kUnnoticed},

    // A load that fails empties the collection, and a save that cannot load again fails twice.
    {L"Initialize", L"TavioMClass.ClassInfo", L"GetBillActions", kNothing, 0, kLeftOut},
    {L"Save", L"TavioMClass.ClassInfo", L"GetBillActions", kNothing, 0, kLeftOut},
    {L"Save", L"TavioMClass.ClassInfo", L"GetBillActions", kAllWays, 0, kNotReloaded},
    {L"Save", L"loaded", L"*", kAllWays, 0, kNotReloaded},
    {L"Save", L"TavioMClass.ClassInfo", L"*", kNotCreated, 1, kUnmasked},
    {L"Save", L"TavioMClass.ClassInfo", L"*", kNotCreated, 0, kNotReloaded},
    {L"Save", L"TavioMClass.ClassDefineUpdate", L"*", kAllWays, 0, kReported},
    {L"Save", L"*", L"*", kAllWays, 0, kUnmasked},
    {L"NewBill", L"template", L"Value", kStranger, 0, kUnnoticed},
    {L"NewBill", L"*", L"GetDefaultActions", kAnswers, 0, kEmptied},
    {L"DownloadFile", L"*", L"*", kNotCreated, 0, kUnnoticed},

    // A search that fails is reported as LookUp's, and finds nothing.
    {L"AddNew", L"copy", L"GetValue", kStranger, 0, kMismatch},
    {L"AddNew", L"action", L"Lookup", kMissing, 0, kStoredAsNew},
    {L"AddNew", L"action", L"Value", kAllWays, 2, kStoredAsNew},
    {L"AddNew", L"collection", L"Remove", kAllWays, 0, kReported},
    {L"AddNew", L"collection", L"Value=", kAllWays, 0, kReported},
    {L"AddNew", L"collection", L"*", kAllWays, 0, kStoredAsNew},
    {L"Update", L"action", L"Lookup", kMissing, 0, kStoredAsNew},
    {L"Update", L"action", L"Value", kAllWays, 1, kStoredAsNew},
    {L"Update", L"collection", L"Value=", kAllWays, 0, kReported},
    {L"Update", L"collection", L"*", kAllWays, 0, kStoredAsNew},
    {L"Remove", L"action", L"Lookup", kMissing, 0, kNotFound},
    {L"Remove", L"action", L"Value", kAllWays, 0, kNotFound},
    {L"Remove", L"collection", L"Lookup", kAllWays, 0, kReported},
    {L"Remove", L"collection", L"Count", kAllWays, 1, kNotFound},
    {L"Remove", L"collection", L"Name", kRaises | kStranger, 2, kNotFound},
    {L"Remove", L"collection", L"Value", kRaises | kStranger, 2, kNotFound},
    {L"Remove", L"collection", L"*", kMissing, 0, kNotFound},
    {L"AddAppendVariables", L"collection", L"Value", kStranger, 0, kTaken},

    // What could not be loaded is missed by who walks it. What is half sorted stays so.
    {L"scenarios.GetClassMenu", L"TavioMClass*", L"*", kNothing, 0, kSilent},
    {L"scenarios.GetClassMenu", L"TavioMClass*", L"*", kAllWays, 0, kReported},
    {L"scenarios.GetList", L"TavioMClass*", L"*", kNothing, 0, kSilent},
    {L"scenarios.GetList", L"TavioMClass*", L"*", kAllWays, 0, kNoScenarios},
    {L"scenarios.GetSort*", L"TavioMClass*", L"*", kNothing, 0, kSilent},
    {L"scenarios.GetSort*", L"TavioMClass*", L"*", kAllWays, 0, kNoScenarios},
    {L"scenarios.GetSort*", L"new list", L"Add", kAllWays, 0, kHalfSorted},
    {L"scenarios.GetSort*", L"source", L"*", kMissing, 0, kNoScenarios},
    {L"scenarios*", L"TavioMClass*", L"*", kNothing, 0, kMissed},
    {L"scenarios*", L"TavioMClass*", L"*", kAllWays, 0, kNoScenariosMissed},
    {L"catalogue*", L"TavioMClass*", L"*", kNothing, 0, kMissed},
    {L"catalogue*", L"TavioMClass*", L"*", kAllWays, 0, kNoCatalogueMissed},
    {L"catalogue.GetList first", L"catalogue", L"*", kAllWays, 0, kNoCatalogue},

    // A text that cannot be translated is reported as TransMessage's, and empty.
    {L"SetMessage", L"variable*", L"*", kAllWays, 0, kUndescribed},
    {L"SendMessage*", L"variable users", L"*", kAllWays, 0, kReported},
    {L"Send*", L"variable*", L"*", kAllWays, 0, kNoText},
    {L"Send*", L"group", L"*", kAllWays, 0, kNoText},
    {L"AddVariable", L"variable*", L"GetValue", kStranger, 0, kTaken},
    {L"AddUser", L"package", L"Value", kStranger, 0, kTaken},
    {L"RemoveUser", L"users", L"Clone", kAllWays, 0, kKept},
    {L"RemoveUser", L"copy", L"*", kAllWays, 0, kKept},
    {L"RemoveUser", L"package", L"Value*", kAllWays, 0, kKept},

    // Recipients from whom nobody could be excluded are none. The second time, users of bill fields are among them.
    {L"SendMessage*", L"excluded", L"*", kAllWays, 1, kNotExcluded},
    {L"SendMessage*", L"excluded", L"*", kAllWays, 0, kNotExcludedAgain},
    {L"SendMessage*", L"sent to", L"Remove", kAllWays, 0, kNotExcluded},
    {L"SendMessage confirmed", L"sent to", L"Lookup", kRaises | kStranger, 0, kNotExcluded},
    {L"SendMessage to given", L"sent to", L"Lookup", kMissing, 0, kNotExcluded},
    {L"SendMessage*", L"sent to", L"Lookup", kRaises | kStranger, 2, kNotExcluded},
    {L"SendMessage*", L"sent to", L"Lookup", kAllWays, 1, kReported},
    {L"SendMessage*", L"sent to", L"Lookup", kAllWays, 0, kNotExcludedAgain},
    {L"SendMessage to given", L"package", L"Value", kStranger, 0, kTaken},
    // A bill field that holds no package names nobody.
    {L"SendMessage*", L"bill page", L"GetValue", kStranger, 0, kLeftOut},
    {L"SendMessage*", L"manager", L"Lookup", kMissing, 0, kLeftOut},
    // The dialog fails in silence.
    {L"SendMessage confirmed", L"sent to", L"Clone", kAllWays, 0, kNameless},
    {L"SendMessage confirmed", L"copy", L"Lookup", kRaises | kStranger, 1, kReported},
    {L"SendMessage confirmed", L"copy", L"Lookup", kRaises | kStranger, 0, kNotExcludedAgain},
    {L"SendMessage confirmed", L"copy", L"Value=", kAllWays, 0, kReported},
    {L"SendMessage confirmed", L"copy", L"Value", kAllWays, 0, kNameless},
    {L"SendMessage confirmed", L"copy", L"*", kRaises, 2, kNameless},
    {L"SendMessage confirmed", L"copy", L"*", kRaises, 0, kReported},
    {L"SendMessage confirmed", L"copy", L"*", kAllWays, 0, kNameless},
    {L"SendMessage confirmed", L"user", L"GetValue", kStranger, 0, kUnnoticed},
    {L"SendMessage confirmed", L"user", L"*", kAllWays, 0, kNameless},
    {L"SendMessage confirmed", L"texts", L"*", kAllWays, 0, kUnnoticed},
    {L"SendMessage confirmed", L"package", L"GetValue", kRaises, 2, kReported},
    {L"SendMessage confirmed", L"package", L"GetValue", kRaises, 1, kUnnoticed},

    // Nobody is kept from sending by a name that is not known, by the texts of the form or by the size of the file.
    {L"SendMessage confirmed", L"TavioFormText*", L"*", kAllWays, 0, kUnnoticed},
    {L"SendMessage confirmed", L"ADODB*", L"EOF", kEmpty, 1, kUnnoticed},
    {L"SendMessage confirmed", L"ADODB*", L"EOF", kEvenTaken, 2, kNameless},
    {L"SendMessage confirmed", L"ADODB*", L"EOF", kEvenTaken, 1, kUnnoticed},
    {L"SendMessage confirmed", L"ADODB*", L"MoveNext", kAllWays, 0, kUnnoticed},
    {L"SendMessage confirmed", L"ADODB*", L"*", kEvenTaken, 1, kNameless},
    {L"SendMessage confirmed", L"TavioMBOSMultiCheck*", L"*", kAllWays, 0, kNameless},
    {L"SendMessage*", L"ADODB*", L"EOF", kNumber, 0, kLeftOut},
    {L"SendMessage*", L"ADODB*", L"Value", kNumber, 0, kAnotherUser},
    {L"SendMessage*", L"ADODB*", L"Value", kAnswers, 0, kLeftOut},
    {L"SendMessage*", L"Scripting*", L"*", kAllWays, 0, kNoLength},
    {L"SendMessage*", L"TavioAppCommand*", L"*", kAllWays, 0, kFileLeft},

    // A mail goes without its print, and without the gateway by SMTP, with the first settings that can be had.
    {L"Send*", L"TavioMSmsManager.clsBillUseInfo", L"UserInfoEx", kAllWays, 0, kUnnoticed},
    {L"Send*", L"TavioMSmsManager.clsBillUseInfo", L"Get*", kNothing, 0, kSilent},
    {L"SendEmail*", L"TavioClassBillPrint*", L"*", kAllWays, 0, kUnnoticed},
    {L"SendEmail*", L"template", L"*", kAllWays, 0, kUnnoticed},
    {L"SendEmail*", L"settings", L"Lookup", kAllWays, 0, kUnnoticed},
    {L"SendEmail by*", L"new record", L"GetValue", kRaises, 4, kSilent},
    {L"SendEmail by*", L"new record", L"GetValue", kRaises, 0, kNotSent},
    {L"SendEmail by*", L"new record", L"Value", kRaises, 6, kSilent},
    {L"SendEmail by*", L"new record", L"Value", kRaises, 0, kNotSent},
    {L"Send*", L"new record", L"GetValue", kStranger, 0, kSilent},
    {L"Send*", L"user", L"GetValue", kStranger, 0, kSilent},
    {L"SendEmail*", L"MorlaMobileOpen*", L"*", kNotCreated, 0, kUnnoticed},
    {L"SendEmail*", L"MorlaMobileOpen*", L"*", kNumber | kText, 0, kRefused},
    {L"SendEmail*", L"TavioClientBase*", L"*", kAllWays, 0, kUnnoticed},
    {L"SendEmail*", L"TavioServerBase*", L"*", kAllWays, 1, kUnnoticed},
    {L"SendEmail*", L"TavioServerBase*", L"*", kAllWays, 0, kSilent},
    {L"SendEmail*", L"Jmail*", L"*", kAllWays, 0, kNotSent},
    {L"SendSMS", L"ADODB*", L"EOF", kNumber, 0, kSilent},
    {L"SendSMS", L"ADODB*", L"Value", kNothing, 0, kSilent},
};

}  // namespace

const Effect& EffectOf(std::wstring_view act, const Cell& cell, bool taken) {
  for (const auto& [wanted, object, member, ways, left, effect] : kRules) {
    if (!Fits(act, wanted) || !Fits(cell.touch.object, object) || !Fits(cell.touch.member, member)) continue;
    if ((ways & cell.way) && cell.touch.left >= left && !(taken && ways == kAllWays)) return effect;
  }
  return taken ? kUnnoticed : kReported;
}

}  // namespace tavio::test
