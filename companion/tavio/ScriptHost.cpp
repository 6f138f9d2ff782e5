#include "companion/tavio/ScriptHost.h"

#include <windows.h>
#include <activscp.h>

#include <optional>

#include "com/server/LateBound.h"
#include "companion/Members.h"
#include "companion/tavio/Console.h"
#include "foundation/packages/Component.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/InvokeByName.h"

namespace tavio {
namespace {

using com::Arguments;

constexpr wchar_t kRoot[] = L"WScript";
constexpr HRESULT kQuit = static_cast<HRESULT>(0x80040401);
const IID kParse = __uuidof(IActiveScriptParse);

template <class Object, class... Given>
ComPtr<Object> Make(Given&&... given) {
  ComPtr<Object> made;
  *made.GetAddressOf() = new Object(std::forward<Given>(given)...);  // with the reference that it starts with
  return made;
}

class ArgumentList final : public com::LateBound {
 public:
  explicit ArgumentList(const std::vector<Text>& arguments) {
    const auto count = [arguments](Arguments&) { return Value(static_cast<std::int32_t>(arguments.size())); };
    Add(L"Count", count);
    Add(L"length", count);
    Add(L"Item", [arguments](Arguments& a) {
      const auto index = static_cast<std::size_t>(a.At(0).ToInt32());
      if (index >= arguments.size()) throw Error::FromHresult(DISP_E_BADINDEX);
      return Value(TextView(arguments[index]));
    });
    Default(L"Item");
  }
};

class ScriptObject final : public com::LateBound {
 public:
  ScriptObject(const Text& file, const std::vector<Text>& arguments) {
    const ComPtr<IDispatch> list = Make<ArgumentList>(arguments);
    Add(L"Arguments",
        [list](Arguments& a) { return a.Count() ? Component(list).Call(L"Item", a.At(0)) : Value(list); });
    Add(L"ScriptFullName", [file](Arguments&) { return Value(TextView(file)); });
    Add(L"CreateObject", [](Arguments& a) { return Value(Component::Create(a.At(0).ToText().c_str()).Object()); });
    Add(L"Sleep", [](Arguments& a) {
      Sleep(static_cast<DWORD>(a.At(0).ToInt32()));
      return Value();
    });
    Add(L"Echo", [this](Arguments& a) {
      Echo(a);
      return Value();
    });
    Add(L"Quit", [this](Arguments& a) -> Value {
      exitCode_ = a.OrEmpty(0).ToInt32();
      throw Error(kQuit, kRoot, L"Quit");
    });
  }

  std::optional<int> ExitCode() const noexcept { return exitCode_; }

 private:
  void Echo(const Arguments& a) const {
    if (exitCode_) return;
    Text line;
    for (std::size_t i = 0; i < a.Count(); ++i) {
      if (i) line += L' ';
      a.At(i).AppendTo(line);
    }
    console::PrintError(line + L"\n");
  }

  std::optional<int> exitCode_;
};

class Site final : public com::ComObject<IActiveScriptSite> {
 public:
  Site(Text file, ComPtr<ScriptObject> root) : file_(std::move(file)), root_(std::move(root)) {}

  const std::optional<Text>& Failure() const noexcept { return failure_; }

  STDMETHODIMP GetLCID(LCID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetItemInfo(LPCOLESTR, DWORD wanted, IUnknown** item, ITypeInfo** info) override {
    if (info) *info = nullptr;
    if (wanted & SCRIPTINFO_IUNKNOWN) return root_.CopyTo(IID_IUnknown, reinterpret_cast<void**>(item));
    return TYPE_E_ELEMENTNOTFOUND;
  }
  STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
  STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
  STDMETHODIMP OnEnterScript() override { return S_OK; }
  STDMETHODIMP OnLeaveScript() override { return S_OK; }
  STDMETHODIMP OnScriptError(IActiveScriptError* error) override {
    return com::Guarded([&] {
      if (!root_->ExitCode()) Keep(*error);
      return S_OK;
    });
  }

 private:
  void Keep(IActiveScriptError& error) {
    DWORD context = 0;
    ULONG line = 0;
    LONG column = 0;
    EXCEPINFO info = {};
    error.GetSourcePosition(&context, &line, &column);
    error.GetExceptionInfo(&info);
    if (info.pfnDeferredFillIn) info.pfnDeferredFillIn(&info);
    const HRESULT result = info.scode ? info.scode : E_FAIL;
    const auto why = Error::FromInvoke(DISP_E_EXCEPTION, info);
    failure_ = file_ + L":" + std::to_wstring(line + 1) + L":" + std::to_wstring(column + 1) + L": " +
               (why.Description().empty() ? Error::FromHresult(result).Description() : why.Description());
  }

  Text file_;
  ComPtr<ScriptObject> root_;
  std::optional<Text> failure_;
};

// UTF-16 with its mark, UTF-8, or else the system's code page.
Text Decoded(const std::string& bytes) {
  if (bytes.starts_with("\xFF\xFE")) {
    Text text((bytes.size() - 2) / sizeof(Char), L'\0');
    std::copy_n(bytes.data() + 2, text.size() * sizeof(Char), reinterpret_cast<char*>(text.data()));
    return text;
  }
  const auto content = bytes.starts_with("\xEF\xBB\xBF") ? bytes.substr(3) : bytes;
  const bool utf8 = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, content.data(), static_cast<int>(content.size()),
                                        nullptr, 0) != 0;
  return utf8 ? FromUtf8(content) : FromCodePage(CP_ACP, content);
}

Text FullPath(const Text& file) {
  Text path(GetFullPathNameW(file.c_str(), 0, nullptr, nullptr), L'\0');
  path.resize(GetFullPathNameW(file.c_str(), static_cast<DWORD>(path.size()), path.data(), nullptr));
  return path;
}

ComPtr<IActiveScript> EngineFor(const Text& file) {
  const Text ending = ToUpper(file.substr(std::min(file.size(), file.rfind(L'.'))));
  if (ending != L".VBS" && ending != L".JS") throw companion::Refused(file + L": a script ends in .vbs or .js");
  CLSID id;
  ComPtr<IActiveScript> engine;
  Check(CLSIDFromProgID(ending == L".JS" ? L"JScript" : L"VBScript", &id));
  Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&engine)));
  return engine;
}

}  // namespace

int RunScript(const Text& file, const std::vector<Text>& arguments) {
  const auto engine = EngineFor(file);
  const Text source = Decoded(console::ReadFile(file));
  const auto root = Make<ScriptObject>(FullPath(file), arguments);
  const auto site = Make<Site>(file, root);
  ComPtr<IActiveScriptParse> parser;
  Check(engine->QueryInterface(kParse, reinterpret_cast<void**>(parser.GetAddressOf())));
  Check(engine->SetScriptSite(site.Get()));
  Check(parser->InitNew());
  Check(engine->AddNamedItem(kRoot, SCRIPTITEM_ISVISIBLE));
  Check(engine->SetScriptState(SCRIPTSTATE_STARTED));
  EXCEPINFO info = {};
  const HRESULT parsed =
      parser->ParseScriptText(source.c_str(), nullptr, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISVISIBLE, nullptr, &info);
  engine->Close();
  if (site->Failure()) throw companion::Refused(*site->Failure());
  if (FAILED(parsed) && !root->ExitCode()) throw Error::FromHresult(parsed);
  return root->ExitCode().value_or(0);
}

}  // namespace tavio
