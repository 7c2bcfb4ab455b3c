/* SPDX-License-Identifier: MIT */
// The allocation torture table: one row per scenario of every public routine that allocates.
// Each row's plan lists the allocations of one call in order; its checks say what the caller sees
// after a success and after a failure of each planned allocation.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <nlssupport/convlib.h>
#include <nlssupport/errlib.h>
#include "errlib/errstack_internal.h"
#include <nlssupport/glib.h>
#include <nlssupport/memmgr.h>
#include "torture/alloc_torture.h"

namespace torture {

Site At(const char *call, const char *file, int32_t line, std::size_t size) {
    return Site{call, file, line, size, static_cast<int64_t>(static_cast<int32_t>(size)), 0};
}

std::size_t BatchEnd(const std::vector<Site> &plan, std::size_t k) {
    std::size_t end = k;
    while (plan[k].batch != 0 && end + 1 < plan.size() && plan[end + 1].batch == plan[k].batch) {
        ++end;
    }
    return end;
}

namespace {

// Where the error library's own allocations are reported from.
constexpr char kStackFile[] = "errlib/errstack.cpp";
constexpr char kRecordFile[] = "errlib/errrecord.cpp";
// Where the general library's environment routines report from, and their fixed site lines.
constexpr char kEnvFile[] = "glib/glibenv.cpp";
constexpr int32_t kExpandNewLine = 3772;
constexpr int32_t kExpandResizeLine = 3807;
constexpr int32_t kGetenvLine = 2668;
// The call site a caller of the checked allocator passes.
constexpr char kCallerFile[] = "tests/torture/caller.cpp";
constexpr int32_t kCallerLine = 4242;

// Environment read by the scenarios (set once by PrepareEnvironment).
constexpr char kHomeName[] = "NLS_TORTURE_HOME";
constexpr char kHomeValue[] = "/home/torture";
constexpr char kShortName[] = "NLS_TORTURE_SHORT";
constexpr char kShortValue[] = "ab";
constexpr char kUnsetName[] = "NLS_TORTURE_UNSET";
constexpr char kExpandSource[] = "x${NLS_TORTURE_HOME}y${NLS_TORTURE_UNSET}z${NLS_TORTURE_SHORT}!";
constexpr char kExpandResult[] = "x/home/tortureyzab!";
constexpr char kPlainSource[] = "no references, $HOME nor ${unclosed";

ERRLIB_ErrorStack *const kStackSentinel = reinterpret_cast<ERRLIB_ErrorStack *>(0x1230);
ERRLIB_Error *const kRecordSentinel = reinterpret_cast<ERRLIB_Error *>(0x4560);

// ---- helpers ----

int32_t Errors(const ERRLIB_ErrorStack *stack) {
    int32_t count = -1;
    if (ERRLIB_ErrorStack_GetNumberofErrors(stack, &count) != 0) {
        return -1;
    }
    return count;
}

// Index of the first error with this code and class, -1 when there is none.
int32_t IndexOf(ERRLIB_ErrorStack *stack, int32_t code, int32_t errorClass) {
    int32_t index = -2;
    if (ERRLIB_ErrorStack_FindError(stack, 50, code, errorClass, nullptr, nullptr, &index,
                                    nullptr) != 0) {
        return -2;
    }
    return index;
}

// The heap record that FindError gives for this code and class, or null.
ERRLIB_Error *Find(ERRLIB_ErrorStack *stack, int32_t code, int32_t errorClass) {
    int32_t index = -1;
    ERRLIB_Error *record = nullptr;
    ERRLIB_ErrorStack_FindError(stack, 50, code, errorClass, nullptr, nullptr, &index, &record);
    return record;
}

bool NewStack(World &w) {
    return ERRLIB_ErrorStack_Create(&w.stack) == 0;
}

// Frees a caller-held record of any class (a class-2 record is only cleared by Release).
void Dispose(ERRLIB_Error *record) {
    if (record != nullptr) {
        ERRLIB_Error_SetInt32(record, ERRLIB_ID_CLASS, 0);
        ERRLIB_Error_Release(record, nullptr);
    }
}

// Frees everything a World can hold.
void CleanAll(World &w) {
    Dispose(w.record);
    Dispose(w.target);
    MMFLAT_Free(w.block);
    MMFLAT_Free(w.result);
    ERRLIB_ErrorStack_Destroy(w.stack);
    ERRLIB_ErrorStack_Destroy(w.other);
    ERRLIB_ErrorStack_Destroy(w.made);
    w = World{};
}

// Pushes `n` ordinary errors with codes 1 .. n.
bool PushOrdinary(ERRLIB_ErrorStack *stack, int n) {
    for (int code = 1; code <= n; ++code) {
        if (ERRLIB_ErrorStack_AddError(stack, 50, code, 5, "o", "f", "file.cpp", code, "m") != 0) {
            return false;
        }
    }
    return true;
}

// ---- the error library ----

// The four fixed buffers are asked for together and checked afterwards.
std::vector<Site> StackCreatePlan() {
    std::vector<Site> plan = {At("malloc", kStackFile, 0, sizeof(ERRLIB_ErrorStack)),
                              At("malloc", kStackFile, 0, 20 * sizeof(ERRLIB_Error *)),
                              At("calloc", kStackFile, 0, 51),
                              At("calloc", kStackFile, 0, 51),
                              At("calloc", kStackFile, 0, 51),
                              At("calloc", kStackFile, 0, 101)};
    for (std::size_t k = 2; k < plan.size(); ++k) {
        plan[k].batch = 1;
    }
    return plan;
}

// The ordinary push of the AddError scenarios: a record and four texts.
constexpr char kOrigin[] = "org";
constexpr char kFunction[] = "func";
constexpr char kFile[] = "a/b.cpp";
constexpr char kMessage[] = "message text";

int PushFull(ERRLIB_ErrorStack *stack, int32_t code) {
    return ERRLIB_ErrorStack_AddError(stack, 50, code, 5, kOrigin, kFunction, kFile, 3, kMessage);
}

std::vector<Site> FullPushPlan() {
    return {
        At("malloc", kRecordFile, 0, sizeof(ERRLIB_Error)),
        At("malloc", kStackFile, 0, sizeof kOrigin), At("malloc", kStackFile, 0, sizeof kFunction),
        At("malloc", kStackFile, 0, sizeof kFile), At("malloc", kStackFile, 0, sizeof kMessage)};
}

void ExpectFullRecord(const ERRLIB_Error *record, int32_t code) {
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->component, 50);
    EXPECT_EQ(record->code, code);
    EXPECT_EQ(record->errorClass, 5);
    EXPECT_EQ(record->line, 3);
    EXPECT_STREQ(record->origin, kOrigin);
    EXPECT_STREQ(record->function, kFunction);
    EXPECT_STREQ(record->file, kFile);
    EXPECT_STREQ(record->message, kMessage);
}

// A stack already holding `held` ordinary records, growing (or not) when one more is pushed.
template <int held>
bool StackHolding(World &w) {
    return NewStack(w) && PushOrdinary(w.stack, held);
}

template <int held>
void ExpectPushed(const World &w) {
    EXPECT_EQ(w.status, 0);
    EXPECT_EQ(Errors(w.stack), held + 1);
    EXPECT_EQ(IndexOf(w.stack, 99, 5), held);
    ExpectFullRecord(Find(w.stack, 99, 5), 99);
    for (int code = 1; code <= held; ++code) {
        EXPECT_EQ(IndexOf(w.stack, code, 5), code - 1);
    }
}

// A failed push loses the new error, keeps every earlier record in its place and leaves the
// allocator's memory error: one error more than before.
template <int held>
void ExpectNotPushed(const World &w, std::size_t) {
    EXPECT_EQ(w.status, 1);
    EXPECT_EQ(Errors(w.stack), held + 1);
    EXPECT_EQ(IndexOf(w.stack, 99, 5), -1);
    for (int code = 1; code <= held; ++code) {
        EXPECT_EQ(IndexOf(w.stack, code, 5), code - 1);
    }
}

std::vector<Site> GrowTo30Plan() {
    std::vector<Site> plan = FullPushPlan();
    plan.push_back(At("realloc", kStackFile, 0, 30 * sizeof(ERRLIB_Error *)));
    return plan;
}

std::vector<Site> GrowTo40Plan() {
    std::vector<Site> plan = FullPushPlan();
    plan.push_back(At("realloc", kStackFile, 0, 40 * sizeof(ERRLIB_Error *)));
    return plan;
}

// Add_SMError: a class-23 record, then a class-24 record, each with a function and a file text.
constexpr char kSmFunction[] = "semop";
constexpr char kSmFile[] = "sm/sem.cpp";

std::vector<Site> SmOnePlan() {
    return {At("malloc", kRecordFile, 0, sizeof(ERRLIB_Error)),
            At("malloc", kStackFile, 0, sizeof kSmFunction),
            At("malloc", kStackFile, 0, sizeof kSmFile)};
}

std::vector<Site> SmTwoPlan() {
    std::vector<Site> plan = SmOnePlan();
    std::vector<Site> second = SmOnePlan();
    plan.insert(plan.end(), second.begin(), second.end());
    return plan;
}

void ExpectSmRecord(ERRLIB_ErrorStack *stack, int32_t code, int32_t errorClass, int32_t index) {
    EXPECT_EQ(IndexOf(stack, code, errorClass), index);
    const ERRLIB_Error *record = Find(stack, code, errorClass);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->origin, nullptr);
    EXPECT_STREQ(record->function, kSmFunction);
    EXPECT_STREQ(record->file, kSmFile);
    EXPECT_EQ(record->line, 12);
    EXPECT_EQ(record->message, nullptr);
}

