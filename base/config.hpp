#pragma once

#include <map>
#include <string>
#include <utility>

#include "export.hpp"

/// Names the section that a configuration key is looked up in.
struct XoConfigSection {
  char const* text;               ///< the section's name
  XoConfigSection const* parent;  ///< the section around it, or null at the top
};

/// A source of configuration values. An application derives from it, or fills an `XoMemoryConfig`,
/// and installs the object with `DefaultConfig`. All values are unsigned 16-bit numbers.
///
/// The library asks by `Lookup` alone, which a derived class must have. It stays the third virtual
/// operation: callers outside C++ find it there. For the same reason there is no virtual
/// destructor; the library never destroys a configuration.
class XO_EXPORT XoConfig {
 public:
  /// The number of values that the object holds, or 0 when it cannot tell.
  virtual unsigned Count() const;
  /// 1 when `key` is known to have a value in `section`, else 0.
  virtual int Contains(char const* key, XoConfigSection const* section) const;
  /// Writes the value of `key` in `section` (null: outside all sections) to the unsigned 16-bit
  /// number at `result` and returns 1. Without such a key, `result` stays as it is and the answer
  /// is 0.
  virtual int Lookup(char const* key, void* result, XoConfigSection const* section) = 0;

 protected:
  XoConfig() = default;
  XoConfig(XoConfig const&) = default;
  XoConfig& operator=(XoConfig const&) = default;
  ~XoConfig() = default;
};

/// Returns the process's configuration object, or null when there is none.
///
/// Called with the pointer value of all ones it only answers. Any other argument is installed, and
/// the answer is the object that it replaces; null takes the present object out. The caller keeps
/// ownership and must keep an installed object alive. Takes no lock: install during set-up.
XO_EXPORT XoConfig* DefaultConfig(XoConfig* config);

/// A configuration in memory, filled by the application. Fill it before other threads look up.
class XO_EXPORT XoMemoryConfig final : public XoConfig {
 public:
  unsigned Count() const override;
  int Contains(char const* key, XoConfigSection const* section) const override;
  int Lookup(char const* key, void* result, XoConfigSection const* section) override;

  /// Gives `key` in the section named `section` a value, in place of an earlier one. A null
  /// `section` means outside all sections.
  void Set(char const* key, unsigned short value, char const* section = nullptr);
  /// Removes the value of `key` in the section named `section`. Returns 1 when there was one, else
  /// 0.
  int Remove(char const* key, char const* section = nullptr);

 private:
  /// Sections are told apart by their own name; the sections around them do not count.
  std::map<std::pair<std::string, std::string>, unsigned short> values;
};
