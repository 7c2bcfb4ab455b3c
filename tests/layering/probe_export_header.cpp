/* SPDX-License-Identifier: MIT */
// Compiled with the general library's include path: the public headers and what the conversion
// library publishes to the modules that use it are found.
#include <nlssupport/convlib.h>
#include <nlssupport/glib.h>

#include "convlib_export.h"

int32_t LayeringProbe(const char *text) { return conv::StrToLong32(text, nullptr); }
