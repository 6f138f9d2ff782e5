#include "actions/TemporaryFolder.h"
#include "foundation/Error.h"

// clang-format off: needs the automation headers before it, and includes none
#include <msado15.h>
// clang-format on

namespace tavio {

// Through the interface, not by name: a machine whose type library is registered under another version answers no names.
bool WriteThroughStream(const Text& path, const Value& bytes) {
  CLSID id;
  ComPtr<_Stream> stream;
  if (FAILED(CLSIDFromProgID(L"ADODB.Stream", &id))) return false;
  if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&stream)))) return false;
  Check(stream->put_Type(adTypeBinary));
  VARIANT noSource = Value::Missing().Raw();
  Check(stream->Open(noSource, adModeUnknown, adOpenStreamUnspecified, nullptr, nullptr));
  Check(stream->Write(bytes.Raw()));
  const BString name(path);
  Check(stream->SaveToFile(name.Get(), adSaveCreateOverWrite));
  return true;
}

}  // namespace tavio
