#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/scalar_rows.hpp"

namespace xo::test {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kAddressSanitizer = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kAddressSanitizer = true;
#else
constexpr bool kAddressSanitizer = false;
#endif
#else
constexpr bool kAddressSanitizer = false;
#endif

template <class Row>
class ScalarLifecycle : public RandomTest {
 protected:
  using Element = typename Row::Value;
  static constexpr char kId = Row::kId;
  static constexpr std::size_t kWidth = sizeof(Element);

  TypeDescriptor const& row = *CurrentTypeTable[int{kId}];
  XoTypeMgr manager;
};

TYPED_TEST_SUITE(ScalarLifecycle, ScalarRows, ScalarName);

TYPED_TEST(ScalarLifecycle, CreateGivesAlignedMemoryForEveryElement) {
  for (unsigned count : {0u, 1u, 2u, 7u, 1000u, 100000u}) {
    void* const values = this->manager.Create(this->kId, count);
    ASSERT_NE(values, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(values) % this->kWidth, 0u);
    std::memset(values, 0x5A, count * this->kWidth);
    EXPECT_EQ(this->manager.Delete(this->kId, values, count), nullptr);
  }
}

TYPED_TEST(ScalarLifecycle, DeleteIgnoresTheCount) {
  for (unsigned count : {0u, 1u, 0xFFFFFFFFu}) {
    void* const values = this->row.Create(5);
    EXPECT_EQ(this->row.Delete(values, count), nullptr);
  }
}

TYPED_TEST(ScalarLifecycle, DeleteIgnoresNull) {
  EXPECT_EQ(this->row.Delete(nullptr, 0), nullptr);
  EXPECT_EQ(this->manager.Delete(this->kId, nullptr, 9), nullptr);
}

TYPED_TEST(ScalarLifecycle, ConstructorZeroesItsElementsAndNoOthers) {
  constexpr std::size_t kStep = TestFixture::kWidth;
  for (unsigned count : {0u, 1u, 2u, 3u, 8u, 61u}) {
    for (unsigned ignored : {0u, 1u, 0xFFFFFFFFu}) {
      std::vector<unsigned char> memory((count + 2) * kStep, 0xA5);
      this->row.Constructor(memory.data() + kStep, count, ignored);
      auto const begin = memory.begin() + static_cast<std::ptrdiff_t>(kStep);
      EXPECT_EQ(static_cast<std::size_t>(std::count(memory.begin(), memory.end(), 0xA5)),
                2 * kStep);
      EXPECT_EQ(std::count(begin, memory.end() - static_cast<std::ptrdiff_t>(kStep), 0),
                static_cast<std::ptrdiff_t>(count * kStep));
    }
  }
}

TYPED_TEST(ScalarLifecycle, DestructorDoesNothing) {
  auto const before = this->Bytes(5 * this->kWidth);
  auto memory = before;
  this->row.Destructor(memory.data(), 5, 0);
  this->row.Destructor(memory.data(), 0, 1);
  EXPECT_EQ(memory, before);
}

TYPED_TEST(ScalarLifecycle, AssignmentAndCopyTakeArraysOrFillFromTheFirst) {
  constexpr std::size_t kStep = TestFixture::kWidth;
  for (auto* assign : {this->row.Assignment, this->row.Copy}) {
    for (unsigned count : {0u, 1u, 2u, 3u, 8u, 61u, 500u}) {
      for (int fill : {0, 1, -1, 256}) {
        SCOPED_TRACE(testing::Message() << count << " elements, fill " << fill);
        // One element is all that a fill may read.
        auto source = this->Bytes((fill != 0 ? std::min(count, 1u) : count) * kStep);
        auto const sourceBefore = source;
        auto target = this->Bytes((count + 2) * kStep);
        auto expected = target;
        for (std::size_t i = 0; i < count; ++i)
          std::memcpy(expected.data() + (i + 1) * kStep,
                      source.data() + (fill != 0 ? 0 : i * kStep), kStep);
        assign(target.data() + kStep, source.data(), count, fill);
        EXPECT_EQ(target, expected);
        EXPECT_EQ(source, sourceBefore);
      }
    }
  }
}

TYPED_TEST(ScalarLifecycle, DiskSizeFollowsFromTheCount) {
  unsigned const width = static_cast<unsigned>(this->kWidth);
  MemFile empty(nullptr, 0);
  for (unsigned count : {0u, 1u, 2u, 5u, 1000u}) {
    EXPECT_EQ(this->row.NullSizeGet(count), count * width);
    for (unsigned format = 0; format < 256; ++format) {
      auto const byte = static_cast<unsigned char>(format);
      EXPECT_EQ(this->manager.DiskLenGet(this->kId, nullptr, byte, count, 8), count * width);
      EXPECT_EQ(this->manager.DiskLenGet(this->kId, nullptr, 1, count, byte), count * width);
      // The file is not read: a null one serves, and an empty one as well.
      EXPECT_EQ(this->manager.DiskLenGetFromMemFile(this->kId, nullptr, byte, count),
                count * width);
      EXPECT_EQ(this->manager.DiskLenGetFromMemFile(this->kId, &empty, byte, count), count * width);
    }
  }
}

TYPED_TEST(ScalarLifecycle, StoreAndLoadAreEachOthersInverse) {
  unsigned const width = static_cast<unsigned>(this->kWidth);
  for (unsigned format = 0; format < 256; ++format) {
    auto const byte = static_cast<unsigned char>(format);
    unsigned const count = this->Below(20);
    auto memory = this->Bytes(count * width);
    std::vector<unsigned char> disk(memory.size()), back(memory.size());
    EXPECT_EQ(this->manager.Store(this->kId, disk.data(), memory.data(), byte, count),
              count * width);
    EXPECT_EQ(this->manager.Load(this->kId, back.data(), disk.data(), byte, count), count * width);
    EXPECT_EQ(back, memory);
  }
}

/// What the new-handler of the next test has seen.
int handlerCalls;

void HelpNever() {
  if (++handlerCalls == 3) std::set_new_handler(nullptr);
}

/// Installs a new-handler for the length of a scope.
class ScopedNewHandler {
 public:
  explicit ScopedNewHandler(std::new_handler handler) : before(std::set_new_handler(handler)) {}
  ~ScopedNewHandler() { std::set_new_handler(before); }
  ScopedNewHandler(ScopedNewHandler const&) = delete;
  ScopedNewHandler& operator=(ScopedNewHandler const&) = delete;

