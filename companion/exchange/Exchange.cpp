#include "companion/exchange/Exchange.h"

#include <algorithm>

#include "companion/Members.h"
#include "companion/boxes/BoxCollector.h"
#include "companion/exchange/FileText.h"
#include "companion/preview/Compose.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"

namespace tavio::companion {
namespace {

constexpr char kFormat[] = "tavio-export";
constexpr int kVersion = 1;
constexpr int kIndent = 2;

// What belongs to one database, wherever it stands in an action.
constexpr const char* kLocal[] = {"FID",        "FVersion",      "FStatus",         "FMessageID",  "FRightControl",
                                  "FRightMask", "FRightUseMask", "FRightGroupMask", "FObjectType", "FObjectID"};

void Strip(Json& json) {
  if (json.is_object()) {
    for (const auto* name : kLocal) json.erase(name);
  }
  if (json.is_structured()) {
    for (auto& part : json) Strip(part);
  }
}

Json ActionsOf(const Dictionary& actions) {
  Json exported = Json::object();
  for (const auto& entry : Entries(actions)) {
    const auto action = entry.Record();
    exported[Utf8(TextAt(action, L"FCode"_key))] = ToTypedJson(action);
  }
  Strip(exported);
  return exported;
}

bool IsRecords(const Json& json) {
  return json.is_object() && std::all_of(json.begin(), json.end(), [](const Json& part) { return part.is_object(); });
}

// Whether an action of a file has messages only where messages belong.
bool IsAction(const Json& action) {
  const auto messages = action.value("Messages", Json::object());
  if (messages.is_object() && messages.contains("$object")) return true;  // it has none
  return IsRecords(messages) && std::all_of(messages.begin(), messages.end(), [](const Json& entry) {
           return entry.value("Message", Json::object()).is_object();
         });
}

// The fields of the file in place of those in the record.
void Replace(const Dictionary& record, const Json& fields) {
  for (const auto& [key, value] : fields.items()) record.Set(Key(TextView(FromUtf8(key))), FromTypedJson(value));
}

// Recipients name the message that they belong to by its number.
void NumberRecipients(const Dictionary& message) {
  for (const auto* list : {L"MessageUsers", L"EmailUsers", L"SMSUsers"}) {
    const auto recipients = PackageAt(message, Key(TextView(list)));
    if (!recipients) continue;
    for (const auto& entry : Entries(recipients)) {
      if (entry.Stored().HoldsObject()) entry.Record().Set(L"FMessageID"_key, *message.Get(L"FID"_key));
    }
  }
}

Dictionary CopyOf(const Dictionary& record) { return record ? record.Clone() : Dictionary::New(); }

// A message entry of the file over the stored one, of which it is a copy.
Dictionary MergedMessage(const Dictionary& stored, const Json& entry) {
  const auto merged = CopyOf(stored);
  const auto message = CopyOf(PackageAt(merged, L"Message"_key));
  if (!message.Lookup(L"FID"_key)) message.Set(L"FID"_key, Value(std::int16_t{0}));
  for (const auto& [key, value] : entry.items()) {
    if (key != "Message") merged.Set(Key(TextView(FromUtf8(key))), FromTypedJson(value));
  }
  if (entry.contains("Message")) Replace(message, entry["Message"]);
  NumberRecipients(message);
  merged.Set(L"Message"_key, message);
  return merged;
}

Dictionary MergedMessages(const Dictionary& stored, const Json& messages) {
  const auto merged = CopyOf(stored);
  for (const auto& [mask, entry] : messages.items()) {
    const Key key{TextView(FromUtf8(mask))};
    merged.Set(key, MergedMessage(PackageAt(merged, key), entry));
  }
  return merged;
}

}  // namespace

Json ExportOf(std::int32_t type) {
  const Templates templates;
  return {{"format", kFormat},
          {"version", kVersion},
          {"classTypeId", type},
          {"template", ToTypedJson(templates.ClassType(type))},
          {"fields", ToTypedJson(templates.TableInfo(type))},
          {"actions", ActionsOf(Dictionary(LoadedActions(type).Call(L"GetBillActions")))}};
}

// Other than the packages, a file has its members in the order of the alphabet.
Text ToFile(const Json& exported) { return FromUtf8(nlohmann::json(exported).dump(kIndent) + "\n"); }

Json ReadExport(const std::string& file, std::int32_t type) {
  auto exported = ParseFile(file);
  const bool ours = exported.is_object() && exported.value("format", Json()) == kFormat;
  if (!ours) RefuseAt(PlaceOf(file, "format"), words::kNoExport);
  if (exported.value("version", Json()) != kVersion) RefuseAt(PlaceOf(file, "version"), words::kOtherVersion);
  const auto given = exported.value("classTypeId", Json());
  if (!given.is_number_integer() || (type != 0 && given != type)) {
    RefuseAt(PlaceOf(file, "classTypeId"), words::kOtherType, FromUtf8(given.dump()));
  }
  for (const auto* member : {"fields", "actions"}) {
    if (!exported.contains(member) || !IsRecords(exported[member])) RefuseAt(PlaceOf(file, member), words::kNoExport);
  }
  for (const auto& [code, action] : exported["actions"].items()) {
    if (!IsAction(action)) RefuseAt(PlaceOf(file, code.c_str()), words::kNoExport);
  }
  Strip(exported["actions"]);  // nobody would see in the changes what belongs to another database
  return exported;
}

Subject SubjectOf(const Json& exported) {
  Subject subject;
  subject.fields = FieldsFrom(Dictionary(FromTypedJson(exported["fields"])));
  subject.actions = ActionsFrom(Dictionary(FromTypedJson(exported["actions"])));
  subject.scenarios = CatalogueScenarios();
  return subject;
}

Import::Import(std::int32_t type, const Json& exported) : actions_(Component(nullptr)) {
  const Templates templates;
  const auto classType = templates.ClassType(type);
  actions_ = LoadedActions(type);
  actions_.Assign(L"ClassType", classType.AsValue());
  const nlohmann::json before = ActionsOf(Stored());
  const BoxCollector boxes(actions_.Object().Get());
  for (const auto& [code, action] : exported["actions"].items()) Merge(FromUtf8(code), action);
  boxes.Raise();
  for (const auto& step : nlohmann::json::diff(before, ActionsOf(Stored()))) {
    changes_.push_back({{"FOperation", step["op"]}, {"FPath", step["path"]}, {"FValue", step.value("value", Json())}});
  }
}

Dictionary Import::Stored() const { return Dictionary(actions_.Call(L"GetBillActions")); }

void Import::Merge(const Text& code, const Json& action) {
  const Dictionary stored(actions_.Call(L"Item", code));
  const auto merged = stored ? stored : Dictionary::New();
  const auto messages = PackageAt(merged, L"Messages"_key);
  Json fields = action;
  fields.erase("Messages");
  Replace(merged, fields);
  merged.Set(L"FCode"_key, Value(TextView(code)));
  const bool hasMessages = action.contains("Messages") && IsRecords(action["Messages"]);
  if (hasMessages) merged.Set(L"Messages"_key, MergedMessages(messages, action["Messages"]));
  if (stored && ToTypedJson(merged) == ToTypedJson(Dictionary(actions_.Call(L"Item", code)))) return;
  actions_.Call(L"Update", merged);
}

void Import::Save() {
  const BoxCollector boxes(actions_.Object().Get());
  if (actions_.Call(L"Save").ToBool()) return;
  boxes.Raise();
  throw Refused(Say(words::kNotSaved));
}

}  // namespace tavio::companion
