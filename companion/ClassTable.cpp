#include "com/server/ClassTable.h"

#include "companion/BoxesShell.h"
#include "companion/CheckerShell.h"
#include "companion/PreviewShell.h"
#include "companion/RecorderShell.h"
#include "foundation/packages/NewContainer.h"

namespace tavio::com {
namespace {

constexpr ClassRow kClasses[] = {
    {__uuidof(::Recorder), L"TavioCompanion.Recorder", L"Tavio call recorder", &Make<companion::RecorderShell>},
    {__uuidof(::Boxes), L"TavioCompanion.Boxes", L"Tavio unattended boxes", &Make<companion::BoxesShell>},
    {__uuidof(::Preview), L"TavioCompanion.Preview", L"Tavio message preview", &Make<companion::PreviewShell>},
    {__uuidof(::Checker), L"TavioCompanion.Checker", L"Tavio message checker", &Make<companion::CheckerShell>},
};

}  // namespace

constinit const ServerTable kServer = {kClasses, true, false, ForgetContainerFactories};

}  // namespace tavio::com
