#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <functional>
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

// The keys by position, each with its value: "a1 b2".
std::string Show(Numbers& map) {
  std::string text;
  for (int i = 1; const auto* entry = map.At(i); ++i) {
    if (i > 1) text += ' ';
    const auto key = entry->Key().View();
    text += std::string(key.begin(), key.end()) + std::to_string(entry->Value());
  }
  return text;
}

TEST(OrderedMapTest, KeepsTheOrderOfInsertion) {
  // Every letter is set to its position in the text, and one behind a minus is removed.
  const struct {
    const char* steps;
    const char* left;
  } cases[] = {
      {"", ""},
      {"abc", "a0 b1 c2"},
      {"aba", "a2 b1"},
      {"abAB", "a0 b1 A2 B3"},
      {"abc-a", "b1 c2"},
      {"abc-b", "a0 c2"},
      {"abc-c", "a0 b1"},
      {"abc-x", "a0 b1 c2"},
      {"abc-a-a", "b1 c2"},
      {"abc-aa", "b1 c2 a5"},
      {"abcde-b-dx", "a0 c2 e4 x9"},
      {"abc-a-b-c", ""},
      {"abc-a-b-cb", "b9"},
      {"abcdefghijklmnop-c-m-h", "a0 b1 d3 e4 f5 g6 i8 j9 k10 l11 n13 o14 p15"},
      {"abcdefghijklmnop-a-b-c-d-e-f-g-h-i-j-kqa", "l11 m12 n13 o14 p15 q38 a39"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.steps);
    Numbers map;
    for (int i = 0; c.steps[i]; ++i) {
      const bool removes = c.steps[i] == '-';
      const Text key(1, static_cast<Char>(c.steps[removes ? ++i : i]));
      removes ? map.Remove(key) : map.Set(key, i);
    }
    EXPECT_EQ(Show(map), c.left);
    auto clone = map.CloneWith([](int value) { return value; });
    EXPECT_EQ(Show(clone), c.left);
  }
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
  EXPECT_EQ(map.At(0), nullptr);
  EXPECT_EQ(map.At(-1), nullptr);
  EXPECT_EQ(map.At(10), nullptr);
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

// The same steps on a plain list.
class Model {
 public:
  void Set(const Text& key, int value) {
    if (auto* found = Find(key)) {
      *found = value;
    } else {
      entries_.emplace_back(key, value);
    }
  }
  void Remove(const Text& key) {
    std::erase_if(entries_, [&](const auto& entry) { return entry.first == key; });
  }
  int* Find(const Text& key) {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const auto& e) { return e.first == key; });
    return found == entries_.end() ? nullptr : &found->second;
  }
  std::vector<std::pair<Text, int>> entries_;
};

void ExpectSame(Numbers& map, Model& model) {
  ASSERT_EQ(map.Count(), model.entries_.size());
  std::int64_t position = 0;
  for (const auto& [key, value] : model.entries_) {
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
      if (random() % 100 < removals) {
        map.Remove(key);
        model.Remove(key);
      } else {
        map.Set(key, step);
        model.Set(key, step);
      }
      ASSERT_EQ(map.Find(key) != nullptr, model.Find(key) != nullptr);
      if (step % 7 == 0) ASSERT_NO_FATAL_FAILURE(ExpectSame(map, model));
      if (step % 50 == 0) {
        auto clone = map.CloneWith([](int value) { return value; });
        ASSERT_NO_FATAL_FAILURE(ExpectSame(clone, model));
        if (step % 100 == 0) std::swap(map, clone);
      }
    }
  }
}

using Walk = std::function<void(Numbers&)>;

double SecondsOf(const Walk& walk, std::size_t count) {
  double best = 1e9;
  for (int run = 0; run < 3; ++run) {
    Numbers map;
    for (std::size_t i = 0; i < count; ++i) map.Set(KeyOf(i), 0);
    const auto start = std::chrono::steady_clock::now();
    walk(map);
    best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  return best;
}

// Sixteen times the entries take up to fifty times as long (caches), but not the 256 times of a walk that moves the
// rest.
TEST(OrderedMapTest, RemovingWalksAreNotQuadratic) {
  const auto removeAt = [](Numbers& map, std::int64_t position) { map.Remove(Text(map.At(position)->Key().View())); };
  const struct {
    const char* name;
    Walk walk;
  } cases[] = {
      {"first",
       [&](Numbers& m) {
         while (m.Count()) removeAt(m, 1);
       }},
      {"last",
       [&](Numbers& m) {
         while (m.Count()) removeAt(m, static_cast<std::int64_t>(m.Count()));
       }},
      {"every second, forwards",
       [&](Numbers& m) {
         for (int i = 1; m.At(i); ++i) removeAt(m, i);
       }},
      {"every second, backwards",
       [&](Numbers& m) {
         for (auto i = static_cast<std::int64_t>(m.Count()); i > 0; i -= 2) removeAt(m, i);
       }},
      {"queue",
       [&](Numbers& m) {
         for (auto i = m.Count(), end = 3 * i; i < end; ++i) {
           removeAt(m, 1);
           m.Set(KeyOf(i), 0);
         }
       }},
  };
  for (const auto& c : cases) {
    const double few = SecondsOf(c.walk, 2000);
    const double many = SecondsOf(c.walk, 32000);
    EXPECT_LT(many / few, 128) << c.name;
  }
}

}  // namespace
}  // namespace tavio::vexo
