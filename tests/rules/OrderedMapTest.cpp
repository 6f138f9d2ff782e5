#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include "containers/OrderedMap.h"

namespace tavio::vexo {
namespace {

using Numbers = OrderedMap<int>;

Text KeyOf(std::size_t number) {
  const auto digits = std::to_string(number);
  return Text(digits.begin(), digits.end());
}

TEST(OrderedMapTest, KeysAreExactAndLaidOutAsTexts) {
  const Text keys[] = {u"", u" ", u"FCode", u"fcode", u"FCod", u"FCodes", Text(u"a\0b", 3), Text(u"a\0c", 3), u"保存"};
  Numbers map;
  int number = 0;
  for (const auto& key : keys) map.Set(key, ++number);
  number = 0;
  for (const auto& key : keys) {
    ASSERT_NE(map.Find(key), nullptr);
    EXPECT_EQ(*map.Find(key), ++number);
    const Char* lent = map.At(number)->Key().Get();
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<const char*>(lent) - sizeof bytes, sizeof bytes);
    EXPECT_EQ(bytes, key.size() * sizeof(Char));
    EXPECT_EQ(Text(lent, key.size() + 1), key + Char{});
  }
  EXPECT_EQ(map.Find(u"FCODE"), nullptr);
  for (const int outside : {-1, 0, 10}) EXPECT_EQ(map.At(outside), nullptr);
}

TEST(OrderedMapTest, ReadsMoveNothing) {
  for (const std::size_t count : {5u, 8u, 9u, 1000u}) {
    Numbers map;
    for (std::size_t i = 0; i < count; ++i) map.Set(KeyOf(i), 0);
    map.Remove(KeyOf(0));
    map.Remove(KeyOf(count - 2));
    const int* lent = map.Find(KeyOf(count - 1));
    for (std::size_t i = 1; i <= map.Count(); ++i) EXPECT_NE(map.At(static_cast<std::int64_t>(i)), nullptr);
    EXPECT_EQ(map.Find(KeyOf(count - 1)), lent) << count;
  }
}

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

TEST(OrderedMapTest, RecordsShareTheKeysTheyHaveInCommon) {
  std::vector<Numbers> records(600);
  for (std::size_t i = 0; i < records.size(); ++i) {
    records[i].Set(u"FCode", 1);
    records[i].Set(KeyOf(i), 2);  // more keys than are remembered
  }
  std::size_t shared = 0;
  for (std::size_t i = 0; i < records.size(); ++i) {
    EXPECT_EQ(Text(records[i].At(2)->Key().View()), KeyOf(i));
    if (i > 0 && records[i].At(1)->Key().Get() == records[i - 1].At(1)->Key().Get()) ++shared;
  }
  EXPECT_GT(shared, 500u);
}

using Model = std::vector<std::pair<Text, int>>;

void ExpectSame(Numbers& map, const Model& model) {
  ASSERT_EQ(map.Count(), model.size());
  std::int64_t position = 0;
  for (const auto& [key, value] : model) {
    const auto* entry = map.At(++position);
    ASSERT_NE(entry, nullptr);
    ASSERT_EQ(Text(entry->Key().View()), key);
    ASSERT_EQ(entry->Value(), value);
    ASSERT_EQ(map.Find(key), &entry->Value());
  }
}

TEST(OrderedMapTest, AgreesWithAPlainList) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const unsigned keys = 4u << seed % 7;  // few keys are often removed and set again
    const unsigned removals = 10 + seed % 5 * 20;
    Numbers map;
    Model model;
    for (int step = 0; step < 600; ++step) {
      const Text key = KeyOf(random() % keys);
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
      if (step % 50 == 0) {
        auto clone = map.CloneWith([](int value) { return value; });
        ASSERT_NO_FATAL_FAILURE(ExpectSame(clone, model));
        if (step % 100 == 0) std::swap(map, clone);
      }
    }
  }
}

// Removes entries by position, from the first or the last on, every one or every second.
double SecondsOfWalk(std::size_t count, std::int64_t first, std::int64_t step) {
  double best = 1e9;
  for (int run = 0; run < 3; ++run) {
    Numbers map;
    for (std::size_t i = 0; i < count; ++i) map.Set(KeyOf(i), 0);
    const auto start = std::chrono::steady_clock::now();
    for (auto at = first; const auto* entry = map.At(at); at += step) map.Remove(Text(entry->Key().View()));
    best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  return best;
}

// Sixteen times the entries take up to fifty times as long (caches), but not the 256 times of a walk that moves the
// rest.
TEST(OrderedMapTest, RemovingWalksAreNotQuadratic) {
  constexpr std::int64_t kFew = 2000, kMany = 16 * kFew;
  for (const std::int64_t step : {0, 1, -1, -2}) {
    const auto ratio =
        SecondsOfWalk(kMany, step < 0 ? kMany : 1, step) / SecondsOfWalk(kFew, step < 0 ? kFew : 1, step);
    EXPECT_LT(ratio, 128) << "step " << step;
  }
}

}  // namespace
}  // namespace tavio::vexo
