#include "com/server/ClassTable.h"

#include "com/BillActionsShell.h"
#include "com/BillEnvironmentsShell.h"
#include "com/MessageShell.h"
#include "com/PredefineActionsShell.h"
#include "foundation/packages/NewContainer.h"

namespace tavio::com {
namespace {

constexpr ClassRow kClasses[] = {
    {__uuidof(::BillActions), L"TavioClassBillAction.BillActions", L"Tavio bill actions", &Make<BillActionsShell>},
    {__uuidof(::PredefineActions), L"TavioClassBillAction.PredefineActions", L"Tavio predefined actions",
     &Make<PredefineActionsShell>},
    {__uuidof(::BillEnvironments), L"TavioClassBillAction.BillEnvironments", L"Tavio business scenarios",
     &Make<BillEnvironmentsShell>},
    {__uuidof(::Message), L"TavioClassBillAction.Message", L"Tavio message", &Make<MessageShell>},
};

}  // namespace

constinit const ServerTable kServer = {kClasses, true, false, ForgetContainerFactories};

}  // namespace tavio::com