// Error records: a source with four texts copied into a fresh target.
constexpr const char *kCopyTexts[] = {"o", "fn", "fil", "mess"};

bool CopySetup(World &w) {
    if (!NewStack(w) || ERRLIB_Error_Create(&w.record, nullptr) != 0 ||
        ERRLIB_Error_Create(&w.target, nullptr) != 0) {
        return false;
    }
    const int32_t ids[] = {ERRLIB_ID_ORIGIN, ERRLIB_ID_FUNCTION, ERRLIB_ID_FILE, ERRLIB_ID_MESSAGE};
    for (int i = 0; i < 4; ++i) {
        if (ERRLIB_Error_SetChar(w.record, ids[i], kCopyTexts[i], nullptr) != 0) {
            return false;
        }
    }
    w.record->component = 50;
    w.record->code = 3;
    w.record->errorClass = 21;
    w.record->line = 8;
    w.record->timestamp = 99;
    return true;
}

// The reserved record of another stack, holding a memory error, copied into a fresh target.
bool ReservedCopySetup(World &w) {
    if (!NewStack(w) || ERRLIB_ErrorStack_Create(&w.other) != 0 ||
        ERRLIB_Error_Create(&w.target, nullptr) != 0) {
        return false;
    }
    return ERRLIB_ErrorStack_AddError(w.other, 50, 1, 2, nullptr, "malloc", "lib/x.cpp", 9, "64") ==
               0 &&
           ERRLIB_ErrorStack_PeekLastError(w.other, &w.source) == 0;
}

