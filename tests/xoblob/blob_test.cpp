#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <type_traits>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

static_assert(sizeof(XoBlob) == sizeof(void*));

XoBlob BlobOf(std::string const& text) { return {text.data(), static_cast<int>(text.size())}; }

XoBlob Null() {
  XoBlob blob;
  blob.SetNullValue();
  return blob;
}

/// The content, "null" for null.
std::string Content(XoBlob const& blob) {
  if (blob.IsNullValue() != 0) return "null";
  return {reinterpret_cast<char const*>(blob.body->data),
          static_cast<std::size_t>(blob.body->size)};
}

TEST(Blob, NewOneIsEmptyAndNotNull) {
  XoBlob const blob;
  EXPECT_EQ(blob.IsNullValue(), 0);
  EXPECT_EQ(blob.Length(), 0);
  EXPECT_EQ(XoBlob(7).Length(), 7);
  EXPECT_EQ(XoBlob(0).IsNullValue(), 0);
  EXPECT_EQ(XoBlob(INT_MIN).Length(), 0);
  EXPECT_EQ(Content(XoBlob("abc", INT_MIN)), "");
  EXPECT_EQ(Content(XoBlob(nullptr, 5)), "");
  EXPECT_EQ(Content(BlobOf("abc")), "abc");
}

TEST(Blob, CopyIsADuplicate) {
  XoBlob a = BlobOf("abc");
  XoBlob const b = a;
  a.body->data[0] = 'x';
  EXPECT_EQ(Content(b), "abc");
  EXPECT_EQ(XoBlob(Null()).IsNullValue(), 1);
  EXPECT_EQ(XoBlob(XoBlob()).IsNullValue(), 0);
}

TEST(Blob, SetNullFreesAndGivesZero) {
  XoBlob blob = BlobOf("abc");
  EXPECT_EQ(blob.SetNullValue(), 0);
  EXPECT_EQ(blob.IsNullValue(), 1);
  EXPECT_EQ(blob.Length(), 0);
  EXPECT_EQ(blob.SetNullValue(), 0);
}

TEST(Blob, AssignmentTakesNullAndBytes) {
  XoBlob a = BlobOf("abc"), b = BlobOf("defg"), null = Null();
  XoBlobData* const body = a.body;
  a = b;
  EXPECT_EQ(Content(a), "defg");
  EXPECT_EQ(a.body, body);
  XoBlob const& self = a;
  a = self;
  EXPECT_EQ(Content(a), "defg");
  a = null;
  EXPECT_EQ(a.IsNullValue(), 1);
  a = null;
  EXPECT_EQ(a.IsNullValue(), 1);
  a = b;
  EXPECT_EQ(Content(a), "defg");
  a = XoBlob();
  EXPECT_EQ(Content(a), "");
}

TEST(Blob, EqualityIsOfNullAndBytes) {
  EXPECT_EQ(Null() == Null(), 1);
  EXPECT_EQ(Null() == XoBlob(), 0);
  EXPECT_EQ(XoBlob() == Null(), 0);
  EXPECT_EQ(XoBlob() == XoBlob(), 1);
  EXPECT_EQ(BlobOf("ab") == BlobOf("ab"), 1);
  EXPECT_EQ(BlobOf("ab") == BlobOf("abc"), 0);
  EXPECT_EQ(BlobOf("ab") == BlobOf("ac"), 0);
}

TEST(Blob, OrderIsOfNullThenBytesThenLength) {
  EXPECT_EQ(Null() != Null(), 0);
  EXPECT_EQ(Null() != XoBlob(), -2);
  EXPECT_EQ(XoBlob() != Null(), 2);
  EXPECT_EQ(XoBlob() != XoBlob(), 0);
  EXPECT_EQ(BlobOf("ab") != BlobOf("abc"), -1);
  EXPECT_EQ(BlobOf("abc") != BlobOf("ab"), 1);
  EXPECT_EQ(BlobOf("") != BlobOf("ab"), -1);
  EXPECT_LT(BlobOf("abc") != BlobOf("abd"), 0);
  EXPECT_GT(BlobOf("b") != BlobOf("abd"), 0);
  EXPECT_GT(BlobOf("\xFF") != BlobOf("a"), 0);
}

