#include "com/server/ClassTable.h"

#include "containers/DictionaryObject.h"
#include "containers/VectorObject.h"

namespace tavio::com {
namespace {

constexpr ClassRow kClasses[] = {
    {__uuidof(::Dictionary), L"Vexo.Dictionary", L"Vexo keyed data package", Make<vexo::DictionaryObject>},
    {__uuidof(::Vector), L"Vexo.Vector", L"Vexo indexed data package", Make<vexo::VectorObject>},
};

}  // namespace

// The platform's own containers go by the same names; if they are installed, they stay.
constinit const ServerTable kServer = {kClasses, true, true};

}  // namespace tavio::com
