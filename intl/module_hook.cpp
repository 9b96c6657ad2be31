#include "intl/defaults.hpp"
#include "intl/language_context.hpp"

// In a file of its own, so that an embedding system can put its own hook in place.
void ___XoI18NContext(int start) {
  if (start == 0) xo::intl::RestoreDefaults();
}