TEST(Blob, AppendPutsBytesBehind) {
  XoBlob blob = BlobOf("abc");
  EXPECT_EQ(&blob.Append("de", 2), &blob);
  EXPECT_EQ(Content(blob), "abcde");
  blob.Append("x", 0);
  blob.Append("x", -1);
  blob.Append("x", INT_MIN);
  blob.Append(nullptr, 3);
  blob += Null();
  blob += XoBlob();
  EXPECT_EQ(Content(blob), "abcde");
  blob += blob;
  EXPECT_EQ(Content(blob), "abcdeabcde");
  blob.Append(blob.body->data + 1, 2);
  EXPECT_EQ(Content(blob), "abcdeabcdebc");
  XoBlob null = Null();
  null.Append("", 0);
  EXPECT_EQ(null.IsNullValue(), 1);
  null.Append("xy", 2);
  EXPECT_EQ(Content(null), "xy");
  null.Append("z", INT_MAX);
  EXPECT_EQ(Content(null), "xy");
}

TEST(Blob, CopyFromCutsToWhatIsThere) {
  XoBlob const blob = BlobOf("abcdef");
  EXPECT_EQ(Content(blob.CopyFrom(0, 6)), "abcdef");
  EXPECT_EQ(Content(blob.CopyFrom(2, 3)), "cde");
  EXPECT_EQ(Content(blob.CopyFrom(2, 5)), "cdef");
  EXPECT_EQ(Content(blob.CopyFrom(2, INT_MAX)), "cdef");
  EXPECT_EQ(Content(blob.CopyFrom(6, 1)), "");
  EXPECT_EQ(Content(blob.CopyFrom(INT_MAX, INT_MAX)), "");
  EXPECT_EQ(Content(blob.CopyFrom(2, 0)), "");
  EXPECT_EQ(Content(blob.CopyFrom(-1, 2)), "");
  EXPECT_EQ(Content(blob.CopyFrom(INT_MIN, INT_MIN)), "");
  EXPECT_EQ(Content(Null().CopyFrom(0, 2)), "");
  XoBlob target = Null();
  blob.CopyTo(target, 1, 2);
  EXPECT_EQ(Content(target), "bc");
  target.CopyTo(target, 1, 1);
  EXPECT_EQ(Content(target), "c");
}

TEST(Blob, CutTakesOutAPart) {
  auto const cut = [](XoBlob blob, int start, int count) {
    EXPECT_EQ(&blob.Cut(start, count), &blob);
    return Content(blob);
  };
  EXPECT_EQ(cut(BlobOf("abcdef"), 2, 3), "abf");
  EXPECT_EQ(cut(BlobOf("abcdef"), 0, 1), "bcdef");
  EXPECT_EQ(cut(BlobOf("abcdef"), 4, 5), "abcd");
  EXPECT_EQ(cut(BlobOf("abcdef"), 4, INT_MAX), "abcd");
  EXPECT_EQ(cut(BlobOf("abcdef"), 0, 6), "");
  EXPECT_EQ(cut(BlobOf("abcdef"), 6, 1), "abcdef");
  EXPECT_EQ(cut(BlobOf("abcdef"), INT_MAX, INT_MAX), "abcdef");
  EXPECT_EQ(cut(BlobOf("abcdef"), 0, 0), "abcdef");
  EXPECT_EQ(cut(BlobOf("abcdef"), 0, INT_MIN), "abcdef");
  EXPECT_EQ(cut(BlobOf("abcdef"), INT_MIN, 3), "abcdef");
  EXPECT_EQ(cut(Null(), 0, 3), "null");
}

TEST(Blob, DestroyTakesTheBodyOfTheOther) {
  XoBlob a = BlobOf("abc"), b = BlobOf("de");
  XoBlobData* const body = b.body;
  a.Destroy(b);
  EXPECT_EQ(a.body, body);
  EXPECT_EQ(Content(b), "");
  a.Destroy(a);
  EXPECT_EQ(Content(a), "de");
  XoBlob null = Null();
  a.Destroy(null);
  EXPECT_EQ(a.IsNullValue(), 1);
  EXPECT_EQ(null.IsNullValue(), 1);
  a.Destroy(b);
  EXPECT_EQ(Content(a), "");
}

TEST(Blob, ExpandMakesTheSizeExact) {
  XoBlob blob = BlobOf("abc");
  blob.Expand(5);
  EXPECT_EQ(blob.Length(), 5);
  EXPECT_EQ(Content(blob).substr(0, 3), "abc");
  blob.Expand(2);
  EXPECT_EQ(Content(blob), "ab");
  blob.Expand(-1);
  blob.Expand(INT_MIN);
  EXPECT_EQ(Content(blob), "ab");
  blob.Expand(0);
  EXPECT_EQ(Content(blob), "");
  XoBlob null = Null();
  null.Expand(4);
  EXPECT_EQ(null.Length(), 4);
}

