#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <optional>
#include <string>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"

namespace xo::test {
namespace {

/// A blob as a plain list of bytes, none for null.
using Model = std::optional<std::string>;

class BlobModel : public RandomTest {
 protected:
  static constexpr int kBlobs = 3;
  XoBlob blobs[kBlobs];
  Model models[kBlobs] = {"", "", ""};

  /// A start or size: mostly within 300, now and then an end of the type.
  int SomeNumber() {
    if (OneIn(40)) return OneIn(2) ? INT_MIN : INT_MAX;
    return static_cast<int>(Below(OneIn(3) ? 300 : 12)) - 2;
  }

  std::string SomeBytes() {
    std::string bytes(Below(OneIn(4) ? 200 : 9), 0);
    for (char& byte : bytes) byte = static_cast<char>('a' + Below(3));
    return bytes;
  }

  /// Writes what an operation has left uninitialised.
  static void Fill(XoBlob& blob, std::size_t from) {
    for (int i = static_cast<int>(from); i < blob.Length(); ++i) blob.body->data[i] = '?';
  }

  void ChangeSize(XoBlob& blob, Model& model) {
    int const size = static_cast<int>(Below(300)) - 1;
    bool const isResize = OneIn(2);
    if (isResize) {
      blob.Resize(static_cast<unsigned>(size));
    } else {
      blob.Expand(size);
    }
    if (size < 0) {
      if (isResize && !model) model = "";
      return;
    }
    std::string const old = model.value_or("");
    model = old;
    model->resize(static_cast<std::size_t>(size), '?');
    Fill(blob, std::min(old.size(), static_cast<std::size_t>(size)));
  }

  void Step() {
    auto const which = Below(kBlobs), other = Below(kBlobs);
    XoBlob& blob = blobs[which];
    Model& model = models[which];
    int const start = SomeNumber(), count = SomeNumber();
    auto const part = [&](Model const& from) -> std::string {
      if (!from || start < 0 || count <= 0) return "";
      if (static_cast<std::size_t>(start) >= from->size()) return "";
      return from->substr(static_cast<std::size_t>(start), static_cast<std::size_t>(count));
    };
    switch (Below(12)) {
      case 0: {
        std::string const bytes = SomeBytes();
        blob.SetTo(bytes.data(), static_cast<int>(bytes.size()));
        model = bytes;
        break;
      }
      case 1: {
        std::string const bytes = SomeBytes();
        blob.Append(bytes.data(), static_cast<int>(bytes.size()));
        if (!bytes.empty()) model = model.value_or("") + bytes;
        break;
      }
      case 2:
        // Not too long, so that the run stays fast.
        if (blob.Length() > 400) break;
        blob += blobs[other];
        if (models[other] && !models[other]->empty()) model = model.value_or("") + *models[other];
        break;
      case 3:
        blob.Cut(start, count);
        if (std::size_t const size = part(model).size(); size != 0) {
          model->erase(static_cast<std::size_t>(start), size);
        }
        break;
      case 4:
        blobs[other].CopyTo(blob, start, count);
        model = part(models[other]);
        break;
      case 5:
        blob.Destroy(blobs[other]);
        if (other != which) {
          model = models[other];
          if (model) models[other] = "";
        }
        break;
      case 6:
        ChangeSize(blob, model);
        break;
      case 7:
        if (OneIn(4)) {
          blob.SetNullValue();
          model.reset();
        }
        break;
      case 8:
        blob = blobs[other];
        model = models[other];
        break;
      case 9: {
        unsigned char const* const place = blob.Seek(start, count);
        bool const isThere = model && start >= 0 && count > 0 &&
                             std::int64_t{start} + count <= static_cast<int>(model->size());
        ASSERT_EQ(place != nullptr, isThere);
        if (isThere) {
          ASSERT_EQ(place, blob.body->data + start);
        }
        break;
      }
      case 10: {
        std::size_t const found =
            model ? model->find(models[other].value_or("")) : std::string::npos;
        ASSERT_EQ(blob.Search(blobs[other]), found == std::string::npos ? 65535 : found);
        break;
      }
      default:
        Compare(which, other);
    }
  }

  void Compare(unsigned which, unsigned other) {
    Model const &a = models[which], &b = models[other];
    ASSERT_EQ(blobs[which] == blobs[other], a == b);
    int const order = blobs[which] != blobs[other];
    if (!a || !b) {
      ASSERT_EQ(order, a ? 2 : b ? -2 : 0);
    } else {
      ASSERT_EQ((order > 0) - (order < 0), (*a > *b) - (*a < *b));
    }
  }
};

TEST_F(BlobModel, AnySequenceOfOperationsAgreesWithAListOfBytes) {
  for (int turn = 0; turn < 1000000; ++turn) {
    Step();
    if (HasFatalFailure()) return;
    if (turn % 7 != 0) continue;
    for (int i = 0; i < kBlobs; ++i) {
      ASSERT_EQ(blobs[i].IsNullValue() == 0, models[i].has_value()) << turn;
      if (!models[i]) continue;
      ASSERT_EQ(static_cast<std::size_t>(blobs[i].Length()), models[i]->size()) << turn;
      if (models[i]->empty()) continue;
      ASSERT_EQ(std::memcmp(blobs[i].body->data, models[i]->data(), models[i]->size()), 0) << turn;
    }
  }
}

}  // namespace
}  // namespace xo::test
