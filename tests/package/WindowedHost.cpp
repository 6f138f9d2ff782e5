// A host with windows of its own, which calls the members and the functions of one name. It is only compiled: in both
// ways that the header of the package knows.
#include <TavioClassBillAction.h>

#include <type_traits>

#ifdef TAVIO_KEEP_WINDOWS_MACROS
bool NextMessage(MSG& next) { return GetMessage(&next, nullptr, 0, 0) > 0; }
#else
static_assert(std::is_member_function_pointer_v<decltype(&_Message::GetMessage)>);
bool NextMessage(MSG& next) { return GetMessageW(&next, nullptr, 0, 0) > 0; }
#endif

bool Sent(_Message* message, IDispatch** package) {
  VARIANT_BOOL sent = VARIANT_FALSE;
  return SUCCEEDED(message->GetMessage(package)) && SUCCEEDED(message->SendMessage(nullptr, &sent)) && sent;
}