// ---- the checked allocator ----

std::vector<Site> One(const char *call, std::size_t size) {
    return {At(call, kCallerFile, kCallerLine, size)};
}

constexpr char kDupText[] = "duplicate me";
constexpr uint16_t kWideText[] = {'A', 'B', 0};

// ---- the general library ----

std::vector<Site> ExpandPlan() {
    const std::size_t first = std::strlen(kExpandSource) + 1;
    const std::size_t second = first + std::strlen(kHomeValue) - 1;
    const std::size_t third = second + std::strlen(kShortValue) - 1;
    return {At("malloc", kEnvFile, kExpandNewLine, first),
            At("realloc", kEnvFile, kExpandResizeLine, second),
            At("realloc", kEnvFile, kExpandResizeLine, third)};
}

// ---- the conversion library ----

constexpr char kHexText[] = "0A1B2C3D";
constexpr char kDateText[] = "12.11.1999";
constexpr char kDateFormat[] = "%D.%M.%Z";

void SnapshotBuffer(World &w) {
    std::memcpy(w.before, w.buffer, sizeof w.buffer);
}

void ExpectBufferUntouched(const World &w) {
    EXPECT_EQ(std::memcmp(w.before, w.buffer, sizeof w.buffer), 0);
}

// The date text stored inside the record, at byte 2, over a record filled with 0x33.
bool DateInsideRecord(World &w) {
    std::memset(&w.dateTime, 0x33, sizeof w.dateTime);
    static_assert(sizeof kDateText + 2 <= sizeof(CONV_DateTime), "the text fits in the record");
    std::memcpy(reinterpret_cast<char *>(&w.dateTime) + 2, kDateText, sizeof kDateText);
    std::memcpy(w.before, &w.dateTime, sizeof w.dateTime);
    return true;
}

void ParseDate(World &w, const char *source) {
    w.failedField = 7;
    w.fieldCount = 7;
    w.status = static_cast<int>(CONV_StringToDateTime(&w.dateTime, source, kDateFormat, 0, nullptr,
                                                      &w.failedField, &w.fieldCount));
}

void ExpectDateRead(const World &w) {
    EXPECT_EQ(w.status, static_cast<int>(CONV_OK));
    EXPECT_EQ(w.dateTime.day, 12);
    EXPECT_EQ(w.dateTime.month, 11);
    EXPECT_EQ(w.dateTime.year, 1999);
    EXPECT_EQ(w.fieldCount, 3);
    EXPECT_EQ(w.failedField, 65535);
}

std::vector<Site> NoAllocation() {
    return {};
}

bool Nothing(World &) {
    return true;
}

void NeverFails(const World &, std::size_t site) {
    ADD_FAILURE() << "no allocation was planned, yet site " << site << " failed";
}

// ---- the table ----

