#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "formats_document.hpp"
#include "tests/xotypes/document_examples.hpp"
#include "tests/xotypes/string_bytes.hpp"

namespace xo::test {
namespace {

/// Values of a type and what is stored of them, as the lines of the document tell it.
struct ValueExample {
  struct Form {
    unsigned char format;
    ByteList bytes;
  };
  std::string lines;
  std::string type;
  std::vector<std::string> texts;
  std::string scanFormat;
  std::vector<Form> forms;

  /// False: the line says nothing that is known.
  bool Take(std::string const& line) {
    lines += line + "\n";
    std::string const word = line.substr(0, line.find(' '));
    std::string const rest = line.size() > word.size() ? line.substr(word.size() + 1) : "";
    constexpr char kDigits[] = "0123456789ABCDEF";
    if (word.size() == 2 && word.find_first_not_of(kDigits) == std::string::npos) {
      forms.push_back({Hex(word).front(), Hex(rest)});
      return !forms.back().bytes.empty();
    }
    if (word == "under") {
      scanFormat = rest;
      return true;
    }
    bool const isOfOneType = type.empty() || type == word;
    type = word;
    texts.push_back(rest);
    return isOfOneType && forms.empty();
  }
};

/// The values of an example in memory.
class Values {
 public:
  Values(char valueType, std::size_t size)
      : type(valueType), count(static_cast<unsigned>(size)), values(manager.Create(type, count)) {}
  ~Values() { manager.Delete(type, values, count); }
  Values(Values const&) = delete;
  Values& operator=(Values const&) = delete;

  void Scan(std::vector<std::string> const& texts, char const* format) {
    for (unsigned index = 0; index < count; ++index) {
      XoString text(texts[index].c_str());
      manager.ScanFromXoString(type, At(index), text, format, 1);
    }
  }
  std::string Printed() const {
    std::string all;
    for (unsigned index = 0; index < count; ++index) {
      XoString out;
      all += manager.PrintToXoString(type, out, At(index), nullptr, 1).StrGet();
      all += '\n';
    }
    return all;
  }
  void* Get() const { return values; }

 private:
  void* At(unsigned index) const { return manager.GetArrayElement(type, values, index, count); }

  XoTypeMgr manager;
  char type;
  unsigned count;
  void* values;
};

constexpr std::size_t kRoom = 64;

ByteList Cut(ByteList bytes, unsigned size) {
  bytes.resize(size);
  return bytes;
}

TEST(ValueExamples, AreWhatTheLibraryStores) {
  std::vector<ValueExample> const examples = ExamplesOf<ValueExample>(kFormatsDocument, "value");
  ASSERT_GE(examples.size(), 25u);
  XoTypeMgr const manager;
  for (ValueExample const& example : examples) {
    SCOPED_TRACE(example.lines);
    char type = 0;
    ASSERT_EQ(manager.Name2XoTypeId(example.type.c_str(), type), 0);
    ASSERT_FALSE(example.forms.empty());
    auto const count = static_cast<unsigned>(example.texts.size());
    Values values(type, count);
    values.Scan(example.texts, example.scanFormat.empty() ? nullptr : example.scanFormat.c_str());
    for (auto const& [format, bytes] : example.forms) {
      SCOPED_TRACE(unsigned{format});
      if ((format & FormatIndexKey) == 0) {
        ByteList stored(kRoom);
        unsigned const size = manager.Store(type, stored.data(), values.Get(), format, count);
        EXPECT_EQ(Cut(stored, size), bytes);
      }
      if ((format & FormMemory) != 0) continue;
      EXPECT_EQ(manager.DiskLenGet(type, values.Get(), format, count, FormMemory), bytes.size());
      ByteList translated(kRoom);
      auto const room = static_cast<unsigned>(bytes.size());
      manager.Translate(type, translated.data(), format, room, values.Get(), FormMemory, 0, count);
      EXPECT_EQ(Cut(translated, room), bytes);
    }
  }
}

TEST(ValueExamples, LoadAsTheValuesThatTheyAreOf) {
  XoTypeMgr const manager;
  for (ValueExample const& example : ExamplesOf<ValueExample>(kFormatsDocument, "value")) {
    SCOPED_TRACE(example.lines);
    char type = 0;
    ASSERT_EQ(manager.Name2XoTypeId(example.type.c_str(), type), 0);
    Values values(type, example.texts.size());
    values.Scan(example.texts, example.scanFormat.empty() ? nullptr : example.scanFormat.c_str());
    for (auto const& [format, bytes] : example.forms) {
      if ((format & FormatIndexKey) != 0) continue;
      Values loaded(type, example.texts.size());
      ByteList stored = bytes;
      stored.resize(kRoom);
      EXPECT_EQ(manager.Load(type, loaded.Get(), stored.data(), format,
                             static_cast<unsigned>(example.texts.size())),
                bytes.size());
      EXPECT_EQ(loaded.Printed(), values.Printed());
    }
  }
}

}  // namespace
}  // namespace xo::test
