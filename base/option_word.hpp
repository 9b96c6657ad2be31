#pragma once

#include "export.hpp"

/// The process-wide option bits, at first 0. Bit 0 set: narrow text converts to integers as decimal
/// only; clear: its prefix chooses the base. Written during set-up, without a lock.
XO_EXPORT extern int XoTypeMgrOptions;

/// A writable reference to `XoTypeMgrOptions`.
XO_EXPORT int& ___XoTypeMgrOptions();
