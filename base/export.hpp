#pragma once

/// Marks what the shared library offers to its users. Link the static libraries with XO_STATIC
/// defined; their CMake targets and pkg-config file do so.
#if defined(_WIN32)
#if defined(XO_BUILDING_LIBRARY)
#define XO_EXPORT __declspec(dllexport)
#elif defined(XO_STATIC)
#define XO_EXPORT
#else
#define XO_EXPORT __declspec(dllimport)
#endif
#else
#define XO_EXPORT __attribute__((visibility("default")))
#endif
