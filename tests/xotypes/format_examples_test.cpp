#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "formats_document.hpp"
#include "tests/xotypes/document_examples.hpp"
#include "tests/xotypes/string_bytes.hpp"

namespace xo::test {
namespace {

/// Decodes characters of up to three bytes of UTF-8.
std::u16string Decode(std::string_view utf8) {
  std::u16string text;
  for (std::size_t at = 0; at < utf8.size();) {
    auto const byte = [&](std::size_t index) { return utf8[index] & 0xFFu; };
    unsigned const lead = byte(at);
    std::size_t const more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : 2;
    unsigned code = more == 0 ? lead : lead & (0x3Fu >> more);
    for (std::size_t index = 1; index <= more; ++index) code = code << 6 | (byte(at + index) & 63u);
    text.push_back(static_cast<char16_t>(code));
    at += more + 1;
  }
  return text;
}

/// An example of the document, as its lines tell it.
struct Example {
  std::string lines;
  unsigned generation = 5;
  std::vector<XoString> texts;
  bool isStored = false;
  unsigned char storedFormat = 0;
  ByteList stored;
  unsigned char format = 0;
  unsigned room = 64;
  ByteList bytes;
  long answer = -1;

  /// False: the line says nothing that is known.
  bool Take(std::string const& line) {
    lines += line + "\n";
    std::istringstream words(line);
    std::string what, rest;
    words >> what;
    if (what == "older") {
      generation = 3;
    } else if (what == "text") {
      unsigned codeSet = 0, language = 0;
      words >> codeSet >> language;
      std::getline(words, rest);
      auto const open = rest.find('"'), end = rest.rfind('"');
      if (!words || open == std::string::npos || open == end) return false;
      TakeText(Decode(rest.substr(open + 1, end - open - 1)), static_cast<unsigned char>(codeSet),
               static_cast<unsigned char>(language));
    } else if (what == "stored") {
      std::getline(words, rest);
      stored = Hex(rest);
      if (stored.empty()) return false;
      isStored = true;
      storedFormat = stored.front();
      stored.erase(stored.begin());
    } else if (what == "format") {
      words >> rest;
      ByteList const one = Hex(rest);
      if (one.size() != 1) return false;
      format = one.front();
    } else if (what == "room") {
      words >> room;
    } else if (what == "bytes") {
      std::getline(words, rest);
      bytes = Hex(rest);
    } else if (what == "answers") {
      words >> answer;
    } else {
      return false;
    }
    return !words.bad();
  }

  void TakeText(std::u16string const& text, unsigned char codeSet, unsigned char language) {
    if (text.empty()) {
      texts.emplace_back(codeSet, language);
    } else if (codeSet > 224) {
      texts.push_back(Wide(text, codeSet, language));
    } else {
      texts.push_back(Narrow(std::string(text.begin(), text.end()), codeSet, language));
    }
  }
};

TEST(FormatExamples, AreWhatTheLibraryMakes) {
  std::vector<Example> examples = ExamplesOf<Example>(kFormatsDocument, "example");
  ASSERT_GE(examples.size(), 20u);
  for (Example& example : examples) {
    SCOPED_TRACE(example.lines);
    ASSERT_NE(example.isStored, !example.texts.empty());
    ASSERT_FALSE(example.bytes.empty());
    XoTypeMgr const manager(example.generation);
    Produced const made =
        example.isStored
            ? FromDisk(manager, example.stored, example.storedFormat, example.format, example.room)
            : FromMemory(manager, example.texts, example.format, example.room);
    std::size_t const there = example.bytes.size();
    EXPECT_EQ(made.result, example.answer >= 0 ? static_cast<std::size_t>(example.answer) : there);
    ASSERT_LE(there, made.target.size());
    EXPECT_EQ(ByteList(made.target.begin(), made.target.begin() + static_cast<long>(there)),
              example.bytes);
  }
}

TEST(FormatExamples, OfRecordsLoadAsTheTextsThatTheyAreOf) {
  for (Example& example : ExamplesOf<Example>(kFormatsDocument, "example")) {
    bool const isWhole = example.room == 64 && (example.format & 0xE0) == 0;
    if (example.isStored || !isWhole) continue;
    SCOPED_TRACE(example.lines);
    std::vector<XoString> const loaded =
        ToMemory(XoTypeMgr(example.generation), example.bytes, example.format,
                 static_cast<unsigned>(example.texts.size()))
            .strings;
    for (std::size_t index = 0; index < loaded.size(); ++index) {
      XoString const& text = example.texts[index];
      EXPECT_EQ(loaded[index].Len(), text.Len());
      if (example.generation == 5) {
        EXPECT_TRUE(SameValue(loaded[index], text));
      }
    }
  }
}

}  // namespace
}  // namespace xo::test
