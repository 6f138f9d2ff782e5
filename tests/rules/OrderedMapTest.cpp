#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>

#include "containers/OrderedMap.h"

namespace tavio::vexo {
namespace {

// A value that leaves does so when the map can be used again, and not before.
TEST(OrderedMapTest, IsWholeWhenAValueIsLetGo) {
  OrderedMap<std::shared_ptr<void>> map;
  std::string counts;
  const auto farewell = [&] {
    return std::shared_ptr<void>(nullptr, [&](void*) {
      counts += std::to_string(map.Count()) + (map.Find(u"k") ? "+ " : "- ");
      map.Set(u"other", nullptr);
    });
  };
  map.Set(u"k", farewell());
  map.Set(u"k", farewell());
  map.Remove(u"k");
  EXPECT_EQ(counts, "1+ 1- ");
}

using Model = std::vector<std::pair<Text, int>>;

void ExpectSame(OrderedMap<int>& map, const Model& model) {
  ASSERT_EQ(map.Count(), model.size());
  for (std::size_t i = 0; i < model.size(); ++i) {
    const auto& [key, value] = model[i];
    const auto* entry = map.At(static_cast<std::int64_t>(i) + 1);
    ASSERT_TRUE(entry && Text(entry->Key().View()) == key && entry->Value() == value) << i;
    ASSERT_EQ(map.Find(key), &entry->Value());
  }
}

TEST(OrderedMapTest, AgreesWithAPlainList) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const unsigned keys = 4u << seed % 7;  // few keys are often removed and set again
    const unsigned removals = 10 + seed % 5 * 20;
    OrderedMap<int> map;
    Model model;
    for (int step = 0; step < 600; ++step) {
      const Text key(1, static_cast<Char>(random() % keys));
      const auto found = std::ranges::find(model, key, &Model::value_type::first);
      ASSERT_EQ(map.Find(key) != nullptr, found != model.end());
      if (random() % 100 < removals) {
        map.Remove(key);
        if (found != model.end()) model.erase(found);
      } else {
        map.Set(key, step);
        found == model.end() ? void(model.emplace_back(key, step)) : void(found->second = step);
      }
      if (step % 7 == 0) ASSERT_NO_FATAL_FAILURE(ExpectSame(map, model));
      if (step % 50 == 0) map = map.CloneWith([](int value) { return value; });
    }
  }
}

}  // namespace
}  // namespace tavio::vexo
