#include "LumoApi/Value.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <thread>

using lumo::Data;
using lumo::Value;

namespace {

TEST(Data, SharesItsBytes) {
  const Data whole(std::string("hello world, and more than a small string holds"));
  const Data copy = whole, part = whole.slice(6, 5);
  EXPECT_EQ(copy.data(), whole.data());
  EXPECT_EQ(part.data(), whole.data() + 6);
  EXPECT_EQ(part.view(), "world");
  EXPECT_EQ(whole.slice(45, 99).size(), whole.size() - 45);
  EXPECT_TRUE(whole.slice(99, 1).empty());
  EXPECT_EQ(part, Data::copy("world"));
  Data from = whole, to = std::move(from);
  EXPECT_TRUE(from.empty() && !from.data() && to == whole);
  from = std::move(to);
  EXPECT_TRUE(to.empty() && !to.data() && from == whole);
  lumo::DataChain chain;
  chain.append(part);
  EXPECT_EQ(chain.joined().data(), part.data());
  chain.append(Data());
  chain.append(Data::copy("!"));
  EXPECT_EQ(chain.joined().view(), "world!");
}

TEST(Dictionary, ManyKeysInOrder) {
  lumo::Dictionary<int> many;
  for (int i = 0; i < 70'000; ++i) many.set("key" + std::to_string(i), i);
  for (int i = 0; i < 70'000; i += 7) many.set("key" + std::to_string(i), -i);
  EXPECT_EQ(many.size(), 70'000u);
  EXPECT_FALSE(many.find("key70000"));
  int place = 0;
  for (const auto& [key, value] : many) {
    ASSERT_EQ(key, "key" + std::to_string(place));
    ASSERT_EQ(value, place % 7 == 0 ? -place : place);
    ++place;
  }
  const lumo::Dictionary<int> copy = many;
  EXPECT_EQ(copy, many);
  EXPECT_EQ(*copy.find("key1"), 1);
}

TEST(Value, KeepsKindsAndNumbersApart) {
  const Value all[] = {Value(), true, false, 0, 1, -1, INT64_MIN, UINT64_MAX, 0.5, 1.0, "", "1", Data(),
      Value::Array{}, Value::Dictionary{}, Value::Array{1}, Value::Dictionary{{"1", 1}}};
  for (std::size_t i = 0; i < std::size(all); ++i) {
    for (std::size_t j = 0; j < std::size(all); ++j) EXPECT_EQ(all[i] == all[j], i == j) << i << " " << j;
  }
  EXPECT_EQ(*Value(std::uint64_t{INT64_MAX}).asInteger(), INT64_MAX);
  EXPECT_EQ(*Value(std::uint64_t{INT64_MAX} + 1).asUnsigned(), std::uint64_t{INT64_MAX} + 1);
  const Value::Dictionary forwards{{"a", 1}, {"b", 2}}, backwards{{"b", 2}, {"a", 1}};
  EXPECT_EQ(Value(forwards), Value(backwards));
}

TEST(Value, DepthTakesNoStack) {
  // A thread with a small stack, on which a recursion of this depth could not live.
  const auto work = [] {
    Value a = 1, b = 1;
    for (int i = 0; i < 1'000'000; ++i) {
      a = i % 2 ? Value(Value::Array{a}) : Value(Value::Dictionary{{"k", a}});
      b = i % 2 ? Value(Value::Array{b}) : Value(Value::Dictionary{{"k", b}});
    }
    const Value copy = a;
    EXPECT_TRUE(copy == a && a == b);
    EXPECT_FALSE(a == Value(Value::Array{b}));
  };
  rlimit before{};
  getrlimit(RLIMIT_STACK, &before);
  rlimit small = before;
  small.rlim_cur = 1 << 20;
  setrlimit(RLIMIT_STACK, &small);
  std::thread(work).join();
  setrlimit(RLIMIT_STACK, &before);
}

}  // namespace
