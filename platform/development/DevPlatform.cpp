#include "com/server/ClassTable.h"
#include "com/server/ComClass.h"
#include "development/ClassDefineUpdate.h"
#include "development/ClassInfo.h"
#include "development/Command.h"
#include "development/FormTextLoader.h"
#include "development/Loader.h"
#include "development/Log.h"
#include "development/PropStore.h"

namespace tavio::com {
namespace {

namespace dev = tavio::development;

// One family of identifiers, numbered in its last digits.
constexpr CLSID Id(unsigned char number) noexcept {
  return {0xd2a7b4c1, 0x53e8, 0x4f06, {0x9b, 0x1d, 0x84, 0x2e, 0x6c, 0x70, 0x5a, number}};
}

constexpr ClassRow kClasses[] = {
    {Id(0x01), L"TavioSharedProps.PropStore", L"Shared properties (development)", &Make<dev::PropStore>},
    {Id(0x02), L"MorlaLogMsg.Log", L"Log (development)", &Make<dev::Log>},
    {Id(0x03), L"TavioResLoader.Loader", L"Localised texts (development)", &Make<dev::Loader>},
    {Id(0x04), L"TavioFormText.FormTextLoader", L"Form texts (development)", &Make<dev::FormTextLoader>},
    {Id(0x05), L"TavioMClass.ClassInfo", L"Business-object information (development)", &Make<dev::ClassInfo>},
    {Id(0x06), L"TavioMClass.ClassDefineUpdate", L"Business-object update (development)",
     &Make<dev::ClassDefineUpdate>},
    {Id(0x07), L"TavioAppCommand.Command", L"System messages (development)", &Make<dev::Command>},
};

}  // namespace

const ServerTable kServer = {kClasses, nullptr, true};

}  // namespace tavio::com
