#include <benchmark/benchmark.h>
#include <lmdb.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tools/index_order.hpp"

/// Look-ups in LMDB through the tool's own comparers: against LMDB's built-in integer keys, and of
/// words in their language's order against keys that LMDB compares as bytes.

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
  // The words' trees have an order of their own.
  xo::tool::SetIndexOrder(Xo8B_T, FormLittle);
  std::size_t index = 0;
  for (auto _ : state) {
    MDB_val name{sizeof(o_8b), &trees.keys[index]};
    MDB_val data;
    Check(mdb_get(trees.transaction, trees.*tree, &name, &data));
    benchmark::DoNotOptimize(data);
    index = (index + 1) % kKeys;
  }
}

/// A word as the user writes it, and as the library has it.
struct Word {
  std::string bytes;
  XoString text;
};

constexpr std::size_t kWords = 300'000;
constexpr unsigned kKeyLength = 64;
constexpr unsigned char kKeyFormat = FormLittle | FormatIndexKey;

/// Writes the index key of a text; returns its bytes.
std::size_t MakeKey(XoTypeMgr const& manager, XoString& text, unsigned char* key) {
  return manager.Translate(XoSTRING_T, key, kKeyFormat, kKeyLength, &text, FormMemory, 0, 1);
}

/// One file with two trees of the same words.
class WordTrees {
 public:
  static WordTrees& Get() {
    static WordTrees trees;
    return trees;
  }

  WordTrees(WordTrees const&) = delete;
  WordTrees& operator=(WordTrees const&) = delete;

  ~WordTrees() {
    mdb_txn_abort(transaction);
    mdb_env_close(environment);
    std::filesystem::remove(path);
  }

  XoTypeMgr manager;
  std::vector<Word> words;
  MDB_txn* transaction = nullptr;
  MDB_dbi compared = 0;
  MDB_dbi asBytes = 0;

 private:
  WordTrees() {
    ReadWords("/usr/share/dict/ngerman");
    path = std::filesystem::temp_directory_path() /
           ("index_benchmark." + std::to_string(std::random_device{}()));
    Check(mdb_env_create(&environment));
    Check(mdb_env_set_maxdbs(environment, 2));
    Check(mdb_env_set_mapsize(environment, std::size_t{1} << 30));
    Check(mdb_env_open(environment, path.c_str(), MDB_NOSUBDIR | MDB_NOSYNC | MDB_NOLOCK, 0600));
    Check(mdb_txn_begin(environment, nullptr, 0, &transaction));
    xo::tool::SetIndexOrder(XoSTRING_T, FormLittle);
    Check(mdb_dbi_open(transaction, "compared", MDB_CREATE, &compared));
    Check(mdb_set_compare(transaction, compared, xo::tool::indexOrder.compare));
    Check(mdb_dbi_open(transaction, "bytes", MDB_CREATE, &asBytes));
    std::uint64_t number = 0;
    for (Word& word : words) {
      unsigned char key[kKeyLength];
      MDB_val data{sizeof number, &++number};
      MDB_val sorted{MakeKey(manager, word.text, key), key};
      Check(mdb_put(transaction, compared, &sorted, &data, 0));
      MDB_val plain{word.bytes.size(), word.bytes.data()};
      Check(mdb_put(transaction, asBytes, &plain, &data, 0));
    }
    Check(mdb_txn_commit(transaction));
    Check(mdb_txn_begin(environment, nullptr, MDB_RDONLY, &transaction));
    std::shuffle(words.begin(), words.end(), std::mt19937(7));
  }

  void ReadWords(char const* list) {
    std::ifstream file(list);
    for (std::string line; std::getline(file, line);) {
      Word word{line, {}};
      if (XoMBS2XoString(line.data(), word.text, static_cast<int>(line.size())) > 0) {
        words.push_back(std::move(word));
      }
    }
    if (words.size() < kWords) {
      std::fprintf(stderr, "index_benchmark: %s: too few words, is its package installed?\n", list);
      std::exit(2);
    }
    std::shuffle(words.begin(), words.end(), std::mt19937(20240607));
    words.resize(kWords);
  }

  std::filesystem::path path;
  MDB_env* environment = nullptr;
};

/// The key is made of the word each time, as a search does.
void LookUpWord(benchmark::State& state) {
  WordTrees& trees = WordTrees::Get();
  xo::tool::SetIndexOrder(XoSTRING_T, FormLittle);
  std::size_t index = 0;
  for (auto _ : state) {
    unsigned char key[kKeyLength];
    MDB_val name{MakeKey(trees.manager, trees.words[index].text, key), key};
    MDB_val data;
    Check(mdb_get(trees.transaction, trees.compared, &name, &data));
    benchmark::DoNotOptimize(data);
    index = (index + 1) % kWords;
  }
}

void LookUpBytes(benchmark::State& state) {
  WordTrees& trees = WordTrees::Get();
  std::size_t index = 0;
  for (auto _ : state) {
    std::string& bytes = trees.words[index].bytes;
    MDB_val name{bytes.size(), bytes.data()};
    MDB_val data;
    Check(mdb_get(trees.transaction, trees.asBytes, &name, &data));
    benchmark::DoNotOptimize(data);
    index = (index + 1) % kWords;
  }
}

[[maybe_unused]] bool const registered = [] {
  constexpr char kOurs[] = "LMDB look-up, 1e6 random o_8b/ours";
  constexpr char kPeer[] = "LMDB look-up, 1e6 random o_8b/LMDB integer keys";
  benchmark::RegisterBenchmark(kOurs, LookUp, &Trees::compared);
  benchmark::RegisterBenchmark(kPeer, LookUp, &Trees::integers);
  benchmark::RegisterBenchmark("LMDB look-up, 3e5 German words/ours", LookUpWord);
  benchmark::RegisterBenchmark("LMDB look-up, 3e5 German words/LMDB memcmp keys", LookUpBytes);
  return true;
}();

}  // namespace
