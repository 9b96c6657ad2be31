#pragma once

#include <string_view>

namespace xo::tool {

/// Sees to it that descriptors 0 to 2 are taken, so that no file opened later becomes standard
/// output and has results written into it.
void HoldStandardDescriptors();

/// Writes to standard output; what cannot be written is `Trouble`.
void WriteOutput(std::string_view text);

/// Whether results may be coloured: standard output is a terminal that knows colours, and the user
/// has not asked for none (NO_COLOR, https://no-color.org).
bool OutputTakesColour();

/// Before a step that must not be taken when its report cannot be written.
void FlushOutput();

/// To be called at the end of every command: only now is it known whether all output was written.
void FinishOutput();

/// A line of the tool's own on standard error.
void WriteMessage(std::string_view message);

}  // namespace xo::tool
