#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <xotypemgr.hpp>

#include "tests/xotypmgr/expected_rows.hpp"

// Where a program's own allocation functions replace those of the shared library too, they count
// what the library asks for. A Windows library keeps the functions that it was linked with.
#if !defined(_WIN32)

namespace {

std::atomic<int> allocations = 0;
std::atomic<std::size_t> lastSize = 0;
std::atomic<bool> nextFails = false;

/// What an array holds before anyone has written to it.
constexpr unsigned char kUntouched = 0xA5;

void* CountedAllocation(std::size_t size) {
  ++allocations;
  lastSize = size;
  if (nextFails.exchange(false) || size > PTRDIFF_MAX) throw std::bad_alloc();
  if (void* const memory = std::malloc(size != 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return CountedAllocation(size); }
void* operator new[](std::size_t size) {
  return std::memset(CountedAllocation(size), kUntouched, size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace xo::test {
namespace {

class Allocations : public testing::TestWithParam<int> {
 protected:
  char const id = static_cast<char>(GetParam());
  XoTypeMgr const manager;
};

INSTANTIATE_TEST_SUITE_P(EveryScalar, Allocations, testing::ValuesIn(kScalarRows));

TEST_P(Allocations, CreateAllocatesOnce) {
  int const before = allocations;
  void* const values = manager.Create(id, 3);
  EXPECT_EQ(allocations - before, 1);
  manager.Delete(id, values, 3);
}

TEST_P(Allocations, CreateAsksForItsElementsAndNoMore) {
  std::size_t const width = CurrentTypeTable[GetParam()]->MemLen;
  for (unsigned count : {1u, 2u, 5u, 1000u}) {
    void* const values = manager.Create(id, count);
    EXPECT_EQ(lastSize, count * width);
    manager.Delete(id, values, count);
  }
}

TEST_P(Allocations, OnlyTheByteSizedTypesAreCleared) {
  unsigned char const expected = GetParam() == 0 || GetParam() == 10 ? 0 : kUntouched;
  for (unsigned count : {1u, 2u, 5u, 1000u}) {
    auto const size = static_cast<std::ptrdiff_t>(count * CurrentTypeTable[GetParam()]->MemLen);
    auto* const values = static_cast<unsigned char*>(manager.Create(id, count));
    EXPECT_EQ(std::count(values, values + size, expected), size);
    manager.Delete(id, values, count);
  }
}

TEST_P(Allocations, CountsThatOverflowAskForTheLargestSize) {
  std::size_t const width = CurrentTypeTable[GetParam()]->MemLen;
  for (unsigned count : {0x80000000u, 0xC0000000u, 0xFFFFFFFFu}) {
    // The count widens as a signed number; bytes alone do not overflow by it.
    std::size_t const elements = ~std::size_t{0} - (0xFFFFFFFFu - count);
    EXPECT_THROW(manager.Create(id, count), std::bad_alloc);
    EXPECT_EQ(lastSize, width == 1 ? elements : SIZE_MAX);
  }
}

TEST_P(Allocations, StoredValuesAreHandledWithoutAny) {
  constexpr unsigned kCount = 300;
  static unsigned char first[kCount * 8], second[kCount * 8];
  int const before = allocations;
  int error = 0;
  for (unsigned char format : std::initializer_list<unsigned char>{8, 1, 2, 0x81, 0x82}) {
    manager.Cmp(id, 0, first, 0, second, 0, kCount, format, error);
    manager.Cmp(id, first, second, 0, 1, format);
    manager.Hash(id, 0, first, kCount, format, error);
    manager.Store(id, second, first, format, kCount);
    manager.Load(id, second, first, format, kCount);
    manager.DiskLenGet(id, nullptr, format, kCount, 8);
    manager.DiskLenGetFromMemFile(id, nullptr, format, kCount);
    manager.Translate(id, second, format, 0, first, 8, 0, kCount);
    manager.Translate(id, second, 8, 0, first, format, 0, kCount);
    manager.Translate(id, second, 1, 8, first, format, 8, kCount);
  }
  manager.GetValue(id, first, 1, 8, 'M');
  EXPECT_EQ(allocations - before, 0);
}

TEST_P(Allocations, ConstructionAndCopyNeedNone) {
  static unsigned char first[64 * 8], second[64 * 8];
  TypeDescriptor const& row = *CurrentTypeTable[GetParam()];
  int const before = allocations;
  row.Constructor(first, 64, 0);
  row.Copy(second, first, 64, 1);
  row.Assignment(second, first, 64, 0);
  row.Destructor(first, 64, 0);
  EXPECT_EQ(allocations - before, 0);
}

TEST(StartWithoutMemory, FailsAndLeavesTheDefaultManagerAsItWas) {
  XoTypeMgr* const atLoad = DefaultTypeManager;
  XoTypeMgr own;
  for (XoTypeMgr* present : {static_cast<XoTypeMgr*>(nullptr), &own}) {
    DefaultTypeManager = present;
    nextFails = true;
    EXPECT_THROW(___XoTypemgrContext(1), std::bad_alloc);
    EXPECT_FALSE(nextFails.exchange(false));
    EXPECT_EQ(DefaultTypeManager, present);
  }
  DefaultTypeManager = atLoad;
}

}  // namespace
}  // namespace xo::test

#else

TEST(Allocations, AreCountedElsewhere) { GTEST_SKIP(); }

#endif
