#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::tool {

/// The code set of text that is in none of the user's choice: the Western one that weighted texts
/// are in.
XoCodeSet const& UsualCodeSet();

/// One value of a row in memory, and the operations of its row on it.
class RowValue {
 public:
  /// A new value. A type without operations is `Trouble`. `codeSet`, which must stay, is that of
  /// text on its way in and out; it has to be one of 8 bits. Only texts and bytes have characters
  /// of it, in their formats too: what other values have around their numbers and names is taken
  /// and printed as it stands.
  explicit RowValue(char valueType, XoCodeSet const& codeSet = UsualCodeSet());
  /// Takes a value that an operation of the manager gave.
  RowValue(char valueType, void* given, XoCodeSet const& codeSet)
      : type(valueType), value(given), set(codeSet) {}
  ~RowValue();
  RowValue(RowValue const&) = delete;
  RowValue& operator=(RowValue const&) = delete;

  char Type() const { return type; }
  void* Get() const { return value; }
  template <class Value>
  Value const& As() const {
    return *static_cast<Value const*>(value);
  }

  // Formats are in UTF-8, or null for the row's own. One that the code set cannot hold is
  // `Trouble`.

  /// Reads the value from text in UTF-8. Text that no string holds is `Trouble`.
  void Scan(std::string_view text, char const* format);
  /// Reads the value and tells whether all of the text was read, for no scan reports it.
  ///
  /// All of it was read if the value prints as the text again, or as one that says the same:
  /// numbers by what they are, with all that the format has around them, other values by the
  /// numbers and words of their text in turn. There leading zeros and blanks do not matter, nor,
  /// but for identifiers, which signs stand between; a weekday may be left out, and the upper
  /// number of an object.
  bool ScanWhole(std::string_view text, char const* format);

  /// The value in UTF-8.
  std::string Print(char const* format) const;
  bool IsNull() const;
  /// The value in disk form, and the way back; a form that is cut short reads as if zeroes
  /// followed.
  std::vector<unsigned char> Stored(unsigned char format) const;
  void Load(std::span<unsigned char const> stored, unsigned char format);
  /// Sets all bytes of a value of fixed width; of others nothing changes.
  void Fill(int byte);

 private:
  /// A format as the row takes it: what it has of characters is in the code set of the value's.
  std::optional<std::string> OwnFormat(char const* format) const;
  /// Reads a number and tells whether it is at once clear that all was read: the number is what
  /// stands there, so that nothing of it was there before.
  bool ScanPlain(std::string_view text, char const* format);
  bool IsNumber(std::string_view text, std::string_view format) const;

  char type;
  void* value;
  XoCodeSet const& set;
};

/// Reads `value` from `text`. Text that is no such value is `Trouble`; `place`, where the text is
/// from ("file, line 3: "), goes before the message.
void ScanValue(RowValue& value, std::string_view text, char const* format,
               std::string const& place = {});

}  // namespace xo::tool
