#pragma once

#include <cstddef>
#include <new>

/// The door through which the library allocates values.
namespace xo {

/// Memory from the language runtime, aligned for every scalar: the installed new-handler is called
/// until it helps, and without one the standard allocation failure is raised. Never null.
inline void* AllocateArray(std::size_t size) { return ::operator new[](size); }

/// Gives back what `AllocateArray` gave. Null is ignored.
inline void ReleaseArray(void* memory) { ::operator delete[](memory); }

}  // namespace xo
