#include "src/xotypes/object_array.hpp"
#include "src/xotypes/scalar_hash.hpp"
#include "src/xotypes/stored_text.hpp"
#include "src/xotypes/string_rows.hpp"
#include "xostringhash.hpp"

namespace xo {

namespace {

unsigned HashStrings(unsigned char format, unsigned length, void* data, unsigned count, int& error,
                     bool cutIsOlder) {
  error = 0;
  OperandReader reader(data, length, LengthRule::kPlain, format, cutIsOlder);
  unsigned folds = 0;
  while (count != 0 && error == 0) {
    OperandText const element = reader.Read();
    if (element.isUnreadable) {
      error = ERR_TM_LENGTH_EXCEEDED;
      break;
    }
    unsigned char language = element.language;
    // A language that marks null is not that of a cut key.
    if (element.codeSet == kSortOrderSet && language != kNullLanguage) {
      language = static_cast<unsigned char>(language & ~kCutAtGroup);
    }
    folds ^= HashString(element.codeSet, language, element.text, -1, FormNibble(format));
    if (element.isCut) error = ERR_TM_LENGTH_EXCEEDED;
    if (--count == 0) break;
    if (!reader.Advance()) error = ERR_TM_LENGTH_EXCEEDED;
  }
  return folds * kHashMultiplier;
}

}  // namespace

unsigned StringHash(unsigned char format, unsigned length, void* data, unsigned count, int& error) {
  return HashStrings(format, length, data, count, error, false);
}

unsigned OlderStringHash(unsigned char format, unsigned length, void* data, unsigned count,
                         int& error) {
  return HashStrings(format, length, data, count, error, true);
}

int StringIsNull(void* value) { return static_cast<XoString*>(value)->IsNullValue(); }

int StringSetNull(void* value) { return static_cast<XoString*>(value)->SetNullValue(); }

void* StringDefaultValue(unsigned count, int asNull) {
  void* const values = ObjectArray<XoString>::Create(count);
  if (asNull != 0) {
    for (std::size_t index = 0; index < std::max(count, 1u); ++index) {
      ObjectArray<XoString>::Element(values, index)->SetNullValue();
    }
  }
  return values;
}

}  // namespace xo
