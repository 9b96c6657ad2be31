#pragma once

#include "xostring.hpp"

/// What a null value prints as, and reads from, at first "{NULL}". Written during set-up, without a
/// lock, by `XoTypeMgr::SetNullPrintString`.
namespace xo {

XoString& NullPrintString();

}  // namespace xo