std::vector<Row> MakeRows() {
    std::vector<Row> rows;

    // ERRLIB_ErrorStack_Create: the stack, its 20 slots and the reserved record's four buffers.
    // Nothing is reported (there is no stack yet); the output stays as it was.
    rows.push_back(Row{"ErrorStackCreate", StackCreatePlan,
                       [](World &w) {
                           w.made = kStackSentinel;
                           return true;
                       },
                       [](World &w) { w.status = ERRLIB_ErrorStack_Create(&w.made); },
                       [](const World &w) {
                           EXPECT_EQ(w.status, 0);
                           ASSERT_NE(w.made, kStackSentinel);
                           ASSERT_NE(w.made, nullptr);
                           EXPECT_EQ(Errors(w.made), 0);
                       },
                       [](const World &w, std::size_t) {
                           EXPECT_EQ(w.status, 1);
                           EXPECT_EQ(w.made, kStackSentinel);
                       },
                       [](World &w) {
                           if (w.made == kStackSentinel) {
                               w.made = nullptr;
                           }
                           CleanAll(w);
                       },
                       false});

    // ERRLIB_ErrorStack_AddError of an ordinary error with all four texts.
    rows.push_back(Row{"AddErrorWithFourTexts", FullPushPlan, StackHolding<1>,
                       [](World &w) { w.status = PushFull(w.stack, 99); }, ExpectPushed<1>,
                       ExpectNotPushed<1>, CleanAll, true});

    // Only the texts given are copied.
    rows.push_back(Row{"AddErrorWithOneText",
                       [] {
                           return std::vector<Site>{
                               At("malloc", kRecordFile, 0, sizeof(ERRLIB_Error)),
                               At("malloc", kStackFile, 0, sizeof kFunction)};
                       },
                       NewStack,
                       [](World &w) {
                           w.status = ERRLIB_ErrorStack_AddError(w.stack, 50, 99, 7, nullptr,
                                                                 kFunction, nullptr, 4, nullptr);
                       },
                       [](const World &w) {
                           EXPECT_EQ(w.status, 0);
                           EXPECT_EQ(Errors(w.stack), 1);
                           const ERRLIB_Error *record = Find(w.stack, 99, 7);
                           ASSERT_NE(record, nullptr);
                           EXPECT_EQ(record->origin, nullptr);
                           EXPECT_STREQ(record->function, kFunction);
                           EXPECT_EQ(record->file, nullptr);
                           EXPECT_EQ(record->message, nullptr);
                       },
                       [](const World &w, std::size_t) {
                           EXPECT_EQ(w.status, 1);
                           EXPECT_EQ(Errors(w.stack), 1);  // the memory error only
                           EXPECT_EQ(IndexOf(w.stack, 99, 7), -1);
                       },
                       CleanAll, true});

    // A memory error (class 2) fills the reserved record in place: no allocation at all.
    rows.push_back(Row{"AddErrorOfMemoryClass", NoAllocation, NewStack,
                       [](World &w) {
                           w.status = ERRLIB_ErrorStack_AddError(w.stack, 50, 1, 2, nullptr,
                                                                 "malloc", "m.cpp", 5, "10");
                       },
                       [](const World &w) {
                           EXPECT_EQ(w.status, 0);
                           EXPECT_EQ(Errors(w.stack), 1);
                           EXPECT_EQ(IndexOf(w.stack, 1, 2), 0);
                       },
                       NeverFails, CleanAll, false});

    // The 21st push grows the slots from 20 to 30; the 31st from 30 to 40.
    rows.push_back(Row{"AddErrorGrowingSlotsTo30", GrowTo30Plan, StackHolding<20>,
                       [](World &w) { w.status = PushFull(w.stack, 99); }, ExpectPushed<20>,
                       ExpectNotPushed<20>, CleanAll, true});
    rows.push_back(Row{"AddErrorGrowingSlotsTo40", GrowTo40Plan, StackHolding<30>,
                       [](World &w) { w.status = PushFull(w.stack, 99); }, ExpectPushed<30>,
                       ExpectNotPushed<30>, CleanAll, true});

    // ERRLIB_ErrorStack_Add_SMError with two codes: a failure in the first push pushes nothing;
    // a failure in the second keeps the first record.
    rows.push_back(Row{"AddSMErrorWithTwoCodes", SmTwoPlan, NewStack,
                       [](World &w) {
                           w.status = ERRLIB_ErrorStack_Add_SMError(w.stack, kSmFunction, 12,
                                                                    kSmFile, 7, 8);
                       },
                       [](const World &w) {
                           EXPECT_EQ(w.status, 0);
                           EXPECT_EQ(Errors(w.stack), 2);
                           ExpectSmRecord(w.stack, 7, 23, 0);
                           ExpectSmRecord(w.stack, 8, 24, 1);
                       },
                       [](const World &w, std::size_t site) {
                           EXPECT_EQ(w.status, 1);
                           EXPECT_EQ(IndexOf(w.stack, 8, 24), -1);
                           if (site < 3) {
                               EXPECT_EQ(Errors(w.stack), 1);
                               EXPECT_EQ(IndexOf(w.stack, 7, 23), -1);
                           } else {
                               EXPECT_EQ(Errors(w.stack), 2);
                               ExpectSmRecord(w.stack, 7, 23, 0);
                           }
                       },
                       CleanAll, true});
    rows.push_back(Row{"AddSMErrorWithOneCode", SmOnePlan, NewStack,
                       [](World &w) {
                           w.status = ERRLIB_ErrorStack_Add_SMError(w.stack, kSmFunction, 12,
                                                                    kSmFile, 7, 0);
                       },
                       [](const World &w) {
                           EXPECT_EQ(w.status, 0);
                           EXPECT_EQ(Errors(w.stack), 1);
                           ExpectSmRecord(w.stack, 7, 23, 0);
                       },
                       [](const World &w, std::size_t) {
                           EXPECT_EQ(w.status, 1);
                           EXPECT_EQ(Errors(w.stack), 1);
                           EXPECT_EQ(IndexOf(w.stack, 7, 23), -1);
                       },
                       CleanAll, true});

    // ERRLIB_Error_Create: one record; on failure the output keeps its value.
    rows.push_back(
        Row{"ErrorCreate",
            [] { return std::vector<Site>{At("malloc", kRecordFile, 0, sizeof(ERRLIB_Error))}; },
            [](World &w) {
                w.record = kRecordSentinel;
                return NewStack(w);
            },
            [](World &w) { w.status = ERRLIB_Error_Create(&w.record, w.stack); },
            [](const World &w) {
                EXPECT_EQ(w.status, 0);
                ASSERT_NE(w.record, kRecordSentinel);
                ASSERT_NE(w.record, nullptr);
                EXPECT_EQ(w.record->component, 0);
                EXPECT_EQ(w.record->code, 0);
                EXPECT_EQ(w.record->errorClass, 0);
                EXPECT_EQ(w.record->line, 0);
                EXPECT_EQ(w.record->origin, nullptr);
                EXPECT_EQ(w.record->function, nullptr);
                EXPECT_EQ(w.record->file, nullptr);
                EXPECT_EQ(w.record->message, nullptr);
            },
            [](const World &w, std::size_t) {
                EXPECT_EQ(w.status, 1);
                EXPECT_EQ(w.record, kRecordSentinel);
            },
            [](World &w) {
                if (w.record == kRecordSentinel) {
                    w.record = nullptr;
                }
                CleanAll(w);
            },
            true});

    // ERRLIB_Error_SetChar on a heap record: length + 1 bytes; a failure keeps the old text.
    rows.push_back(Row{
        "ErrorSetCharOnHeapRecord",
        [] { return std::vector<Site>{At("malloc", kRecordFile, 0, sizeof "a new message")}; },
        [](World &w) {
            if (!NewStack(w) || ERRLIB_Error_Create(&w.record, nullptr) != 0 ||
                ERRLIB_Error_SetChar(w.record, ERRLIB_ID_MESSAGE, "old", nullptr) != 0) {
                return false;
            }
            w.oldText = w.record->message;
            return true;
        },
        [](World &w) {
            w.status = ERRLIB_Error_SetChar(w.record, ERRLIB_ID_MESSAGE, "a new message", w.stack);
        },
        [](const World &w) {
            EXPECT_EQ(w.status, 0);
            EXPECT_STREQ(w.record->message, "a new message");
        },
        [](const World &w, std::size_t) {
            EXPECT_EQ(w.status, 1);
            EXPECT_EQ(w.record->message, w.oldText);
            EXPECT_STREQ(w.record->message, "old");
        },
        CleanAll, true});

    // ERRLIB_Error_SetChar on a caller's class-2 record: a block of the fixed buffer's size.
    rows.push_back(Row{"ErrorSetCharOnMemoryClassRecord",
                       [] { return std::vector<Site>{At("malloc", kRecordFile, 0, 51)}; },
                       [](World &w) {
                           return NewStack(w) && ERRLIB_Error_Create(&w.record, nullptr) == 0 &&
                                  ERRLIB_Error_SetInt32(w.record, ERRLIB_ID_CLASS, 2) == 0;
                       },
                       [](World &w) {
                           w.status =
                               ERRLIB_Error_SetChar(w.record, ERRLIB_ID_FUNCTION, "fn", w.stack);
                       },
                       [](const World &w) {
                           EXPECT_EQ(w.status, 0);
                           EXPECT_STREQ(w.record->function, "fn");
                       },
                       [](const World &w, std::size_t) {
                           EXPECT_EQ(w.status, 1);
                           EXPECT_EQ(w.record->function, nullptr);
                       },
                       CleanAll, true});

    // ERRLIB_Error_Copy of a heap record: origin, function, file, message; the line is copied
    // after the file, and a failure leaves the target partly filled.
    rows.push_back(Row{"ErrorCopyOfHeapRecord",
                       [] {
                           std::vector<Site> plan;
                           for (const char *text : kCopyTexts) {
                               plan.push_back(At("malloc", kRecordFile, 0, std::strlen(text) + 1));
                           }
                           return plan;
                       },
                       CopySetup,
                       [](World &w) { w.status = ERRLIB_Error_Copy(w.target, w.record, w.stack); },
                       [](const World &w) {
                           EXPECT_EQ(w.status, 0);
                           EXPECT_EQ(w.target->component, 50);
                           EXPECT_EQ(w.target->code, 3);
                           EXPECT_EQ(w.target->errorClass, 21);
                           EXPECT_EQ(w.target->line, 8);
                           EXPECT_EQ(w.target->timestamp, 99);
                           EXPECT_STREQ(w.target->origin, "o");
                           EXPECT_STREQ(w.target->function, "fn");
                           EXPECT_STREQ(w.target->file, "fil");
                           EXPECT_STREQ(w.target->message, "mess");
                           EXPECT_NE(w.target->message, w.record->message);
                       },
                       [](const World &w, std::size_t site) {
                           EXPECT_EQ(w.status, 1);
                           EXPECT_EQ(w.target->code, 3);
                           EXPECT_EQ(w.target->errorClass, 21);
                           EXPECT_EQ(w.target->timestamp, 99);
                           EXPECT_EQ(w.target->origin != nullptr, site > 0);
                           EXPECT_EQ(w.target->function != nullptr, site > 1);
                           EXPECT_EQ(w.target->file != nullptr, site > 2);
                           EXPECT_EQ(w.target->line, site > 2 ? 8 : 0);
                           EXPECT_EQ(w.target->message, nullptr);
                       },
                       CleanAll, true});

    // ERRLIB_Error_Copy of a stack's reserved record: exact-size copies of its four texts (the
    // empty origin too); the target takes class 2.
    rows.push_back(Row{"ErrorCopyOfReservedRecord",
                       [] {
                           return std::vector<Site>{
                               At("malloc", kRecordFile, 0, 1), At("malloc", kRecordFile, 0, 7),
                               At("malloc", kRecordFile, 0, 10), At("malloc", kRecordFile, 0, 3)};
                       },
                       ReservedCopySetup,
                       [](World &w) { w.status = ERRLIB_Error_Copy(w.target, w.source, w.stack); },
                       [](const World &w) {
                           EXPECT_EQ(w.status, 0);
                           EXPECT_EQ(w.target->errorClass, 2);
                           EXPECT_STREQ(w.target->origin, "");
                           EXPECT_STREQ(w.target->function, "malloc");
                           EXPECT_STREQ(w.target->file, "lib/x.cpp");
                           EXPECT_STREQ(w.target->message, "64");
                           EXPECT_EQ(w.target->line, 9);
                       },
                       [](const World &w, std::size_t site) {
                           EXPECT_EQ(w.status, 1);
                           EXPECT_EQ(w.target->errorClass, 2);
                           EXPECT_EQ(w.target->origin != nullptr, site > 0);
                           EXPECT_EQ(w.target->function != nullptr, site > 1);
                           EXPECT_EQ(w.target->file != nullptr, site > 2);
                           EXPECT_EQ(w.target->message, nullptr);
                           // The other stack's reserved record is left as it was.
                           EXPECT_STREQ(w.source->function, "malloc");
                           EXPECT_STREQ(w.source->message, "64");
                       },
                       CleanAll, true});

    // ---- MMFLAT_*: the failure is reported with the caller's file, line and size ----

    rows.push_back(
        Row{"MemNew", [] { return One("malloc", 1000); }, NewStack,
            [](World &w) { w.result = MMFLAT_New(1000, w.stack, kCallerFile, kCallerLine); },
            [](const World &w) { EXPECT_NE(w.result, nullptr); },
            [](const World &w, std::size_t) {
                EXPECT_EQ(w.result, nullptr);
                EXPECT_EQ(Errors(w.stack), 1);
            },
            CleanAll, true});
    rows.push_back(
        Row{"MemNewWithoutStack", [] { return One("malloc", 1000); }, Nothing,
            [](World &w) { w.result = MMFLAT_New(1000, nullptr, kCallerFile, kCallerLine); },
            [](const World &w) { EXPECT_NE(w.result, nullptr); },
            [](const World &w, std::size_t) { EXPECT_EQ(w.result, nullptr); }, CleanAll, false});
    rows.push_back(
        Row{"MemNewClear", [] { return One("calloc", 333); }, NewStack,
            [](World &w) { w.result = MMFLAT_NewClear(333, w.stack, kCallerFile, kCallerLine); },
            [](const World &w) {
                ASSERT_NE(w.result, nullptr);
                const auto *bytes = static_cast<const unsigned char *>(w.result);
                for (int i = 0; i < 333; ++i) {
                    ASSERT_EQ(bytes[i], 0) << i;
                }
            },
            [](const World &w, std::size_t) {
                EXPECT_EQ(w.result, nullptr);
                EXPECT_EQ(Errors(w.stack), 1);
            },
            CleanAll, true});
    // Growing a block: a failure leaves the old block untouched and still the caller's.
    rows.push_back(Row{"MemResizeGrowing", [] { return One("realloc", 5000); },
                       [](World &w) {
                           w.block = MMFLAT_New(16, nullptr, kCallerFile, kCallerLine);
                           if (w.block == nullptr) {
                               return false;
                           }
                           std::memset(w.block, 'q', 16);
                           return NewStack(w);
                       },
                       [](World &w) {
                           w.result =
                               MMFLAT_Resize(w.block, 5000, w.stack, kCallerFile, kCallerLine);
                           if (w.result != nullptr) {
                               w.block = nullptr;  // replaced by the result
                           }
                       },
                       [](const World &w) {
                           ASSERT_NE(w.result, nullptr);
                           EXPECT_EQ(std::memcmp(w.result, "qqqqqqqqqqqqqqqq", 16), 0);
                       },
                       [](const World &w, std::size_t) {
                           EXPECT_EQ(w.result, nullptr);
                           ASSERT_NE(w.block, nullptr);
                           EXPECT_EQ(std::memcmp(w.block, "qqqqqqqqqqqqqqqq", 16), 0);
                       },
                       CleanAll, true});
    rows.push_back(Row{
        "MemResizeOfNull", [] { return One("realloc", 77); }, NewStack,
        [](World &w) { w.result = MMFLAT_Resize(nullptr, 77, w.stack, kCallerFile, kCallerLine); },
        [](const World &w) { EXPECT_NE(w.result, nullptr); },
        [](const World &w, std::size_t) { EXPECT_EQ(w.result, nullptr); }, CleanAll, true});
    // A size of 0 for an existing block asks the system for one byte; the report shows 0.
    rows.push_back(Row{"MemResizeToZero",
                       [] {
                           Site site = At("realloc", kCallerFile, kCallerLine, 1);
                           site.reported = 0;
                           return std::vector<Site>{site};
                       },
                       [](World &w) {
                           w.block = MMFLAT_New(40, nullptr, kCallerFile, kCallerLine);
                           return w.block != nullptr && NewStack(w);
                       },
                       [](World &w) {
                           w.result = MMFLAT_Resize(w.block, 0, w.stack, kCallerFile, kCallerLine);
                           if (w.result != nullptr) {
                               w.block = nullptr;
                           }
                       },
                       [](const World &w) { EXPECT_NE(w.result, nullptr); },
                       [](const World &w, std::size_t) {
                           EXPECT_EQ(w.result, nullptr);
                           EXPECT_NE(w.block, nullptr);
                       },
                       CleanAll, true});
    rows.push_back(
        Row{"MemStrDup", [] { return One("malloc", sizeof kDupText); }, NewStack,
            [](World &w) { w.result = MMFLAT_StrDup(kDupText, w.stack, kCallerFile, kCallerLine); },
            [](const World &w) { EXPECT_STREQ(static_cast<const char *>(w.result), kDupText); },
            [](const World &w, std::size_t) { EXPECT_EQ(w.result, nullptr); }, CleanAll, true});
    rows.push_back(Row{
        "MemWcsDup", [] { return One("malloc", sizeof kWideText); }, NewStack,
        [](World &w) { w.result = MMFLAT_WcsDup(kWideText, w.stack, kCallerFile, kCallerLine); },
        [](const World &w) {
            ASSERT_NE(w.result, nullptr);
            EXPECT_EQ(std::memcmp(w.result, kWideText, sizeof kWideText), 0);
        },
        [](const World &w, std::size_t) { EXPECT_EQ(w.result, nullptr); }, CleanAll, true});

    // ---- the general library ----

    // GLIB_ExpandEnvStrings: the first block, then one resize per set variable; a failed resize
    // releases the block built so far.
    rows.push_back(Row{
        "ExpandEnvStringsWithTwoValues", ExpandPlan, NewStack,
        [](World &w) { w.result = GLIB_ExpandEnvStrings(kExpandSource, w.stack); },
        [](const World &w) { EXPECT_STREQ(static_cast<const char *>(w.result), kExpandResult); },
        [](const World &w, std::size_t) {
            EXPECT_EQ(w.result, nullptr);
            EXPECT_EQ(Errors(w.stack), 1);
        },
        CleanAll, true});
    rows.push_back(
        Row{"ExpandEnvStringsWithoutValues",
            [] {
                return std::vector<Site>{
                    At("malloc", kEnvFile, kExpandNewLine, std::strlen(kPlainSource) + 1)};
            },
            NewStack, [](World &w) { w.result = GLIB_ExpandEnvStrings(kPlainSource, w.stack); },
            [](const World &w) { EXPECT_STREQ(static_cast<const char *>(w.result), kPlainSource); },
            [](const World &w, std::size_t) { EXPECT_EQ(w.result, nullptr); }, CleanAll, true});
    rows.push_back(Row{
        "ExpandEnvStringsWithoutStack", ExpandPlan, Nothing,
        [](World &w) { w.result = GLIB_ExpandEnvStrings(kExpandSource, nullptr); },
        [](const World &w) { EXPECT_STREQ(static_cast<const char *>(w.result), kExpandResult); },
        [](const World &w, std::size_t) { EXPECT_EQ(w.result, nullptr); }, CleanAll, false});

    // GLIB_MMStrDup_getenv: one copy of a set value; an unset variable allocates nothing.
    rows.push_back(Row{
        "MMStrDupGetenv",
        [] { return std::vector<Site>{At("malloc", kEnvFile, kGetenvLine, sizeof kHomeValue)}; },
        NewStack, [](World &w) { w.result = GLIB_MMStrDup_getenv(kHomeName, w.stack); },
        [](const World &w) { EXPECT_STREQ(static_cast<const char *>(w.result), kHomeValue); },
        [](const World &w, std::size_t) {
            EXPECT_EQ(w.result, nullptr);
            EXPECT_EQ(Errors(w.stack), 1);
        },
        CleanAll, true});
    rows.push_back(Row{"MMStrDupGetenvOfUnsetVariable", NoAllocation, NewStack,
                       [](World &w) { w.result = GLIB_MMStrDup_getenv(kUnsetName, w.stack); },
                       [](const World &w) {
                           EXPECT_EQ(w.result, nullptr);
                           EXPECT_EQ(Errors(w.stack), 0);
                       },
                       NeverFails, CleanAll, false});

    // ---- the conversion library: temporary copies, reported as CONV_ERR_MEMORY ----

    // Hexadecimal text read in place: the text is copied first; a failure writes nothing.
    rows.push_back(Row{"StringToBinaryInPlace", [] { return One("malloc", sizeof kHexText); },
                       [](World &w) {
                           std::memset(w.buffer, 0x5A, sizeof w.buffer);
                           std::memcpy(w.buffer, kHexText, sizeof kHexText);
                           SnapshotBuffer(w);
                           w.count = 8;
                           return true;
                       },
                       [](World &w) {
                           w.status = static_cast<int>(CONV_StringToBinary(
                               w.buffer, reinterpret_cast<const char *>(w.buffer), &w.count));
                       },
                       [](const World &w) {
                           EXPECT_EQ(w.status, static_cast<int>(CONV_OK));
                           EXPECT_EQ(w.count, 4u);
                           const unsigned char expected[] = {0x0A, 0x1B, 0x2C, 0x3D};
                           EXPECT_EQ(std::memcmp(w.buffer, expected, 4), 0);
                           EXPECT_EQ(std::memcmp(w.buffer + 4, w.before + 4, sizeof w.buffer - 4),
                                     0);
                       },
                       [](const World &w, std::size_t) {
                           EXPECT_EQ(w.status, static_cast<int>(CONV_ERR_MEMORY));
                           EXPECT_EQ(w.count, 8u);
                           ExpectBufferUntouched(w);
                       },
                       CleanAll, false});
    // The text begins inside the output, after its start.
    rows.push_back(Row{"StringToBinaryTextInsideOutput",
                       [] { return One("malloc", sizeof "DEADBEEF"); },
                       [](World &w) {
                           std::memset(w.buffer, 0x5A, sizeof w.buffer);
                           std::memcpy(w.buffer + 3, "DEADBEEF", sizeof "DEADBEEF");
                           SnapshotBuffer(w);
                           w.count = 16;
                           return true;
                       },
                       [](World &w) {
                           w.status = static_cast<int>(CONV_StringToBinary(
                               w.buffer, reinterpret_cast<const char *>(w.buffer + 3), &w.count));
                       },
                       [](const World &w) {
                           EXPECT_EQ(w.status, static_cast<int>(CONV_OK));
                           EXPECT_EQ(w.count, 4u);
                           const unsigned char expected[] = {0xDE, 0xAD, 0xBE, 0xEF};
                           EXPECT_EQ(std::memcmp(w.buffer, expected, 4), 0);
                       },
                       [](const World &w, std::size_t) {
                           EXPECT_EQ(w.status, static_cast<int>(CONV_ERR_MEMORY));
                           EXPECT_EQ(w.count, 16u);
                           ExpectBufferUntouched(w);
                       },
                       CleanAll, false});
    // Separate buffers need no copy.
    rows.push_back(Row{"StringToBinarySeparateBuffers", NoAllocation,
                       [](World &w) {
                           w.count = 8;
                           return true;
                       },
                       [](World &w) {
                           w.status =
                               static_cast<int>(CONV_StringToBinary(w.buffer, kHexText, &w.count));
                       },
                       [](const World &w) {
                           EXPECT_EQ(w.status, static_cast<int>(CONV_OK));
                           EXPECT_EQ(w.count, 4u);
                       },
                       NeverFails, CleanAll, false});
    // Bytes written as text where the text begins inside the bytes.
    rows.push_back(Row{"BinaryToStringOutputInsideBytes", [] { return One("malloc", 8); },
                       [](World &w) {
                           std::memset(w.buffer, 0x5A, sizeof w.buffer);
                           for (int i = 0; i < 8; ++i) {
                               w.buffer[i] = static_cast<unsigned char>(i + 1);
                           }
                           SnapshotBuffer(w);
                           return true;
                       },
                       [](World &w) {
                           w.status = static_cast<int>(CONV_BinaryToString(
                               reinterpret_cast<char *>(w.buffer + 2), w.buffer, 17, 8));
                       },
                       [](const World &w) {
                           EXPECT_EQ(w.status, static_cast<int>(CONV_OK));
                           EXPECT_STREQ(reinterpret_cast<const char *>(w.buffer + 2),
                                        "0102030405060708");
                       },
                       [](const World &w, std::size_t) {
                           EXPECT_EQ(w.status, static_cast<int>(CONV_ERR_MEMORY));
                           ExpectBufferUntouched(w);
                       },
                       CleanAll, false});
    rows.push_back(Row{"BinaryToStringInPlace", [] { return One("malloc", 3); },
                       [](World &w) {
                           std::memset(w.buffer, 0x5A, sizeof w.buffer);
                           w.buffer[0] = 0xDE;
                           w.buffer[1] = 0xAD;
                           w.buffer[2] = 0x01;
                           SnapshotBuffer(w);
                           return true;
                       },
                       [](World &w) {
                           w.status = static_cast<int>(CONV_BinaryToString(
                               reinterpret_cast<char *>(w.buffer), w.buffer, 7, 3));
                       },
                       [](const World &w) {
                           EXPECT_EQ(w.status, static_cast<int>(CONV_OK));
                           EXPECT_STREQ(reinterpret_cast<const char *>(w.buffer), "DEAD01");
                       },
                       [](const World &w, std::size_t) {
                           EXPECT_EQ(w.status, static_cast<int>(CONV_ERR_MEMORY));
                           ExpectBufferUntouched(w);
                       },
                       CleanAll, false});

    // Date-time text stored inside the record it is read into: read from a copy; a failed copy
    // reads nothing and leaves the record as it was.
    rows.push_back(
        Row{"StringToDateTimeSourceInsideRecord", [] { return One("malloc", sizeof kDateText); },
            DateInsideRecord,
            [](World &w) { ParseDate(w, reinterpret_cast<const char *>(&w.dateTime) + 2); },
            ExpectDateRead,
            [](const World &w, std::size_t) {
                EXPECT_EQ(w.status, static_cast<int>(CONV_ERR_MEMORY));
                EXPECT_EQ(w.fieldCount, 0);
                EXPECT_EQ(w.failedField, 65535);
                EXPECT_EQ(std::memcmp(&w.dateTime, w.before, sizeof w.dateTime), 0);
            },
            CleanAll, false});
    rows.push_back(Row{"StringToDateTimeSourceOutsideRecord", NoAllocation, Nothing,
                       [](World &w) { ParseDate(w, kDateText); }, ExpectDateRead, NeverFails,
                       CleanAll, false});

    return rows;
}

}  // namespace

const std::vector<Row> &Rows() {
    static const std::vector<Row> rows = MakeRows();
    return rows;
}

void PrintTo(const Row &row, std::ostream *out) {
    *out << row.name;
}

void PrepareEnvironment() {
    setenv(kHomeName, kHomeValue, 1);
    setenv(kShortName, kShortValue, 1);
    unsetenv(kUnsetName);
}

}  // namespace torture
