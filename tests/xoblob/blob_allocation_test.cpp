// What is left of a blob when memory runs out, at every place where an operation asks for some.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <xotypemgr.hpp>

namespace {

/// Requests that are granted before one fails; negative: all are.
int granted = -1;
/// What is held, so that a loss shows.
int held = 0;

bool IsRefused() { return granted >= 0 && granted-- == 0; }

}  // namespace

// The program is linked so that the library's requests come here.
extern "C" void* __real_malloc(std::size_t size);
extern "C" void __real_free(void* memory);
extern "C" void* __wrap_malloc(std::size_t size);
extern "C" void __wrap_free(void* memory);

extern "C" void* __wrap_malloc(std::size_t size) {
  if (IsRefused()) return nullptr;
  ++held;
  return __real_malloc(size);
}
extern "C" void __wrap_free(void* memory) {
  if (memory != nullptr) --held;
  __real_free(memory);
}

namespace {

void* CountedNew(std::size_t size) {
  if (void* const memory = __wrap_malloc(size != 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return CountedNew(size); }
void* operator new[](std::size_t size) { return CountedNew(size); }
void operator delete(void* memory) noexcept { __wrap_free(memory); }
void operator delete[](void* memory) noexcept { __wrap_free(memory); }
void operator delete(void* memory, std::size_t) noexcept { __wrap_free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { __wrap_free(memory); }

namespace xo::test {
namespace {

/// Runs `operation` on two blobs, refusing its first request, its second, and so on until it gets
/// along without a refusal: both blobs stay valid, and nothing is lost.
void ExpectSafe(std::function<void(XoBlob& blob, XoBlob& other)> const& operation) {
  for (bool isNull : {false, true}) {
    for (int point = 0;; ++point) {
      int const before = held;
      bool wasRefused = false;
      {
        XoBlob blob("abcdef", 6), other("xyz", 3);
        if (isNull) blob.SetNullValue();
        granted = point;
        try {
          operation(blob, other);
        } catch (std::bad_alloc const&) {
        }
        wasRefused = granted < 0;
        granted = -1;
        for (XoBlob* const each : {&blob, &other}) {
          if (each->body == nullptr) continue;
          ASSERT_GE(each->body->size, 0);
          ASSERT_TRUE(each->body->size == 0 || each->body->data != nullptr);
          if (each->body->size != 0) {
            std::memset(each->body->data, 1, static_cast<std::size_t>(each->body->size));
          }
        }
        blob.SetTo("1234567890", 10);
        ASSERT_EQ(blob.Length(), 10);
      }
      ASSERT_EQ(held, before) << point;
      if (!wasRefused) break;
      ASSERT_LT(point, 100);
    }
  }
}

TEST(BlobAllocation, RefusedMemoryLeavesValidBlobs) {
  std::string const large(1000, 'x');
  ExpectSafe([](XoBlob&, XoBlob&) { XoBlob const made; });
  ExpectSafe([](XoBlob&, XoBlob&) { XoBlob const made(7); });
  ExpectSafe([](XoBlob&, XoBlob&) { XoBlob const made("abc", 3); });
  ExpectSafe([](XoBlob& blob, XoBlob&) { XoBlob const copy(blob); });
  ExpectSafe([](XoBlob& blob, XoBlob& other) { blob = other; });
  ExpectSafe([](XoBlob& blob, XoBlob& other) { other = blob; });
  ExpectSafe([](XoBlob& blob, XoBlob& other) { blob += other; });
  ExpectSafe([](XoBlob& blob, XoBlob&) { blob += blob; });
  ExpectSafe([&](XoBlob& blob, XoBlob&) { blob.Append(large.data(), 1000); });
  ExpectSafe([](XoBlob& blob, XoBlob& other) { blob.CopyTo(other, 1, 3); });
  ExpectSafe([](XoBlob& blob, XoBlob&) { blob.Cut(1, 3); });
  ExpectSafe([](XoBlob& blob, XoBlob&) { blob.Cut(0, 6); });
  ExpectSafe([](XoBlob& blob, XoBlob& other) { blob.Destroy(other); });
  ExpectSafe([](XoBlob& blob, XoBlob& other) { other.Destroy(blob); });
  ExpectSafe([](XoBlob& blob, XoBlob&) { blob.Expand(500); });
  ExpectSafe([](XoBlob& blob, XoBlob&) { blob.Resize(500); });
  ExpectSafe([&](XoBlob& blob, XoBlob&) { blob.SetTo(large.data(), 1000); });
}

TEST(BlobAllocation, RefusedMemoryKeepsWhatABlobHeld) {
  std::string const large(1000, 'x');
  XoBlob blob("abcdef", 6), other(large.data(), 1000);
  auto const refuseBytes = [&](auto operation, int bodies) {
    granted = bodies;
    operation();
    granted = -1;
    EXPECT_EQ((blob == XoBlob("abcdef", 6)), 1);
  };
  // The body comes from the runtime, the bytes behind it do not.
  refuseBytes([&] { blob.Append(large.data(), 1000); }, 1);
  refuseBytes([&] { blob.Expand(500); }, 1);
  refuseBytes([&] { blob.Cut(1, 1); }, 1);
  refuseBytes([&] { blob.SetTo(large.data(), 1000); }, 0);
  refuseBytes([&] { blob.Resize(500); }, 0);
  refuseBytes([&] { blob = other; }, 0);
}

TEST(BlobAllocation, ArraysAreMadeWholeOrNotAtAll) {
  TypeDescriptor const& row = *CurrentTypeTable[XoBLOB_T];
  XoBlob source[3] = {XoBlob("abc", 3), XoBlob("de", 2), XoBlob("f", 1)};
  auto const expectNoLoss = [](auto operation) {
    for (int point = 0;; ++point) {
      int const before = held;
      granted = point;
      void* made = nullptr;
      try {
        made = operation();
      } catch (std::bad_alloc const&) {
      }
      bool const wasRefused = granted < 0;
      granted = -1;
      CurrentTypeTable[XoBLOB_T]->Delete(made, 3);
      ASSERT_EQ(held, before) << point;
      if (!wasRefused) break;
      ASSERT_LT(point, 100);
    }
  };
  expectNoLoss([&] { return row.Create(3); });
  expectNoLoss([&] { return row.DefaultValue(3, 1); });
  expectNoLoss([&] { return row.ConvertFrom(nullptr, 3); });
  alignas(XoBlob) unsigned char raw[sizeof source];
  expectNoLoss([&]() -> void* {
    row.Copy(raw, source, 3, 0);
    row.Destructor(raw, 3, 0);
    return nullptr;
  });
  expectNoLoss([&]() -> void* {
    row.Constructor(raw, 3, 0);
    row.Destructor(raw, 3, 0);
    return nullptr;
  });
  expectNoLoss([&]() -> void* {
    XoTypeMgr manager;
    delete manager.ConvertTo(XoBLOB_T, source, 3);
    return nullptr;
  });
}

}  // namespace
}  // namespace xo::test
