#include <algorithm>
#include <limits>
#include <memory>

#include "companion/preview/Compose.h"
#include "companion/tavio/Listing.h"
#include "companion/tavio/Progress.h"
#include "foundation/environment/SharedProperties.h"
#include "foundation/environment/modFunction.h"
#include "foundation/packages/Fields.h"
#include "foundation/packages/Walk.h"
#include "foundation/values/CodePage.h"

namespace tavio {
namespace {

Json Fields(const Dictionary& record, std::initializer_list<const char*> names) {
  Json fields;
  for (const auto* name : names) fields[name] = FieldOf(*record.GetValue(Key(TextView(FromUtf8(name)))));
  return fields;
}

// The masks under which an action has messages.
std::string MessagesOf(const Dictionary& action) {
  std::string masks;
  const auto messages = PackageAt(action, L"Messages"_key);
  if (!messages) return masks;
  for (const auto& entry : Entries(messages)) masks += (masks.empty() ? "" : ", ") + ToUtf8(entry.KeyView());
  return masks;
}

Json ActionsOf(std::int32_t type) {
  const Progress progress(L"actions");
  const companion::Templates templates;
  templates.ClassType(type);  // tells of an unknown type
  const auto actions = companion::LoadedActions(type);
  Json records = Json::array();
  for (const auto& entry : Entries(Dictionary(actions.Call(L"GetBillActions")))) {
    const auto action = entry.Record();
    records.push_back(Fields(action, {"FCode", "FName", "FEnvironment", "FRightMask"}));
    records.back()["Messages"] = MessagesOf(action);
  }
  return records;
}

Json Scenarios() {
  const Progress progress(L"scenarios");
  const Vector list(Component::Create(L"TavioClassBillAction.BillEnvironments").Call(L"GetSortList"));
  Json records = Json::array();
  if (!list) return records;
  for (const auto& scenario : Records(list)) {
    records.push_back(Fields(scenario, {"FMask", "FName", "FBillType", "Parent", "Level"}));
  }
  return records;
}

const CLI::Range kCounts(0, std::numeric_limits<std::int32_t>::max(), "from 0");

// Which messages.
struct Wanted {
  std::int32_t user = 0;  // 0: whoever works here
  bool all = false;
  std::int32_t last = 20;
};

void CutTo(Json& records, std::int32_t last) {
  const auto excess = static_cast<std::ptrdiff_t>(records.size()) - last;
  if (last > 0 && excess > 0) records.erase(records.begin(), records.begin() + excess);
}

Json Inbox(const Wanted& box) {
  const Progress progress(L"inbox");
  const auto user = box.user ? box.user : PropertyTable::ParseProps(GetPropsString()).GetCurrentUserID();
  const Text whose = box.all ? Text() : L" WHERE i.FRecipientID = " + std::to_wstring(user);
  auto records = Query({{"FID", L"i.FID"},
                        {"FTime", L"i.FTime"},
                        {"FSenderID", L"i.FSenderID"},
                        {"FSender", L"s.FName"},
                        {"FRecipientID", L"i.FRecipientID"},
                        {"FRecipient", L"r.FName"},
                        {"FTitle", L"i.FTitle"},
                        {"FContent", L"i.FContent"}},
                       L"FROM t_Inbox i LEFT OUTER JOIN t_User s ON s.FUserID = i.FSenderID "
                       L"LEFT OUTER JOIN t_User r ON r.FUserID = i.FRecipientID" +
                           whose + L" ORDER BY i.FID");
  CutTo(records, box.last);
  return records;
}

Json Outbox(const Wanted& box) {
  const Progress progress(L"outbox");
  auto records = Query({{"FKind", L"'mail'"},
                        {"FTime", L"FTime"},
                        {"FRecipients", L"FRecipients"},
                        {"FSubject", L"FSubject"},
                        {"FBody", L"FBody"}},
                       L"FROM t_MailOutbox ORDER BY FID");
  for (auto& record : Query({{"FKind", L"'short'"},
                             {"FTime", L"FTime"},
                             {"FRecipients", L"FRecipients"},
                             {"FSubject", L"''"},
                             {"FBody", L"FContent"}},
                            L"FROM t_SmsOutbox ORDER BY FID")) {
    records.push_back(std::move(record));
  }
  std::stable_sort(records.begin(), records.end(),
                   [](const Json& a, const Json& b) { return a["FTime"] < b["FTime"]; });
  CutTo(records, box.last);
  return records;
}

}  // namespace

void AddListingVerbs(CLI::App& app, Run& run) {
  const auto type = std::make_shared<std::int32_t>();
  auto* actions = app.add_subcommand("actions", "List the actions of a bill type and the scenarios of their messages");
  actions->add_option("TYPE", *type, "Class type ID of the bill")->required();
  actions->callback([type, &run] { PrintRecords(ActionsOf(*type), run); });

  app.add_subcommand("scenarios", "List the business scenarios")->callback([&run] { PrintRecords(Scenarios(), run); });

  const auto box = std::make_shared<Wanted>();
  auto* inbox = app.add_subcommand("inbox", "List your system messages (development platform)");
  inbox->add_option("--user", box->user, "Those of another recipient");
  inbox->add_flag("--all", box->all, "Those of all recipients");
  inbox->add_option("--last", box->last, "How many, 0: all")->check(kCounts)->capture_default_str();
  inbox->callback([box, &run] { PrintRecords(Inbox(*box), run); });

  auto* outbox =
      app.add_subcommand("outbox", "List the mails and short messages that were sent (development platform)");
  outbox->add_option("--last", box->last, "How many, 0: all")->check(kCounts)->capture_default_str();
  outbox->callback([box, &run] { PrintRecords(Outbox(*box), run); });
}

}  // namespace tavio
