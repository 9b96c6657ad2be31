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

#include "tools/index_order.hpp"

/// Look-ups in LMDB through the tool's own comparer, against LMDB's built-in integer keys.

namespace {

constexpr std::size_t kKeys = 1'000'000;

void Check(int result) {
  if (result == 0) return;
  std::fprintf(stderr, "LMDB: %s\n", mdb_strerror(result));
  std::exit(1);
}

/// One file with two trees of the same random keys, made at first use and removed at the end.
class Trees {
 public:
  static Trees& Get() {
    static Trees trees;
    return trees;
  }

  Trees(Trees const&) = delete;
  Trees& operator=(Trees const&) = delete;

  ~Trees() {
    mdb_txn_abort(transaction);
    mdb_env_close(environment);
    std::filesystem::remove(path);
  }

  std::vector<o_8b> keys;
  MDB_txn* transaction = nullptr;
  MDB_dbi compared = 0;
  MDB_dbi integers = 0;

 private:
  Trees() {
    std::mt19937_64 random(7);
    keys.resize(kKeys);
    // LMDB's integer keys are unsigned, so that both trees must hold the keys in the same order.
    for (auto& key : keys) key = static_cast<o_8b>(random() >> 1);
    path = std::filesystem::temp_directory_path() /
           ("index_benchmark." + std::to_string(std::random_device{}()));
    Check(mdb_env_create(&environment));
    Check(mdb_env_set_maxdbs(environment, 2));
    Check(mdb_env_set_mapsize(environment, std::size_t{1} << 30));
    Check(mdb_env_open(environment, path.c_str(), MDB_NOSUBDIR | MDB_NOSYNC | MDB_NOLOCK, 0600));
    Check(mdb_txn_begin(environment, nullptr, 0, &transaction));
    xo::tool::SetIndexOrder(Xo8B_T, FormLittle);
    Check(mdb_dbi_open(transaction, "compared", MDB_CREATE, &compared));
    Check(mdb_set_compare(transaction, compared, xo::tool::CompareIndexKeys));
    Check(mdb_dbi_open(transaction, "integers", MDB_CREATE | MDB_INTEGERKEY, &integers));
    for (MDB_dbi const tree : {compared, integers}) {
      for (auto& key : keys) {
        MDB_val name{sizeof key, &key};
        MDB_val data{sizeof key, &key};
        Check(mdb_put(transaction, tree, &name, &data, 0));
      }
    }
    Check(mdb_txn_commit(transaction));
    Check(mdb_txn_begin(environment, nullptr, MDB_RDONLY, &transaction));
    std::shuffle(keys.begin(), keys.end(), random);
  }

  std::filesystem::path path;
  MDB_env* environment = nullptr;
};

void LookUp(benchmark::State& state, MDB_dbi Trees::*tree) {
  Trees& trees = Trees::Get();
  std::size_t index = 0;
  for (auto _ : state) {
    MDB_val name{sizeof(o_8b), &trees.keys[index]};
    MDB_val data;
    Check(mdb_get(trees.transaction, trees.*tree, &name, &data));
    benchmark::DoNotOptimize(data);
    index = (index + 1) % kKeys;
  }
}

[[maybe_unused]] bool const registered = [] {
  constexpr char kOurs[] = "LMDB look-up, 1e6 random o_8b/ours";
  constexpr char kPeer[] = "LMDB look-up, 1e6 random o_8b/LMDB integer keys";
  benchmark::RegisterBenchmark(kOurs, LookUp, &Trees::compared);
  benchmark::RegisterBenchmark(kPeer, LookUp, &Trees::integers);
  return true;
}();

}  // namespace