 private:
  std::new_handler before;
};

TYPED_TEST(ScalarLifecycle, ImpossibleCountsReachTheNewHandlerAndFail) {
  if (kAddressSanitizer) GTEST_SKIP() << "the sanitizer answers impossible allocations itself";
  // A count is a signed number, and these are negative: as a size, too large for every element.
  for (unsigned count : {0x80000000u, 0xFFFFFFFFu, 0xC0000000u, 0xFFFFFF00u}) {
    SCOPED_TRACE(count);
    handlerCalls = 0;
    ScopedNewHandler const scope(HelpNever);
    EXPECT_THROW(this->manager.Create(this->kId, count), std::bad_alloc);
    EXPECT_EQ(handlerCalls, 3);
  }
}

TEST(ByteCreate, ZeroesWhatItGives) {
  XoTypeMgr const manager;
  for (char id : {char{0}, char{10}}) {
    for (unsigned count : {1u, 4u, 24u, 100u, 1000u, 70000u}) {
      // Memory that was used before is likely to be given again.
      for (int round = 0; round < 4; ++round) {
        auto* const values = static_cast<unsigned char*>(manager.Create(id, count));
        EXPECT_EQ(std::count(values, values + count, 0), static_cast<std::ptrdiff_t>(count));
        std::memset(values, 0xFF, count);
        manager.Delete(id, values, count);
      }
    }
  }
}

TEST(IntAssignment, FillTakesTheFirstElement) {
  int source[3] = {7, 8, 9};
  int target[4] = {1, 2, 3, 4};
  XoTypeMgr const manager;
  manager.AssignmentPtrGet(7)(target, source, 3, 1);
  EXPECT_EQ(target[0], 7);
  EXPECT_EQ(target[1], 7);
  EXPECT_EQ(target[2], 7);
  EXPECT_EQ(target[3], 4);
  manager.CopyPtrGet(7)(target, source, 3, 0);
  EXPECT_EQ(target[0], 7);
  EXPECT_EQ(target[1], 8);
  EXPECT_EQ(target[2], 9);
  EXPECT_EQ(target[3], 4);
}

}  // namespace
}  // namespace xo::test
