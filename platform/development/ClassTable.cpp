#include "com/server/ClassTable.h"

#include "com/server/ComClass.h"
#include "development/business/BillUseInfo.h"
#include "development/business/ClassDefineUpdate.h"
#include "development/business/ClassInfo.h"
#include "development/business/MultiCheckInfo.h"
#include "development/environment/Data.h"
#include "development/environment/FormTextLoader.h"
#include "development/environment/Loader.h"
#include "development/environment/Log.h"
#include "development/environment/PropStore.h"
#include "development/environment/UserProfile.h"
#include "development/mail/Command.h"
#include "development/mail/JmailMessage.h"
#include "development/mail/MailGateway.h"
#include "development/mail/SmsGateway.h"
#include "development/print/NotePrint.h"

namespace tavio::com {
namespace {

namespace dev = tavio::development;

// One family of identifiers, numbered in its last digits.
constexpr CLSID Id(unsigned char number) noexcept {
  return {0xd2a7b4c1, 0x53e8, 0x4f06, {0x9b, 0x1d, 0x84, 0x2e, 0x6c, 0x70, 0x5a, number}};
}

HRESULT MakeMailGateway(REFIID iid, void** object) noexcept {
  if (dev::MailGateway::IsThere()) return Make<dev::MailGateway>(iid, object);
  *object = nullptr;
  return CLASS_E_CLASSNOTAVAILABLE;
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
    {Id(0x08), L"TavioMBOSMultiCheck.BillInfo", L"Approval information (development)", &Make<dev::MultiCheckInfo>},
    {Id(0x09), L"TavioMSmsManager.clsBillUseInfo", L"Recipient information (development)", &Make<dev::BillUseInfo>},
    {Id(0x0a), L"TavioClassBillPrint.clsNotePrint", L"Bill printing (development)", &Make<dev::NotePrint>},
    {Id(0x0b), L"TavioClientBase.UserProfile", L"Client settings (development)", &Make<dev::ClientProfile>},
    {Id(0x0c), L"TavioServerBase.UserProfile", L"Server settings (development)", &Make<dev::ServerProfile>},
    {Id(0x0d), L"MorlaMobileOpen.MorlaSendMail", L"Mail gateway (development)", &MakeMailGateway},
    {Id(0x0e), L"MorlaMobileOpen.MobileOpen", L"SMS gateway (development)", &Make<dev::SmsGateway>},
    {Id(0x0f), L"Jmail.Message", L"SMTP mail (development)", &Make<dev::JmailMessage>},
    {Id(0x10), L"TavioDevPlatform.Data", L"Data of the development platform", &Make<dev::Data>},
};

}  // namespace

constinit const ServerTable kServer = {kClasses, false, true};

}  // namespace tavio::com
