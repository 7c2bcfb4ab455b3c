/* SPDX-License-Identifier: MIT */
// Every public header compiles as C++ too, all together, with its declarations given C linkage:
// this translation unit takes the address of one function per header as a C function type.
#include <nlssupport/convlib.h>
#include <nlssupport/errlib.h>
#include <nlssupport/glib.h>
#include <nlssupport/ianacs.h>
#include <nlssupport/koranls.h>
#include <nlssupport/memmgr.h>
#include <nlssupport/nlssupport.h>
#include <nlssupport/nlssupport.hpp>
#include <nlssupport/version.h>

extern "C" {
using ErrorStackCreate = int(ERRLIB_ErrorStack **) noexcept;
using CheckedNew = void *(uint32_t, ERRLIB_ErrorStack *, const char *, int32_t) noexcept;
using MibLookup = int(const char *, int32_t *) noexcept;
using CodePageName = int(char *, int32_t, int32_t, ERRLIB_ErrorStack *) noexcept;
using Matcher = int(const char *, const char *) noexcept;
using TextToInt32 = uint32_t(int32_t *, const char *, uint32_t, char) noexcept;
using VersionText = const char *(void) noexcept;
}

ErrorStackCreate *const kCreate = &ERRLIB_ErrorStack_Create;
CheckedNew *const kNew = &MMFLAT_New;
MibLookup *const kMib = &IANACS_GetMibEnum;
CodePageName *const kCodePage = &KORANLS_GetOsCodePageName;
Matcher *const kMatch = &GLIB_ValueMatchesPattern;
TextToInt32 *const kToInt32 = &CONV_StringToInt32;
VersionText *const kVersion = &NLSSUPPORT_GetVersion;
