// Every public header compiles as C++ too, alone and all together, with its declarations given C
// linkage: this translation unit takes the address of one function per header as a C function.
#include "errlib.h"
#include "memmgr.h"

extern "C" {
using ErrorStackCreate = int(ERRLIB_ErrorStack **);
using CheckedNew = void *(uint32_t, ERRLIB_ErrorStack *, const char *, int32_t);
}

ErrorStackCreate *const kCreate = &ERRLIB_ErrorStack_Create;
CheckedNew *const kNew = &MMFLAT_New;
