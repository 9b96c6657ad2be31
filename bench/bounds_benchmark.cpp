#include <benchmark/benchmark.h>
#include <lmdb.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

/// What it costs to ask an index for the worth of a predicate, against one look-up in that index:
/// LMDB's own, by its built-in integer keys.

namespace {

constexpr std::size_t kKeys = 300'000;

void Check(int result) {
  if (result == 0) return;
  std::fprintf(stderr, "LMDB: %s\n", mdb_strerror(result));
  std::exit(1);
}

/// A file with one tree of random keys, made at first use and removed at the end.
class Tree {
 public:
  static Tree& Get() {
    static Tree tree;
    return tree;
  }

  Tree(Tree const&) = delete;
  Tree& operator=(Tree const&) = delete;

  ~Tree() {
    mdb_txn_abort(transaction);
    mdb_env_close(environment);
    std::filesystem::remove(path);
  }

  std::vector<o_4b> keys;
  o_4b lowest = 0;
  o_4b highest = 0;
  MDB_txn* transaction = nullptr;
  MDB_dbi tree = 0;

 private:
  Tree() {
    std::mt19937 random(7);
    keys.resize(kKeys);
    // LMDB's integer keys are unsigned.
    for (auto& key : keys) key = static_cast<o_4b>(random() >> 1);
    lowest = *std::min_element(keys.begin(), keys.end());
    highest = *std::max_element(keys.begin(), keys.end());
    path = std::filesystem::temp_directory_path() /
           ("bounds_benchmark." + std::to_string(std::random_device{}()));
    Check(mdb_env_create(&environment));
    Check(mdb_env_set_mapsize(environment, std::size_t{1} << 28));
    Check(mdb_env_open(environment, path.c_str(), MDB_NOSUBDIR | MDB_NOSYNC | MDB_NOLOCK, 0600));
    Check(mdb_txn_begin(environment, nullptr, 0, &transaction));
    Check(mdb_dbi_open(transaction, nullptr, MDB_INTEGERKEY, &tree));
    for (auto& key : keys) {
      MDB_val name{sizeof key, &key};
      MDB_val data{sizeof key, &key};
      Check(mdb_put(transaction, tree, &name, &data, 0));
    }
    Check(mdb_txn_commit(transaction));
    Check(mdb_txn_begin(environment, nullptr, MDB_RDONLY, &transaction));
  }

  std::filesystem::path path;
  MDB_env* environment = nullptr;
};

void LookUp(benchmark::State& state) {
  Tree& tree = Tree::Get();
  std::size_t index = 0;
  for (auto _ : state) {
    MDB_val name{sizeof(o_4b), &tree.keys[index]};
    MDB_val data;
    Check(mdb_get(tree.transaction, tree.tree, &name, &data));
    benchmark::DoNotOptimize(data);
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
