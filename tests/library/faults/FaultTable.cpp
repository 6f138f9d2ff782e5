#include "tests/library/faults/FaultTable.h"

#include <bit>
#include <ostream>

namespace tavio::test {
namespace {

// Components have ProgIDs, and so have new containers.
bool IsContainer(const std::wstring& object) {
  return object.find(L'.') == std::wstring::npos || object.starts_with(L"Vexo.");
}

bool Gives(const Arguments& arguments, unsigned types) {
  for (std::size_t i = 0; i < arguments.Count(); ++i) {
    const unsigned type = arguments.Raw(i).vt;
    if (type == (VT_BYREF | VT_DISPATCH) || (type & types)) return true;
  }
  return false;
}

bool AreAlike(const Touch& a, const Touch& b) {
  return a.kind == b.kind && a.object == b.object && a.member == b.member;
}

// A name that is asked for counts apart from the calls under it.
std::wstring NameOf(const Touch& touch) { return touch.kind == Touch::kName ? touch.member + L"?" : touch.member; }

// What operations take.
bool IsGiven(const std::wstring& object) {
  const std::wstring kGiven[] = {L"collection", L"given", L"package", L"variable", L"bill", L"sent to"};
  return std::find(std::begin(kGiven), std::end(kGiven), object) != std::end(kGiven);
}

unsigned WaysOf(const Touch& touch, bool ofContainers) {
  switch (touch.kind) {
    case Touch::kCreation:
      return kNotCreated;
    case Touch::kName:
      return kMissing;
    case Touch::kAssignment:
      return kRaises;
    default:
      if (ofContainers) return kRaises | kStranger;
      return (kAllWays & ~(kNotCreated | kMissing | kWritesBack)) | (touch.givesAny * kWritesBack);
  }
}

// Ways in which an answer of that type is taken for what it stands for, or nothing is made of it.
unsigned TakenWays(VARTYPE answer) {
  switch (answer) {
    case VT_DISPATCH:
      return kNothing;
    case VT_BSTR:
      return kEmpty | kNumber | kText;
    case VT_EMPTY:
      return kAllWays & ~kRaises;
    default:
      return kEmpty | kNumber;
  }
}

// What is called or walked as it comes: nothing is not set, and a stranger lacks the member.
bool IsNeeded(const std::wstring& member) {
  constexpr const wchar_t* kNeeded[] = {L"GetData",  L"GetFile", L"Fields",           L"Item",
                                        L"GetUsers", L"GetList", L"GetDefaultActions"};
  return std::find(std::begin(kNeeded), std::end(kNeeded), member) != std::end(kNeeded);
}

}  // namespace

std::optional<Way> Fault::Note(Touch touch) {
  if (paused_ || IsContainer(touch.object) != ofContainers_) return std::nullopt;
  if (before) {
    paused_ = true;
    before();
    paused_ = false;
  }
  const bool breaks = breaker_.Count(touch.object, NameOf(touch)).has_value();
  touches_.push_back(std::move(touch));
  met_ |= breaks;
  return breaks ? std::optional(way_) : std::nullopt;
}

void Fault::Break(const Touch& touch, Way way) {
  breaker_ = {};
  breaker_.Add({touch.object, NameOf(touch), touch.count});
  way_ = way;
  met_ = false;
}

bool Fault::Heal() noexcept {
  breaker_ = {};
  return met_;
}

std::vector<Touch> Fault::Touches() const {
  auto touches = touches_;
  for (auto touch = touches.begin(); touch != touches.end(); ++touch) {
    const auto next = touch + 1;
    const auto alike = [&](const Touch& other) { return AreAlike(*touch, other); };
    touch->left = static_cast<int>(std::count_if(next, touches.end(), alike));
    touch->count = 1 + static_cast<int>(std::count_if(touches.begin(), touch, alike));
    touch->isCalled =
        touch->kind != Touch::kName || (next != touches.end() && next->kind > Touch::kName &&
                                        next->object == touch->object && next->member.starts_with(touch->member));
    touch->isRefused =
        !touch->isCalled && IsGiven(touch->object) && (touch == touches.begin() || (touch - 1)->isRefused);
  }
  return touches;
}

bool Fault::Creates(const std::wstring& object) {
  const bool isAbsent = std::find(absent.begin(), absent.end(), object) != absent.end();
  return !isAbsent && !Note({Touch::kCreation, object, {}});
}

bool Fault::Finds(const std::wstring& object, const std::wstring& member) {
  return !Note({Touch::kName, object, member});
}

Value Fault::Calls(const std::wstring& object, const std::wstring& member, bool assigns, Arguments& arguments,
                   const LateBound::Method& real) {
  const auto number = touches_.size();
  const auto kind = assigns ? Touch::kAssignment : Touch::kCall;
  const auto way =
      Note({kind, object, assigns ? member + L"=" : member, Gives(arguments, 0), Gives(arguments, VT_BYREF)});
  if (way == kRaises) throw Error(static_cast<HRESULT>(0x80040123), L"Platform", L"断开");
  // What the fakes do is their own affair.
  const bool wasPaused = std::exchange(paused_, true);
  Value answer = real(arguments);
  if (way == kWritesBack) WriteBack(arguments);
  paused_ = wasPaused;
  if (touches_.size() > number) touches_[number].answer = answer.Type();
  return way && way != kWritesBack ? Wrong(*way) : std::move(answer);
}

Value Fault::Wrong(Way way) {
  switch (way) {
    case kNull:
      return Value::Null();
    case kUnset:
      return Value(ComPtr<IDispatch>());
    case kNumber:
      return Value(9);
    case kText:
      return Value(L"rubbish");
    case kStranger:
      return Value(stranger_.New());
    default:
      return Value();
  }
}

// Another package is right, but for the last one: what came before it must not be taken alone.
void Fault::WriteBack(Arguments& arguments) {
  bool isLast = true;
  for (std::size_t i = arguments.Count(); i-- > 0;) {
    const auto& target = arguments.Raw(i);
    const auto type = static_cast<VARTYPE>(target.vt & ~VT_BYREF);
    if (type == target.vt) continue;
    if (type & VT_ARRAY) {
      SafeArrayDestroy(std::exchange(*target.pparray, nullptr));
    } else if (type == VT_DISPATCH) {
      arguments.Return(i, std::exchange(isLast, false) ? Wrong(kStranger) : Dictionary::New().AsValue());
    } else {
      arguments.Return(i, Wrong(type == VT_BSTR ? kText : kNumber));
    }
  }
}

std::ostream& operator<<(std::ostream& out, const Cell& cell) {
  constexpr const char* kNames[] = {"not created", "missing", "raises", "empty",    "null",
                                    "no object",   "number",  "text",   "stranger", "writes back"};
  return out << "touch " << cell.number << ", " << Utf8(cell.touch.object) << "." << Utf8(cell.touch.member) << ", "
             << kNames[std::countr_zero(static_cast<unsigned>(cell.way))];
}

std::vector<Cell> CellsOf(const std::vector<Touch>& touches, bool ofContainers, Broken& byVariants) {
  std::vector<Cell> cells;
  Broken broken;
  for (std::size_t number = 0; number < touches.size(); ++number) {
    const auto& touch = touches[number];
    for (unsigned way = 1; way < kAllWays; way *= 2) {
      if (!(WaysOf(touch, ofContainers) & way) || byVariants.count({touch.object, touch.member, way})) continue;
      const bool isNew = broken.emplace(touch.object, touch.member, way).second;
      if (isNew || way == kRaises || way == kNotCreated) cells.push_back({number, touch, static_cast<Way>(way)});
    }
  }
  byVariants.merge(broken);
  return cells;
}

std::optional<Text> DescriptionOf(const Cell& cell) {
  const auto& [number, touch, way] = cell;
  switch (way) {
    case kNotCreated:
      return L"«不能创建组件» " + touch.object;
    case kMissing:
      return touch.isCalled ? L"«对象不支持该属性或方法»" : L"«类型不匹配»";
    case kRaises:
      return L"断开";
    case kWritesBack:
      if (!touch.givesPackage) return std::nullopt;
      return L"«类型不匹配»";
    default:
      if (touch.answer == VT_DISPATCH && IsNeeded(touch.member)) {
        if (way & kNothing) return L"«对象未设置»";
        const bool isPackage = IsContainer(touch.object) || touch.object.starts_with(L"TavioClassBillAction");
        if (way == kStranger && !isPackage) return L"«对象不支持该属性或方法»";
      }
      if (TakenWays(touch.answer) & way) return std::nullopt;
      return L"«类型不匹配»";
  }
}

}  // namespace tavio::test
