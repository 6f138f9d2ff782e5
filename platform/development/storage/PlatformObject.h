#pragma once

#include <concepts>
#include <memory>
#include <utility>

#include "com/server/LateBound.h"
#include "development/storage/Storage.h"
#include "foundation/values/Error.h"

namespace tavio::development {

using com::Arguments;
using com::LateBound;

// What every object of this server is: it shares the thread's connection from its first
// use of the database to its end.
class PlatformObject : public LateBound {
 protected:
  Database& Store() {
    if (!store_) store_ = OpenStorage();
    return *store_;
  }

  // Every call of a client carries its shared-properties string: raises Error if it is empty.
  static void RequireProperties(const Value& properties) {
    if (properties.ToText().empty()) throw Error(E_INVALIDARG, L"DevPlatform", L"属性字符串为空");
  }
  // A member whose first argument is that string.
  void AddServed(const wchar_t* name, Method method) {
    Add(name, [method = std::move(method)](Arguments& a) {
      RequireProperties(a.At(0));
      return method(a);
    });
  }

  // A property that only keeps what is assigned to it.
  void AddKept(const wchar_t* name, Text& held) {
    AddKept(
        name, [&held] { return Value(TextView(held)); }, [&held](Value&& value) { held = value.ToText(); });
  }
  void AddKept(const wchar_t* name, bool& held) {
    AddKept(
        name, [&held] { return Value(held); }, [&held](Value&& value) { held = value.ToBool(); });
  }
  void AddKept(const wchar_t* name, Value& held) {
    AddKept(
        name, [&held] { return held.Copy(); }, [&held](Value&& value) { held = std::move(value); });
  }

 private:
  template <std::invocable Read, std::invocable<Value> Assign>
  void AddKept(const wchar_t* name, Read read, Assign assign) {
    Add(
        name, [read](Arguments&) { return read(); },
        [assign](Arguments& a) {
          assign(a.At(0));
          return Value();
        });
  }

  std::shared_ptr<Database> store_;
};

// A new object with its first reference. ComPtr's Attach is not used: that of mingw-w64 adds a reference of its own.
template <class Object, class... Arguments>
ComPtr<IDispatch> MakeObject(Arguments&&... arguments) {
  ComPtr<IDispatch> object;
  *object.GetAddressOf() = new Object(std::forward<Arguments>(arguments)...);
  return object;
}

}  // namespace tavio::development
