// SPDX-License-Identifier: MIT
// koranls.cpp - code-page services: the code set of the current locale, as the operating system
// names it and as its preferred IANA name.
#include <langinfo.h>
#include <nlssupport/errlib.h>
#include <nlssupport/ianacs.h>
#include <nlssupport/koranls.h>

#include <cstring>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     koranls.cpp\t\t$Revision$\t$Date$\t", "@(#)     errlib.h\t\t$Revision$\t$Date$",
    "@(#)     ianacs.h\t\t$Revision$\t$Date$",      "@(#)     koranls.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Source line recorded with the empty-code-set error; callers search their stacks for it.
constexpr int32_t kNoCodeSetLine = 170;

// Copies `text` into `buffer` the way a bounded "%s" formatting does: at most size - 1 characters,
// then the terminator. Writes nothing when size is 0 or less.
void CopyBounded(char *buffer, int32_t size, const char *text) {
    if (size <= 0) {
        return;
    }
    std::size_t length = std::strlen(text);
    const auto room = static_cast<std::size_t>(size) - 1;
    if (length > room) {
        length = room;
    }
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
}
}  // namespace

// Reads nl_langinfo(CODESET) and copies it, cut to size - 1 characters, into `buffer`. Returns 0
// (also when the name was cut). An empty code set pushes code 2, class 21 on `stack` (no source
// file is named: the record carries only the function and line 170), leaves the buffer as it was
// and returns 1. The third argument is not used; it is kept so that existing callers link
// unchanged. Nothing is allocated; the caller owns the buffer and the stack.
extern "C" int KORANLS_GetOsCodePageName(char *buffer, int32_t size, [[maybe_unused]] int32_t flag,
                                         ERRLIB_ErrorStack *stack) noexcept {
    const char *codeSet = nl_langinfo(CODESET);
    if (codeSet == nullptr || codeSet[0] == '\0') {  // GCOVR_EXCL_BR_LINE: never null in glibc
        if (stack != nullptr) {
            ERRLIB_ErrorStack_AddError(stack, ERRLIB_COMPONENT_NLSSUPPORT, KORANLS_ERR_NO_CODESET,
                                       KORANLS_CLASS_NLS, nullptr, "KORANLS_GetOsCodePageName",
                                       nullptr, kNoCodeSetLine, nullptr);
        }
        return 1;
    }
    if (buffer == nullptr && size > 0) {
        return 1;
    }
    CopyBounded(buffer, size, codeSet);
    return 0;
}

// Puts the preferred IANA name of the current code set in `buffer`, falling back silently to the
// operating system's own name. Returns 0 in both cases, so the status does not tell which name
// the buffer holds: callers that need to know look the text up again. Returns 1 when the code
// set is empty (buffer "", error pushed by KORANLS_GetOsCodePageName) or when the preferred name
// has more than `size` characters (buffer keeps the operating-system name, nothing recorded).
// The fit test accepts a name of exactly `size` characters and then writes its terminator at
// buffer[size]; existing callers size their buffers for this. The caller owns everything.
extern "C" int KORANLS_GetOsCodePageIanaName(char *buffer, int32_t size,
                                             ERRLIB_ErrorStack *stack) noexcept {
    if (buffer == nullptr) {
        return 1;
    }
    // The buffer reads "" whatever follows, whatever the size: callers pass at least size + 1
    // bytes, so even size 0 has this one byte. A size of 0 or below then copies nothing, and ""
    // is in no table: the outcome is the success of an unknown name with the buffer "".
    buffer[0] = '\0';
    if (KORANLS_GetOsCodePageName(buffer, size, 1, stack) != 0) {
        return 1;
    }
    // A code set the registry does not know, or knows without information (the table's -1
    // rows), is not an error: the operating system's name stays in the buffer with success.
    // Callers print whatever the buffer holds.
    int32_t mibEnum = -1;
    if (IANACSOS_GetMibEnum(buffer, &mibEnum) != 0) {
        return 0;
    }
    IANACS_Info info;
    if (IANACS_GetInfo(mibEnum, &info) != 0) {
        return 0;
    }
    // The fit test compares with size itself, not size - 1: a name of exactly `size` characters
    // is accepted and its terminator lands at buffer[size]. Kept for compatibility; callers pass
    // buffers of size + 1 bytes where such a name can occur.
    const std::size_t length = std::strlen(info.name);
    if (length > static_cast<std::size_t>(size)) {
        return 1;
    }
    std::memcpy(buffer, info.name, length + 1);
    return 0;
}
