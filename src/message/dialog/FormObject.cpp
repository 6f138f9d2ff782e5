#include "message/dialog/FormObject.h"

namespace tavio {

using com::Arguments;

ComPtr<FormObject> FormObject::New(const wchar_t* name, Text caption) {
  ComPtr<FormObject> form;
  *form.GetAddressOf() = new FormObject(name, std::move(caption));
  return form;
}

FormObject::FormObject(const wchar_t* name, Text caption) : name_(name), caption_(std::move(caption)) {
  LateBound::Add(L"Name", [this](Arguments&) { return Value(TextView(name_)); });
  LateBound::Add(
      L"Caption", [this](Arguments&) { return Value(TextView(caption_)); },
      [this](Arguments& a) {
        caption_ = a.At(0).ToText();
        return Value();
      });
}

void FormObject::Add(const ComPtr<FormObject>& control) {
  LateBound::Add(control->name_.c_str(), [control](Arguments&) { return Value(ComPtr<IDispatch>(control)); });
}

}  // namespace tavio
