/* SPDX-License-Identifier: MIT */
// The allocation torture table: one row per scenario of a public routine that allocates. A row
// lists, in order, every allocation the call makes (its plan) and says what a caller must see
// when the call succeeds and when any one of those allocations fails. The generic driver in
// alloc_torture_test.cpp runs each row with no failure, then with each allocation failing in turn
// (alone, from there on, and by its size), and checks that nothing crashed, nothing leaked and the
// status and error record are exactly the expected ones.
#ifndef NLS_TESTS_TORTURE_ALLOC_TORTURE_H
#define NLS_TESTS_TORTURE_ALLOC_TORTURE_H

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <vector>

#include <nlssupport/convlib.h>
#include <nlssupport/errlib.h>

namespace torture {

// One allocation of the system allocator made by the call, in the order the call makes it.
struct Site {
    const char *call;  // "malloc", "calloc" or "realloc": the function name the error record shows
    const char *file;  // end of the source path the error record shows ("" when not reported)
    int32_t line;      // the line the error record shows; 0: any positive line
    std::size_t size;  // bytes asked of the system allocator (calloc: count * size)
    int64_t reported;  // the size the error record's message shows ("%d" of the 32-bit request)
    int batch;         // 0, or a number shared by consecutive sites that the routine asks for
                       // together before it checks any of them: a failure there lets the rest
                       // of the batch be asked for too
};

// Index of the last site of the batch of site k (k itself when it is in no batch).
std::size_t BatchEnd(const std::vector<Site> &plan, std::size_t k);

// A site whose reported size is the size asked for.
Site At(const char *call, const char *file, int32_t line, std::size_t size);

// Everything a scenario works on. Value-initialised before every run.
struct World {
    ERRLIB_ErrorStack *stack;  // the caller's error stack (null when the routine takes none)
    ERRLIB_ErrorStack *other;  // a second stack some scenarios read from
    ERRLIB_ErrorStack *made;   // the stack ERRLIB_ErrorStack_Create stores
    ERRLIB_Error *record;      // caller-held records
    ERRLIB_Error *target;
    ERRLIB_Error *source;  // a record the caller reads but does not own
    void *block;           // a caller-held block
    void *result;          // a pointer the call returned
    const char *oldText;   // a text that must survive a failed call
    int status;            // the call's status (0/1, or a conversion status)
    uint32_t count;        // in/out count of CONV_StringToBinary
    uint16_t failedField;
    uint16_t fieldCount;
    CONV_DateTime dateTime;
    alignas(8) unsigned char buffer[64];
    alignas(8) unsigned char before[64];  // copy of buffer taken at set-up
};

// One scenario. Every function gets the same World across set-up, run, checks and cleanup.
struct Row {
    const char *name;             // test-name suffix
    std::vector<Site> (*plan)();  // the allocations of one call, in order
    bool (*setup)(World &);       // builds the caller's state; false when that failed
    void (*run)(World &);         // the one call under test
    void (*expectSuccess)(const World &);
    void (*expectFailure)(const World &, std::size_t failedSite);  // 0-based index into plan()
    void (*cleanup)(World &);  // what the caller does afterwards; frees everything
    bool reportsOnStack;       // a failed allocation is recorded on World::stack
};

// The table.
const std::vector<Row> &Rows();

// How GoogleTest shows a row: its name.
void PrintTo(const Row &row, std::ostream *out);

// Sets the environment variables the scenarios read (call once, outside any counting period).
void PrepareEnvironment();

}  // namespace torture

#endif  // NLS_TESTS_TORTURE_ALLOC_TORTURE_H
