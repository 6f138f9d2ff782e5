#include "actions/TemporaryFolder.h"
#include "foundation/values/Error.h"

// Needs the automation headers before it, and includes none.
// clang-format off
#include <msado15.h>
// clang-format on

namespace tavio {
namespace {

constexpr IID kStreamInterface = {0x00000565, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xaa, 0x00, 0x6d, 0x2e, 0xa4}};

}  // namespace

// Through the interface, not by name: a machine whose type library is registered under another version answers no
// names.
bool WriteThroughStream(const Text& path, const Value& bytes) {
  CLSID id;
  ComPtr<_Stream> stream;
  if (FAILED(CLSIDFromProgID(L"ADODB.Stream", &id))) return false;
  if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, kStreamInterface,
                              reinterpret_cast<void**>(stream.GetAddressOf()))))
    return false;
  Check(stream->put_Type(adTypeBinary));
  VARIANT noSource = Value::Missing().Raw();
  Check(stream->Open(noSource, adModeUnknown, adOpenStreamUnspecified, nullptr, nullptr));
  Check(stream->Write(bytes.Raw()));
  const BString name(path);
  const HRESULT saved = stream->SaveToFile(name.Get(), adSaveCreateOverWrite);
  if (saved == E_NOTIMPL) return false;
  Check(saved);
  return true;
}

}  // namespace tavio
