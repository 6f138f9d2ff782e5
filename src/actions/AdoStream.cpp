#include "actions/TemporaryFolder.h"
#include "foundation/values/Error.h"

namespace tavio {

// The interface of ADODB.Stream, whose header not every compiler has: the four methods that are called, and the others
// to keep their places. Not in an unnamed namespace: the compiler would see that nothing implements it, and drop the
// calls.
struct IStreamObject : IDispatch {
  enum : LONG { kBinary = 1, kCreateOrOverwrite = 2 };

  virtual HRESULT STDMETHODCALLTYPE ReadSize() = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadEndOfStream() = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadPosition() = 0;
  virtual HRESULT STDMETHODCALLTYPE WritePosition() = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadType() = 0;
  virtual HRESULT STDMETHODCALLTYPE WriteType(LONG type) = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadLineSeparator() = 0;
  virtual HRESULT STDMETHODCALLTYPE WriteLineSeparator() = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadState() = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadMode() = 0;
  virtual HRESULT STDMETHODCALLTYPE WriteMode() = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadCharset() = 0;
  virtual HRESULT STDMETHODCALLTYPE WriteCharset() = 0;
  virtual HRESULT STDMETHODCALLTYPE Read() = 0;
  virtual HRESULT STDMETHODCALLTYPE Open(VARIANT source, LONG mode, LONG options, BSTR user, BSTR password) = 0;
  virtual HRESULT STDMETHODCALLTYPE Close() = 0;
  virtual HRESULT STDMETHODCALLTYPE SkipLine() = 0;
  virtual HRESULT STDMETHODCALLTYPE Write(VARIANT bytes) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetEndOfStream() = 0;
  virtual HRESULT STDMETHODCALLTYPE CopyTo() = 0;
  virtual HRESULT STDMETHODCALLTYPE Flush() = 0;
  virtual HRESULT STDMETHODCALLTYPE SaveToFile(BSTR name, LONG options) = 0;
};

namespace {

constexpr IID kStreamInterface = {0x00000565, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xaa, 0x00, 0x6d, 0x2e, 0xa4}};

}  // namespace

// Through the interface, not by name: a machine whose type library is registered under another version answers no
// names.
bool WriteThroughStream(const Text& path, const Value& bytes) {
  CLSID id;
  ComPtr<IStreamObject> stream;
  if (FAILED(CLSIDFromProgID(L"ADODB.Stream", &id))) return false;
  if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, kStreamInterface,
                              reinterpret_cast<void**>(stream.GetAddressOf()))))
    return false;
  Check(stream->WriteType(IStreamObject::kBinary));
  constexpr LONG kModeUnknown = 0, kOptionsUnspecified = -1;
  Check(stream->Open(Value::Missing().Raw(), kModeUnknown, kOptionsUnspecified, nullptr, nullptr));
  Check(stream->Write(bytes.Raw()));
  const BString name(path);
  const HRESULT saved = stream->SaveToFile(name.Get(), IStreamObject::kCreateOrOverwrite);
  if (saved == E_NOTIMPL) return false;
  Check(saved);
  return true;
}

}  // namespace tavio
