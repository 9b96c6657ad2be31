#pragma once

namespace xo::intl {

/// Puts the defaults of `XoLanguageContext` back to what they are at load.
void RestoreDefaults();

}  // namespace xo::intl
