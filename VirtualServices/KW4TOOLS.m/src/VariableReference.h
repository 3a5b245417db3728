#pragma once

#include "MethodFrame.h"
#include "ZORUnicodeString.h"

// Expands the first "$NAME" of a path, whose name runs to the next "/" or to the end, by the
// environment variable of that name. Traces the value line "Shell" with the name as soon as there
// is a "$". Returns whether the path was changed: not when it has no "$", nor when the variable is
// unset or empty. The value takes the place of the first text in the path that equals the name,
// which may stand before the "$"; then the first "$" goes and the first "//" becomes "/". Paths in
// use rely on just that.
bool ExpandVariable(MethodFrame& ioFrame, ZORUnicodeString& ioPath);