TEST(Blob, ResizeKeepsTheBufferWhenItShrinks) {
  XoBlob blob = BlobOf("abcdef");
  unsigned char const* const data = blob.body->data;
  blob.Resize(2);
  EXPECT_EQ(Content(blob), "ab");
  EXPECT_EQ(blob.body->data, data);
  blob.Resize(4);
  EXPECT_EQ(blob.Length(), 4);
  EXPECT_EQ(Content(blob).substr(0, 2), "ab");
  blob.Resize(0x80000000u);
  EXPECT_EQ(blob.Length(), 4);
  blob.Resize(0);
  EXPECT_EQ(Content(blob), "");
  EXPECT_EQ(blob.body->data, nullptr);
  XoBlob null = Null();
  null.Resize(0xFFFFFFFF);
  EXPECT_EQ(Content(null), "");
  null = Null();
  null.Resize(3);
  EXPECT_EQ(null.Length(), 3);
}

TEST(Blob, SetToUsesRoomAgainThatIsAtMost128BytesTooLarge) {
  std::string const bytes(300, 'x');
  for (int size : {300, 172, 171, 301}) {
    bool const isKept = size >= 172 && size <= 300;
    XoBlob blob = BlobOf(bytes);
    unsigned char* const data = blob.body->data;
    XoBlobData* const body = blob.body;
    std::string const content(static_cast<std::size_t>(size), 'y');
    blob.SetTo(content.data(), size);
    EXPECT_EQ(blob.body, body);
    EXPECT_EQ(Content(blob), content);
    if (isKept) {
      EXPECT_EQ(blob.body->data, data) << size;
    }
  }
  XoBlob large = BlobOf(bytes);
  large.SetTo("", 0);
  EXPECT_EQ(large.body->data, nullptr);
}

TEST(Blob, SetToTakesBytesOfItsOwn) {
  XoBlob blob = BlobOf("abcdef");
  blob.SetTo(blob.body->data + 2, 3);
  EXPECT_EQ(Content(blob), "cde");
  std::string text;
  for (int i = 0; i < 400; ++i) text += static_cast<char>(i);
  blob = BlobOf(text);
  blob.SetTo(blob.body->data + 100, 10);
  EXPECT_EQ(Content(blob), text.substr(100, 10));
  blob.SetTo("x", INT_MIN);
  EXPECT_EQ(blob.Length(), 10);
  XoBlob null = Null();
  null.SetTo("x", -1);
  EXPECT_EQ(null.IsNullValue(), 1);
  null.SetTo("xy", 2);
  EXPECT_EQ(Content(null), "xy");
}

TEST(Blob, SeekGivesAPartThatIsThereWhole) {
  XoBlob const blob = BlobOf("abcdef");
  EXPECT_EQ(blob.Seek(0, 0), nullptr);
  EXPECT_EQ(blob.Seek(0, 6), blob.body->data);
  EXPECT_EQ(blob.Seek(4, 2), blob.body->data + 4);
  EXPECT_EQ(blob.Seek(4, 3), nullptr);
  EXPECT_EQ(blob.Seek(6, 1), nullptr);
  EXPECT_EQ(blob.Seek(7, 1), nullptr);
  EXPECT_EQ(blob.Seek(1, INT_MAX), nullptr);
  EXPECT_EQ(blob.Seek(INT_MAX, INT_MAX), nullptr);
  EXPECT_EQ(blob.Seek(-1, 1), nullptr);
  EXPECT_EQ(blob.Seek(INT_MIN, 1), nullptr);
  EXPECT_EQ(blob.Seek(0, INT_MIN), nullptr);
  EXPECT_EQ(Null().Seek(0, 1), nullptr);
}

TEST(Blob, SearchFindsTheFirstPlace) {
  XoBlob const blob = BlobOf("abcabcd");
  EXPECT_EQ(blob.Search(BlobOf("abcd")), 3u);
  EXPECT_EQ(blob.Search(BlobOf("abc")), 0u);
  EXPECT_EQ(blob.Search(BlobOf("d")), 6u);
  EXPECT_EQ(blob.Search(BlobOf("x")), 65535u);
  EXPECT_EQ(blob.Search(BlobOf("abcabcde")), 65535u);
  EXPECT_EQ(blob.Search(XoBlob()), 0u);
  EXPECT_EQ(XoBlob().Search(XoBlob()), 0u);
  EXPECT_EQ(XoBlob().Search(BlobOf("a")), 65535u);
  EXPECT_EQ(Null().Search(XoBlob()), 65535u);
  EXPECT_EQ(BlobOf(std::string(70000, 'a') + "b").Search(BlobOf("b")), 70000u);
}

}  // namespace
}  // namespace xo::test
