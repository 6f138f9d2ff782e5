#include <gtest/gtest.h>

#include <memory>
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

}  // namespace
}  // namespace tavio::vexo
