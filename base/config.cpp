#include "base/config.hpp"

#include <bit>
#include <cstdint>
#include <cstring>

namespace {

/// The process's configuration. Written by `DefaultConfig` alone, during set-up.
constinit XoConfig* defaultConfig = nullptr;

std::pair<std::string, std::string> Name(char const* section, char const* key) {
  return {section != nullptr ? section : "", key != nullptr ? key : ""};
}

char const* SectionName(XoConfigSection const* section) {
  return section != nullptr ? section->text : nullptr;
}

}  // namespace

XoConfig* DefaultConfig(XoConfig* config) {
  XoConfig* const present = defaultConfig;
  // The all-ones pointer is a question, not an object.
  if (std::bit_cast<std::uintptr_t>(config) != UINTPTR_MAX) defaultConfig = config;
  return present;
}

unsigned XoConfig::Count() const { return 0; }

int XoConfig::Contains(char const*, XoConfigSection const*) const { return 0; }

unsigned XoMemoryConfig::Count() const { return static_cast<unsigned>(values.size()); }

int XoMemoryConfig::Contains(char const* key, XoConfigSection const* section) const {
  return values.contains(Name(SectionName(section), key)) ? 1 : 0;
}

int XoMemoryConfig::Lookup(char const* key, void* result, XoConfigSection const* section) {
  auto const found = values.find(Name(SectionName(section), key));
  if (found == values.end()) return 0;
  std::memcpy(result, &found->second, sizeof found->second);
  return 1;
}

void XoMemoryConfig::Set(char const* key, unsigned short value, char const* section) {
  values[Name(section, key)] = value;
}

int XoMemoryConfig::Remove(char const* key, char const* section) {
  return values.erase(Name(section, key)) != 0 ? 1 : 0;
}
