#include "tools/row_check.hpp"

#include <fmt/core.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <xotypemgr.hpp>

#include "tools/index_layout.hpp"
#include "tools/type_names.hpp"

namespace xo::tool {
namespace {

/// Two values of a type in the format of its row; the first is the lower one.
struct Sample {
  XoTypeId type;
  char const* low;
  char const* high;
};

constexpr Sample kSamples[] = {
    {Xo1B_T, "A", "B"},
    {Xo2B_T, "-5", "7"},
    {Xo4B_T, "-5", "7"},
    {XoDOUBLE_T, "-1.5", "2.25"},
    {XoFLOAT_T, "-1.5", "2.25"},
    {XoU2B_T, "5", "7"},
    {XoU4B_T, "5", "7"},
    {XoINT_T, "-5", "7"},
    {XoUNSIGNED_T, "5", "7"},
    {XoENUM_T, "5", "7"},
    {XoU1B_T, "A", "B"},
    {XoSTRING_T, "abc", "abd"},
    {XoDATE_T, "Thu 15.Apr 2021", "Fri 16.Apr 2021"},
    {XoTIME_T, "01:05:09 am", "01:05:10 pm"},
    {XoBLOCKID_T, "#5", "#7"},
    {XoOBJID_T, "(1-1#1)", "(2-2#2)"},
    {XoCLID_T, "(1v1)", "(2v2)"},
    {XoREF_T, "(1:1-1#1, 1)", "(2:2-2#2, 2)"},
    // Blobs print their length alone, and are read from the bytes of the text.
    {XoBLOB_T, "abc", "abd"},
    {XoDATIME_T, "Thu 15.Apr 2021 01:05:09 am", "Fri 16.Apr 2021 01:05:10 pm"},
    {XoISTRING_T, "abc", "abd"},
    {XoCASEISTRING_T, "abc", "abd"},
    {D_DATE_T, "Sat Apr 15", "Sun Apr 16"},
    {D_TIME_T, "01:05:09 am", "01:05:10 pm"},
    {D_TIMESTAMP_T, "Sat Apr 15 01:05:09 am", "Sun Apr 16 01:05:10 pm"},
    {D_INTERVAL_T, "03 days, 04 hours, 05 minutes, 06 seconds",
     "04 days, 04 hours, 05 minutes, 06 seconds"},
    {XoINT64_T, "-5", "7"},
    {XoBOOLEAN_T, "FALSE", "TRUE"},
    {XoNULL_1B_T, "A", "B"},
    {XoNULL_U1B_T, "A", "B"},
    {XoNULL_2B_T, "-5", "7"},
    {XoNULL_U2B_T, "5", "7"},
    {XoNULL_INT_T, "-5", "7"},
    {XoNULL_UNSIGNED_T, "5", "7"},
    {XoNULL_4B_T, "-5", "7"},
    {XoNULL_U4B_T, "5", "7"},
    {XoNULL_FLOAT_T, "-1.5", "2.25"},
    {XoNULL_DOUBLE_T, "-1.5", "2.25"},
    {XoNULL_XOINT64_T, "-5", "7"},
    {XoSEAL_T, "5", "7"},
    {XoDATIME_N_T, "2021-04-15T12:34:56.250", "2021-04-16T12:34:56"},
    {XoTIMESPAN_T, "1.02:03:04", "2.02:03:04"},
    {Xo8B_T, "-5", "7"},
    {XoU8B_T, "5", "7"},
    {XoNULL_8B_T, "-5", "7"},
    {XoNULL_U8B_T, "5", "7"},
};
static_assert(std::size(kSamples) == kXoIllegalRow);

using Disk = std::vector<unsigned char>;
constexpr unsigned char kDiskForms[] = {FormLittle, FormBig};

int Sign(int number) { return (number > 0) - (number < 0); }

/// The questions to one row.
class RowQuestions {
 public:
  RowQuestions(Sample const& itsSample, RowCheck& itsReport)
      : sample(itsSample),
        type(static_cast<char>(itsSample.type)),
        row(*CurrentTypeTable[itsSample.type]),
        report(itsReport),
        values(Make(2)) {}

