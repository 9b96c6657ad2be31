#pragma once

#include <lmdb.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

/// LMDB, the peer of the look-ups.
namespace bench {

inline void Check(int result) {
  if (result == 0) return;
  std::fprintf(stderr, "LMDB: %s\n", mdb_strerror(result));
  std::exit(1);
}

/// A file of trees in the folder for temporary files, removed at the end. It is open for writing at
/// first, and for reading from `FinishWriting` on.
class LmdbFile {
 public:
  explicit LmdbFile(unsigned trees) {
    path = std::filesystem::temp_directory_path() /
           ("benchmark." + std::to_string(std::random_device{}()));
    Check(mdb_env_create(&environment));
    Check(mdb_env_set_maxdbs(environment, trees));
    Check(mdb_env_set_mapsize(environment, std::size_t{1} << 30));
    Check(mdb_env_open(environment, path.c_str(), MDB_NOSUBDIR | MDB_NOSYNC | MDB_NOLOCK, 0600));
    Check(mdb_txn_begin(environment, nullptr, 0, &transaction));
  }
  LmdbFile(LmdbFile const&) = delete;
  LmdbFile& operator=(LmdbFile const&) = delete;
  ~LmdbFile() {
    mdb_txn_abort(transaction);
    mdb_env_close(environment);
    std::filesystem::remove(path);
  }

  /// A new tree.
  MDB_dbi Tree(char const* name, unsigned flags) {
    MDB_dbi tree;
    Check(mdb_dbi_open(transaction, name, MDB_CREATE | flags, &tree));
    return tree;
  }
  void SetOrder(MDB_dbi tree, MDB_cmp_func* compare) {
    Check(mdb_set_compare(transaction, tree, compare));
  }
  void Put(MDB_dbi tree, void* key, std::size_t keySize, void* data, std::size_t dataSize) {
    MDB_val name{keySize, key};
    MDB_val value{dataSize, data};
    Check(mdb_put(transaction, tree, &name, &value, 0));
  }
  void FinishWriting() {
    Check(mdb_txn_commit(transaction));
    Check(mdb_txn_begin(environment, nullptr, MDB_RDONLY, &transaction));
  }

  /// What stands at a key, which must be there.
  MDB_val Get(MDB_dbi tree, void* key, std::size_t keySize) {
    MDB_val name{keySize, key};
    MDB_val value;
    Check(mdb_get(transaction, tree, &name, &value));
    return value;
  }

 private:
  std::filesystem::path path;
  MDB_env* environment = nullptr;
  MDB_txn* transaction = nullptr;
};

}  // namespace bench
