#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>
#include <xotypemgr.hpp>

#include "bench/lmdb_file.hpp"

/// What it costs to ask an index for the worth of a predicate, against one look-up in that index:
/// LMDB's own, by its built-in integer keys.

namespace {

constexpr std::size_t kKeys = 300'000;

/// A tree of random keys, made at first use.
class Tree {
 public:
  static Tree& Get() {
    static Tree tree;
    return tree;
  }

  std::vector<o_4b> keys;
  o_4b lowest = 0;
  o_4b highest = 0;
  bench::LmdbFile file{1};
  MDB_dbi tree = 0;

 private:
  Tree() {
    std::mt19937 random(7);
    keys.resize(kKeys);
    // LMDB's integer keys are unsigned.
    for (auto& key : keys) key = static_cast<o_4b>(random() >> 1);
    lowest = *std::min_element(keys.begin(), keys.end());
    highest = *std::max_element(keys.begin(), keys.end());
    tree = file.Tree("integers", MDB_INTEGERKEY);
    for (auto& key : keys) file.Put(tree, &key, sizeof key, &key, sizeof key);
    file.FinishWriting();
  }
};

void LookUp(benchmark::State& state) {
  Tree& tree = Tree::Get();
  std::size_t index = 0;
  for (auto _ : state) {
    MDB_val const found = tree.file.Get(tree.tree, &tree.keys[index], sizeof(o_4b));
    benchmark::DoNotOptimize(found);
    index = (index + 1) % kKeys;
  }
}

XoIdxBounds RangeOf(Tree& tree) {
  XoIdxBounds range;
  range.low = &tree.lowest;
  range.high = &tree.highest;
  range.lowLen = sizeof tree.lowest;
  range.highLen = sizeof tree.highest;
  return range;
}

/// The share alone.
void Estimate(benchmark::State& state) {
  Tree& tree = Tree::Get();
  XoTypeMgr const manager;
  XoIdxBounds range = RangeOf(tree);
  std::size_t index = 0;
  for (auto _ : state) {
    unsigned short op = kXoBoundEqual | kXoBoundBelow;
    benchmark::DoNotOptimize(manager.EvalAndBound(Xo4B_T, &range, op, &tree.keys[index], FormLittle,
                                                  1, nullptr, nullptr));
    index = (index + 1) % kKeys;
  }
}

/// The share, and both bounds of a value, which are given back.
void EstimateAndBound(benchmark::State& state) {
  Tree& tree = Tree::Get();
  XoTypeMgr const manager;
  XoIdxBounds range = RangeOf(tree);
  std::size_t index = 0;
  for (auto _ : state) {
    unsigned short op = kXoBoundEqual;
    XoIdxBounds bounds;
    benchmark::DoNotOptimize(manager.EvalAndBound(Xo4B_T, &range, op, &tree.keys[index], FormLittle,
                                                  1, &bounds, nullptr));
    benchmark::DoNotOptimize(bounds);
    ReleaseBounds(bounds);
    index = (index + 1) % kKeys;
  }
}

[[maybe_unused]] bool const registered = [] {
  benchmark::RegisterBenchmark("EvalAndBound, o_4b/ours", Estimate);
  benchmark::RegisterBenchmark("EvalAndBound, o_4b/LMDB mdb_get, 3e5 keys", LookUp);
  benchmark::RegisterBenchmark("EvalAndBound, o_4b with both bounds/ours", EstimateAndBound);
  benchmark::RegisterBenchmark("EvalAndBound, o_4b with both bounds/LMDB mdb_get, 3e5 keys",
                               LookUp);
  return true;
}();

}  // namespace