  void AskAll() {
    Ask("Create", values != nullptr);
    if (values == nullptr) return;
    low = manager.GetArrayElement(type, values.get(), 0, 2);
    high = manager.GetArrayElement(type, values.get(), 1, 2);
    AskText();
    AskOrder();
    for (unsigned char const form : kDiskForms) AskStorage(form);
    AskMemory();
    AskConversion();
    AskDerivedValues();
    AskEvaluation();
  }

 private:
  /// Values that their row frees again.
  struct Release {
    XoTypeMgr manager;
    char type;
    unsigned count;
    void operator()(void* memory) const { manager.Delete(type, memory, count); }
  };
  using Values = std::unique_ptr<void, Release>;
  Values Own(void* memory, unsigned count) { return {memory, Release{manager, type, count}}; }
  Values Make(unsigned count) { return Own(manager.Create(type, count), count); }

  void Ask(char const* operation, bool holds) {
    ++report.questions;
    if (!holds) report.faults.push_back(fmt::format("{}: {}", TypeName(type), operation));
  }

  int Compare(void* a, void* b) {
    return Sign(manager.Cmp(type, a, b, kCmpNoWildcards, 1, FormMemory));
  }

  void AskText() {
    void* const both[] = {low, high};
    char const* const texts[] = {sample.low, sample.high};
    for (std::size_t place = 0; place < std::size(both); ++place) {
      XoString text(texts[place]);
      Ask("ScanFromXoString",
          manager.ScanFromXoString(type, both[place], text, nullptr, 1) == both[place]);
      XoString printed;
      manager.PrintToXoString(type, printed, both[place], nullptr, 1);
      XoString const expected(sample.type == XoBLOB_T ? "[BLOB,len=3]" : texts[place]);
      Ask("PrintToXoString", printed == expected);
    }
  }

  void AskOrder() {
    Ask("Compare", Compare(low, low) == 0 && Compare(low, high) < 0 && Compare(high, low) > 0);
  }

  Disk Stored(void* value, unsigned char form) {
    Disk disk(manager.DiskLenGet(type, value, form, 1, FormMemory));
    unsigned const size = manager.Store(type, disk.data(), value, form, 1);
    Ask("Store, SizeGet", size != 0 && size == disk.size());
    return disk;
  }

  void AskStorage(unsigned char form) {
    Disk stored = Stored(low, form);
    Disk other = Stored(high, form);
    auto const size = static_cast<unsigned>(stored.size());
    MemFile file(stored.data(), size);
    Ask("SizeGetFromMemFile", manager.DiskLenGetFromMemFile(type, &file, form, 1) == size);
    Ask("NullSizeGet", row.NullSizeGet(1) != 0);

    Values const loaded = Make(1);
    Ask("Load", manager.Load(type, loaded.get(), stored.data(), form, 1) == size &&
                    Compare(loaded.get(), low) == 0);
    Disk translated(size);
    Ask("Translate to disk", manager.Translate(type, translated.data(), form, size, low, FormMemory,
                                               row.MemLen, 1) == size &&
                                 translated == stored);
    Values const back = Make(1);
    manager.Translate(type, back.get(), FormMemory, row.MemLen, stored.data(), form, size, 1);
    Ask("Translate to memory", Compare(back.get(), low) == 0);

    int status = 0;
    auto const otherSize = static_cast<unsigned>(other.size());
    Ask("Compare of stored values",
        manager.Cmp(type, size, stored.data(), otherSize, other.data(), kCmpNoWildcards, 1, form,
                    status) < 0 &&
            manager.Cmp(type, otherSize, other.data(), size, stored.data(), kCmpNoWildcards, 1,
                        form, status) > 0);
    int error = 1;
    static_cast<void>(manager.Hash(type, size, stored.data(), 1, form, error));
    Ask("Hash of stored values", error == 0);
  }

