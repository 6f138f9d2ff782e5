#include <cmath>
#include <optional>

#include "Input.h"
#include "actions/ActionCode.h"
#include "actions/ActionStatus.h"
#include "actions/RightMasks.h"
#include "catalogues/BillTypes.h"

namespace tavio::fuzz {
namespace {

constexpr TextView kLetters = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr TextView kDigits = u"0123456789";

bool IsIn(TextView signs, Char unit) { return signs.find(unit) != TextView::npos; }

ActionCodeFault WrittenFault(Text code) {
  if (code.empty()) return ActionCodeFault::kEmpty;
  if (!IsIn(kLetters, code[0])) return ActionCodeFault::kNoLetterFirst;
  while (code.back() == u' ') code.pop_back();
  for (const auto unit : code) {
    if (unit == u' ') return ActionCodeFault::kBlankInside;
  }
  for (const auto unit : code) {
    if (!IsIn(kLetters, unit) && !IsIn(kDigits, unit)) return ActionCodeFault::kOtherSign;
  }
  return ActionCodeFault::kNone;
}

// 2^(billType - 1) as the power of a floating-point number, rounded; none where a step leaves the 32-bit range.
std::optional<std::int32_t> WrittenMask(std::int64_t billType) {
  const auto exponent = billType - 1;
  if (exponent < INT32_MIN) return std::nullopt;
  const auto power = std::nearbyint(std::pow(2.0, static_cast<double>(exponent)));
  if (power > INT32_MAX) return std::nullopt;
  return static_cast<std::int32_t>(power);
}

std::optional<std::int32_t> MaskOrNone(std::int32_t billType) {
  try {
    return BillTypeMask(billType);
  } catch (const std::overflow_error&) {
    return std::nullopt;
  }
}

}  // namespace

void CheckActionCodes(Input input) {
  const auto code = input.Rest();
  Require(CheckActionCode(code) == WrittenFault(code));
}

void CheckActionStatus(Input input) {
  const auto status = input.Int32();
  const std::int64_t without4 = status & 4 ? std::int64_t{status} - 4 : status;
  Require(StatusAfterEdit(status) == (status & 2 ? without4 : without4 + 2));
  Require(StatusAfterRemoval(status) == (status & 4 ? status : std::int64_t{status} + 4));
  Require(IsDeleted(status) == (status != without4));
}

void CheckFirstFreeRightMask(Input input) {
  const auto free = input.Int32();
  std::vector<std::int32_t> asked, wanted;
  std::int32_t found = 0;
  for (std::int64_t mask = 1; mask <= INT32_MAX && found == 0; mask *= 2) {
    wanted.push_back(static_cast<std::int32_t>(mask));
    if (free & mask) found = wanted.back();
  }
  const auto isFree = [&](std::int32_t mask) {
    asked.push_back(mask);
    return (free & mask) != 0;
  };
  Require(FirstFreeRightMask(isFree) == found && asked == wanted);
}

void CheckBillTypes(Input input) {
  const auto billType = input.Int32();
  Require(MaskOrNone(billType) == WrittenMask(billType));
}

}  // namespace tavio::fuzz
