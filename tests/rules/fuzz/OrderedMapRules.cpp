#include "Input.h"
#include "containers/OrderedMap.h"

namespace tavio::fuzz {
namespace {

using vexo::OrderedMap;
// By the byte that makes the key.
using Model = std::vector<std::pair<std::uint8_t, int>>;

// Different ones for different bytes, of up to twelve characters.
Text KeyOf(std::uint8_t byte) {
  if (byte == 0) return {};
  return Text(byte % 12, u'F') + static_cast<Char>(byte * 257);
}

void RequireSame(OrderedMap<int>& map, const Model& model) {
  Require(map.Count() == model.size() && !map.At(0) && !map.At(static_cast<std::int64_t>(model.size()) + 1));
  for (std::size_t i = 0; i < model.size(); ++i) {
    const auto* entry = map.At(static_cast<std::int64_t>(i) + 1);
    Require(entry && entry->Key().View() == KeyOf(model[i].first) && entry->Value() == model[i].second);
    Require(map.Find(KeyOf(model[i].first)) == &entry->Value());
  }
}

class Pair {
 public:
  void Set(std::uint8_t key, int value) {
    const auto found = Find(key);
    const int replaced = found == model_.end() ? 0 : found->second;
    found == model_.end() ? void(model_.emplace_back(key, value)) : void(found->second = value);
    Require(map_.Set(KeyOf(key), value) == replaced);
  }

  void Remove(std::uint8_t key) {
    const auto found = Find(key);
    const int removed = found == model_.end() ? 0 : found->second;
    if (found != model_.end()) model_.erase(found);
    Require(map_.Remove(KeyOf(key)) == removed);
  }

  void Look(std::uint8_t key) {
    const auto found = Find(key);
    const auto* value = map_.Find(KeyOf(key));
    Require(found == model_.end() ? !value : value && *value == found->second);
  }

  void Reach(std::int64_t position) {
    const auto* entry = map_.At(position);
    const bool there = position >= 1 && position <= static_cast<std::int64_t>(model_.size());
    Require(there == (entry != nullptr));
    if (there) Require(entry->Value() == model_[static_cast<std::size_t>(position - 1)].second);
  }

  // Goes on with a clone whose values are new.
  void Clone() {
    auto clone = map_.CloneWith([](int value) { return value + 1; });
    Compare();
    for (auto& [key, value] : model_) {
      ++value;
      OrderedMap<int>::Place place;  // where the one has it, the other has it too
      for (auto* map : {&map_, &clone}) {
        Require(map->FindNear(place, vexo::HashOf(KeyOf(key)), KeyOf(key)) == map->Find(KeyOf(key)));
      }
    }
    map_ = std::move(clone);
  }

  void Compare() { RequireSame(map_, model_); }

 private:
  Model::iterator Find(std::uint8_t key) {
    return std::find_if(model_.begin(), model_.end(), [&](const auto& entry) { return entry.first == key; });
  }

  OrderedMap<int> map_;
  Model model_;
};

}  // namespace

// Each step is a byte that tells what is done, to how many keys in succession, and one for the first of them.
void CheckOrderedMap(Input input) {
  constexpr int kMostSteps = 40;
  Pair pair;
  for (int step = 1; step <= kMostSteps && !input.AtEnd(); ++step) {
    const unsigned what = input.Byte(), first = input.Byte();
    for (unsigned i = 0; i <= what / 8; ++i) {
      const auto byte = static_cast<std::uint8_t>(first + i);
      switch (what % 8) {
        case 0:
        case 1:
          pair.Set(byte, step);
          break;
        case 2:
        case 3:
          pair.Remove(byte);
          break;
        case 4:
          pair.Look(byte);
          break;
        case 5:
          pair.Reach(static_cast<std::int8_t>(byte));
          break;
        default:
          break;
      }
    }
    if (what % 8 == 6) pair.Clone();
    if (what % 8 == 7) pair.Compare();
  }
  pair.Compare();
}

}  // namespace tavio::fuzz