  void AskMemory() {
    alignas(std::max_align_t) std::array<unsigned char, 64> memory{};
    void* const raw = memory.data();
    row.Copy(raw, low, 1, 0);
    Ask("Copy", Compare(raw, low) == 0);
    int error = 1;
    int errorToo = 1;
    unsigned const hash = manager.Hash(type, 0, raw, 1, FormMemory, error);
    Ask("Hash",
        hash == manager.Hash(type, 0, low, 1, FormMemory, errorToo) && error == 0 && errorToo == 0);
    row.Assignment(raw, high, 1, 0);
    Ask("Assignment", Compare(raw, high) == 0);
    Ask("IsNull", row.IsNull(raw) == 0);
    if (row.SetNull != nullptr) {
      manager.SetNullValue(type, raw);
      Ask("SetNull", manager.IsNullValue(type, raw) != 0);
    }
    row.Destructor(raw, 1, 0);
    row.Constructor(raw, 1, 0);
    row.Destructor(raw, 1, 0);
    Ask("Constructor, Destructor", row.Constructor != nullptr);
  }

  void AskConversion() {
    std::unique_ptr<XoTypeConvertData> const strings(manager.ConvertTo(type, values.get(), 2));
    Ask("ConvertTo", strings != nullptr && strings->count == 2 && strings->GetString(1) != nullptr);
    if (strings == nullptr) return;
    Values const back = Own(manager.ConvertFrom(type, strings.get(), 2), 2);
    bool const isThere = back != nullptr;
    // The string of a blob does not say what is in it.
    Ask("ConvertFrom", isThere && (sample.type == XoBLOB_T || Compare(back.get(), low) == 0));
  }

  void AskDerivedValues() {
    Values const usual = Own(manager.DefaultValue(type, 1, 0), 1);
    Ask("DefaultValue", usual != nullptr && Compare(usual.get(), usual.get()) == 0);
    Values const next = Make(1);
    row.Assignment(next.get(), low, 1, 0);
    int const result = manager.GetValue(type, next.get(), 1, FormMemory, kNextValue);
    // The values of an enumeration do not follow one another, though they are counted as whole
    // numbers are.
    bool const hasNext = manager.SupportsCapability(type, 2) != 0 && sample.type != XoENUM_T;
    Ask("GetValue", hasNext ? result == 0 && Compare(next.get(), low) > 0
                            : result == 0 || result == ERR_TM_NOT_SUPPORTED);
  }

  /// The estimate of how much of an index of both values the lower one is.
  void AskEvaluation() {
    Disk first = Stored(low, FormLittle);
    Disk last = Stored(high, FormLittle);
    // Of text there is room behind what is evaluated.
    first.resize(first.size() + sizeof(std::max_align_t));
    last.resize(last.size() + sizeof(std::max_align_t));
    Disk value = first;
    XoIdxBounds range;
    range.low = first.data();
    range.high = last.data();
    range.lowLen = static_cast<std::uint8_t>(first.size() - sizeof(std::max_align_t));
    range.highLen = static_cast<std::uint8_t>(last.size() - sizeof(std::max_align_t));
    XoIdxBounds bounds;
    bounds.keyLimit = static_cast<std::uint8_t>(kUsualKey);
    unsigned short op = kXoBoundEqual | kCmpNoWildcards;
    float const share =
        manager.EvalAndBound(type, &range, op, value.data(), FormLittle, 1, &bounds, nullptr);
    bool const isOwn = row.EvalAndBound != CurrentTypeTable[kXoIllegalRow]->EvalAndBound;
    Ask("EvalAndBound", isOwn && std::isfinite(share) && share >= 0.0F);
    ReleaseBounds(bounds);
  }

  XoTypeMgr manager;
  Sample const& sample;
  char type;
  TypeDescriptor& row;
  RowCheck& report;
  Values values;
  void* low = nullptr;
  void* high = nullptr;
};

}  // namespace

RowCheck CheckRows() {
  RowCheck report;
  for (Sample const& sample : kSamples) {
    ++report.rows;
    RowQuestions(sample, report).AskAll();
  }
  return report;
}

}  // namespace xo::tool
