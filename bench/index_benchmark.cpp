#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "bench/lmdb_file.hpp"
#include "tools/index_order.hpp"

/// Look-ups in LMDB through the tool's own comparers: against LMDB's built-in integer keys, and of
/// words in their language's order against keys that LMDB compares as bytes.

namespace {

constexpr std::size_t kKeys = 1'000'000;

/// Two trees of the same random keys, made at first use.
class Trees {
 public:
  static Trees& Get() {
    static Trees trees;
    return trees;
  }

  std::vector<o_8b> keys;
  bench::LmdbFile file{2};
  MDB_dbi compared = 0;
  MDB_dbi integers = 0;

 private:
  Trees() {
    std::mt19937_64 random(7);
    keys.resize(kKeys);
    // LMDB's integer keys are unsigned, so that both trees must hold the keys in the same order.
    for (auto& key : keys) key = static_cast<o_8b>(random() >> 1);
    xo::tool::SetIndexOrder(Xo8B_T, FormLittle);
    compared = file.Tree("compared", 0);
    file.SetOrder(compared, xo::tool::CompareIndexKeys);
    integers = file.Tree("integers", MDB_INTEGERKEY);
    for (MDB_dbi const tree : {compared, integers}) {
      for (auto& key : keys) file.Put(tree, &key, sizeof key, &key, sizeof key);
    }
    file.FinishWriting();
    std::shuffle(keys.begin(), keys.end(), random);
  }
};

void LookUp(benchmark::State& state, MDB_dbi Trees::*tree) {
  Trees& trees = Trees::Get();
  // The words' trees have an order of their own.
  xo::tool::SetIndexOrder(Xo8B_T, FormLittle);
  std::size_t index = 0;
  for (auto _ : state) {
    MDB_val const found = trees.file.Get(trees.*tree, &trees.keys[index], sizeof(o_8b));
    benchmark::DoNotOptimize(found);
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

/// Two trees of the same words, made at first use.
class WordTrees {
 public:
  static WordTrees& Get() {
    static WordTrees trees;
    return trees;
  }

  XoTypeMgr manager;
  std::vector<Word> words;
  bench::LmdbFile file{2};
  MDB_dbi compared = 0;
  MDB_dbi asBytes = 0;

 private:
  WordTrees() {
    ReadWords("/usr/share/dict/ngerman");
    xo::tool::SetIndexOrder(XoSTRING_T, FormLittle);
    compared = file.Tree("compared", 0);
    file.SetOrder(compared, xo::tool::indexOrder.compare);
    asBytes = file.Tree("bytes", 0);
    std::uint64_t number = 0;
    for (Word& word : words) {
      unsigned char key[kKeyLength];
      ++number;
      std::size_t const size = MakeKey(manager, word.text, key);
      file.Put(compared, key, size, &number, sizeof number);
      file.Put(asBytes, word.bytes.data(), word.bytes.size(), &number, sizeof number);
    }
    file.FinishWriting();
    std::shuffle(words.begin(), words.end(), std::mt19937(7));
  }

  void ReadWords(char const* list) {
    std::ifstream lines(list);
    for (std::string line; std::getline(lines, line);) {
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
};

/// The key is made of the word each time, as a search does.
void LookUpWord(benchmark::State& state) {
  WordTrees& trees = WordTrees::Get();
  xo::tool::SetIndexOrder(XoSTRING_T, FormLittle);
  std::size_t index = 0;
  for (auto _ : state) {
    unsigned char key[kKeyLength];
    std::size_t const size = MakeKey(trees.manager, trees.words[index].text, key);
    MDB_val const found = trees.file.Get(trees.compared, key, size);
    benchmark::DoNotOptimize(found);
    index = (index + 1) % kWords;
  }
}

void LookUpBytes(benchmark::State& state) {
  WordTrees& trees = WordTrees::Get();
  std::size_t index = 0;
  for (auto _ : state) {
    std::string& bytes = trees.words[index].bytes;
    MDB_val const found = trees.file.Get(trees.asBytes, bytes.data(), bytes.size());
    benchmark::DoNotOptimize(found);
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
