// SPDX-License-Identifier: MIT
// errrecord.cpp - error records: creation and release, field access by id, clearing and copying.
#include <nlssupport/errlib.h>
#include <nlssupport/memmgr.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctime>

#include "errstack_internal.h"

namespace {

[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     errrecord.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     errlib.h\t\t$Revision$\t$Date$",
    "@(#)     errstack_internal.h\t\t$Revision$\t$Date$",
    "@(#)     memmgr.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Source path passed to the allocator with this file's own allocations (identifies call sites).
constexpr char kSourcePath[] = "errlib/errrecord.cpp";

using errlib::CopyText;
using errlib::FixedBufferSize;
using errlib::kMessageBufferSize;
using errlib::kNameBufferSize;

// The text field behind a text field id (3, 4, 5, 7); null for any other id.
char **TextField(ERRLIB_Error *record, int32_t fieldId) {
    switch (fieldId) {
        case ERRLIB_ID_ORIGIN:
            return &record->origin;
        case ERRLIB_ID_FUNCTION:
            return &record->function;
        case ERRLIB_ID_FILE:
            return &record->file;
        case ERRLIB_ID_MESSAGE:
            return &record->message;
        default:
            return nullptr;
    }
}

// The integer field behind an integer field id (0, 1, 2, 6); null for any other id.
int32_t *IntField(ERRLIB_Error *record, int32_t fieldId) {
    switch (fieldId) {
        case ERRLIB_ID_COMPONENT:
            return &record->component;
        case ERRLIB_ID_CODE:
            return &record->code;
        case ERRLIB_ID_CLASS:
            return &record->errorClass;
        case ERRLIB_ID_LINE:
            return &record->line;
        default:
            return nullptr;
    }
}

// Zero-fills a text of a class-2 record in place. The stack's own reserved record gets its whole
// fixed buffer of `size` bytes zeroed. Any other class-2 record (a copy of a reserved record, or a
// heap record given class 2) may hold shorter, exact-size texts, so only the bytes the text
// occupies, terminator included, are zeroed: the same result for a fixed buffer, whose bytes past
// the terminator are always zero, and never a write past a shorter block.
void ZeroText(char *text, std::size_t size, bool wholeBuffer) {
    if (text == nullptr) {
        return;
    }
    std::size_t bytes = wholeBuffer ? size : strnlen(text, size - 1) + 1;
    std::memset(text, 0, bytes);
}

// Frees the four texts of a record and sets them to null.
void FreeTexts(ERRLIB_Error *record) {
    MMFLAT_Free(record->origin);
    MMFLAT_Free(record->function);
    MMFLAT_Free(record->file);
    MMFLAT_Free(record->message);
    record->origin = nullptr;
    record->function = nullptr;
    record->file = nullptr;
    record->message = nullptr;
}

}  // namespace

namespace errlib {

// Frees a record taken out of a slot array and its four texts, whatever its class.
void FreeHeapRecord(ERRLIB_Error *record) {
    if (record == nullptr) {
        return;
    }
    FreeTexts(record);
    MMFLAT_Free(record);
}

}  // namespace errlib

// Allocates an empty heap record (component, code, class and line 0, texts null, timestamp now)
// and stores it in *recordOut. The caller owns it and releases it with ERRLIB_Error_Release.
// Returns 0, or 1 for a null recordOut or when the allocation fails (reported on `stack`).
extern "C" int ERRLIB_Error_Create(ERRLIB_Error **recordOut, ERRLIB_ErrorStack *stack) noexcept {
    if (recordOut == nullptr) {
        return 1;
    }
    auto *record =
        static_cast<ERRLIB_Error *>(MMFLAT_New(sizeof(ERRLIB_Error), stack, kSourcePath, __LINE__));
    if (record == nullptr) {
        return 1;
    }
    record->component = 0;
    record->timestamp = std::time(nullptr);
    record->code = 0;
    record->errorClass = 0;
    record->origin = nullptr;
    record->function = nullptr;
    record->file = nullptr;
    record->line = 0;
    record->message = nullptr;
    *recordOut = record;
    return 0;
}

// Clears the record and frees it with its texts. A class-2 record counts as a reserved record: it
// is only cleared in place (its buffers zero-filled) and not freed, because the reserved record
// belongs to its stack; so a caller-made copy of a reserved record stays the caller's, texts
// included, after this call (it is disposed of by giving it another class and releasing it
// again). `stack` only serves to recognise that stack's own reserved record. Returns 0, or 1 for
// a null record.
extern "C" int ERRLIB_Error_Release(ERRLIB_Error *record, ERRLIB_ErrorStack *stack) noexcept {
    if (record == nullptr) {
        return 1;
    }
    if (record->errorClass == ERRLIB_CLASS_MEMORY) {
        return ERRLIB_Error_Clear(record, stack);
    }
    ERRLIB_Error_Clear(record, stack);
    MMFLAT_Free(record);
    return 0;
}

// The same operation as ERRLIB_Error_Release (both names are in use).
extern "C" int ERRLIB_Error_Destroy(ERRLIB_Error *record, ERRLIB_ErrorStack *stack) noexcept {
    return ERRLIB_Error_Release(record, stack);
}

// Reads an integer field (ids 0 component, 1 code, 2 class, 6 line) into *valueOut. Returns 0, or
// 1 (nothing stored) for a null record or valueOut or another id.
extern "C" int ERRLIB_Error_GetInt32(const ERRLIB_Error *record, int32_t fieldId,
                                     int32_t *valueOut) noexcept {
    if (record == nullptr || valueOut == nullptr) {
        return 1;
    }
    const int32_t *field = IntField(const_cast<ERRLIB_Error *>(record), fieldId);
    if (field == nullptr) {
        return 1;
    }
    *valueOut = *field;
    return 0;
}

// Writes an integer field (ids 0, 1, 2, 6). Returns 0, or 1 for a null record or another id.
extern "C" int ERRLIB_Error_SetInt32(ERRLIB_Error *record, int32_t fieldId,
                                     int32_t value) noexcept {
    if (record == nullptr) {
        return 1;
    }
    int32_t *field = IntField(record, fieldId);
    if (field == nullptr) {
        return 1;
    }
    *field = value;
    return 0;
}

// Validates a text-field request: returns 0 when record and textOut are not null and the id is a
// text field (3, 4, 5, 7), else 1. Stores nothing in *textOut, ever: kept so for compatibility,
// callers read the text fields of the record directly.
extern "C" int ERRLIB_Error_GetChar(const ERRLIB_Error *record, int32_t fieldId,
                                    char **textOut) noexcept {
    if (record == nullptr || textOut == nullptr || FixedBufferSize(fieldId) == 0) {
        return 1;
    }
    return 0;
}

// Replaces a text field (ids 3 origin, 4 function, 5 file, 7 message) by a heap copy of `text`
// and frees the old text. The new block is allocated before the old one is freed: when the
// allocation fails (reported on `stack`) the call returns 1 and the field keeps its old text. A
// class-2 record gets a block of at least the fixed buffer's size (51 or 101 bytes, zero-padded),
// so a reserved record stays fillable in place. Returns 0, or 1 for a null record or text or
// another id.
extern "C" int ERRLIB_Error_SetChar(ERRLIB_Error *record, int32_t fieldId, const char *text,
                                    ERRLIB_ErrorStack *stack) noexcept {
    if (record == nullptr || text == nullptr) {
        return 1;
    }
    char **field = TextField(record, fieldId);
    if (field == nullptr) {
        return 1;
    }
    const std::size_t size = std::strlen(text) + 1;
    std::size_t blockSize = size;
    if (record->errorClass == ERRLIB_CLASS_MEMORY && blockSize < FixedBufferSize(fieldId)) {
        blockSize = FixedBufferSize(fieldId);
    }
    auto *copy = static_cast<char *>(
        MMFLAT_New(static_cast<uint32_t>(blockSize), stack, kSourcePath, __LINE__));
    if (copy == nullptr) {
        return 1;
    }
    std::memcpy(copy, text, size);
    std::memset(copy + size, 0, blockSize - size);
    MMFLAT_Free(*field);
    *field = copy;
    return 0;
}

// Resets a record; the timestamp is left as it is. A class-2 record (the reserved kind) keeps its
// class and its buffers: component, code and line become 0 and the buffers are zero-filled (the
// whole 51/101 bytes when `record` is the reserved record of `stack`, otherwise the bytes each
// text occupies). Any other record gets component, code, class and line 0 and its texts freed and
// set to null. Returns 0, or 1 for a null record.
extern "C" int ERRLIB_Error_Clear(ERRLIB_Error *record, ERRLIB_ErrorStack *stack) noexcept {
    if (record == nullptr) {
        return 1;
    }
    record->component = 0;
    record->code = 0;
    record->line = 0;
    if (record->errorClass == ERRLIB_CLASS_MEMORY) {
        const bool own = errlib::IsReservedRecordOf(record, stack);
        ZeroText(record->origin, kNameBufferSize, own);
        ZeroText(record->function, kNameBufferSize, own);
        ZeroText(record->file, kNameBufferSize, own);
        ZeroText(record->message, kMessageBufferSize, own);
        return 0;
    }
    record->errorClass = 0;
    FreeTexts(record);
    return 0;
}

// Makes `target` a deep copy of `source`: clears the target, copies component, code, class and
// timestamp, then origin, function and file as exact-size heap copies, then the line, then the
// message. The class is copied as it is, so a copy of a reserved record has class 2 and is
// treated as a reserved record by Clear and Release. A target of class 2 gives up the texts it
// held (they are its own) before the new ones are stored. Returns 0, or 1 for a null target or
// source, for a target that is the reserved record of `stack` (its buffers belong to the stack),
// or at the first failed allocation (reported on `stack`; the target is then partly filled and
// remains the caller's to release). Copying a record onto itself changes nothing and returns 0.
extern "C" int ERRLIB_Error_Copy(ERRLIB_Error *target, const ERRLIB_Error *source,
                                 ERRLIB_ErrorStack *stack) noexcept {
    if (target == nullptr || source == nullptr) {
        return 1;
    }
    if (errlib::IsReservedRecordOf(target, stack)) {
        return 1;
    }
    if (target == source) {
        return 0;
    }
    const bool targetWasReservedKind = target->errorClass == ERRLIB_CLASS_MEMORY;
    if (ERRLIB_Error_Clear(target, stack) != 0) {  // GCOVR_EXCL_BR_LINE: target is not null
        return 1;
    }
    if (targetWasReservedKind) {
        FreeTexts(target);  // kept by the clear; replaced below
    }
    target->component = source->component;
    target->code = source->code;
    target->errorClass = source->errorClass;
    target->timestamp = source->timestamp;
    target->message = nullptr;
    if (!CopyText(&target->origin, source->origin, stack, kSourcePath, __LINE__) ||
        !CopyText(&target->function, source->function, stack, kSourcePath, __LINE__) ||
        !CopyText(&target->file, source->file, stack, kSourcePath, __LINE__)) {
        return 1;
    }
    target->line = source->line;
    if (!CopyText(&target->message, source->message, stack, kSourcePath, __LINE__)) {
        return 1;
    }
    return 0;
}

namespace errlib {

bool CopyText(char **field, const char *text, ERRLIB_ErrorStack *stack, const char *path,
              int32_t line) {
    *field = nullptr;
    if (text == nullptr) {
        return true;
    }
    const std::size_t size = std::strlen(text) + 1;
    auto *copy = static_cast<char *>(MMFLAT_New(static_cast<uint32_t>(size), stack, path, line));
    if (copy == nullptr) {
        return false;
    }
    std::memcpy(copy, text, size);
    *field = copy;
    return true;
}

}  // namespace errlib
