/* SPDX-License-Identifier: MIT */
/*
 * errstack.c - error stacks and the reserved memory-error record.
 *
 * Library functions that can fail take an optional error stack and push one record onto it when
 * they fail. Running out of memory is the one failure that must be reportable without memory, so
 * every stack owns a reserved record that the checked allocator (MMFLAT_*) fills in place.
 *
 * This program
 *   1. creates a stack,
 *   2. makes the system allocator really refuse a 1 GiB block asked for through MMFLAT_New,
 *   3. pushes an ordinary error of its own with ERRLIB_ErrorStack_AddError,
 *   4. counts the errors, takes them off the stack oldest first and prints them,
 *   5. releases the records and destroys the stack.
 *
 * It prints plain text and returns 0; any unexpected status makes it return 1.
 */
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/resource.h>

#include <nlssupport/errlib.h>
#include <nlssupport/memmgr.h>

/*
 * How the allocation failure is made real.
 *
 * Normal builds: the process's address space is limited with setrlimit(RLIMIT_AS) to 256 MiB
 * before 1 GiB is requested, so malloc itself returns null on every platform (64-bit and 32-bit
 * alike); the old limit is put back afterwards.
 *
 * AddressSanitizer builds: the sanitizer reserves terabytes of address space for its shadow memory
 * at start-up, so an address-space limit would break the sanitizer itself. Its allocator is told
 * instead, through the hook below that the sanitizer runtime calls before main, to refuse blocks
 * above 256 MiB (max_allocation_size_mb) and to return null for them rather than to abort the
 * process (allocator_may_return_null). Options given in the ASAN_OPTIONS environment variable are
 * applied after these defaults and override only the options they name, so a test run that sets,
 * say, detect_leaks=1 keeps both settings made here (one that sets allocator_may_return_null=0
 * would turn the refusal into an abort). The sanitizer also writes a warning about the refused
 * block on standard error; standard output is the same as in the other builds.
 */
#if defined(__SANITIZE_ADDRESS__)
#define EXAMPLE_UNDER_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define EXAMPLE_UNDER_ASAN 1
#endif
#endif

#ifdef EXAMPLE_UNDER_ASAN
const char *__asan_default_options(void);
const char *__asan_default_options(void) {
    return "allocator_may_return_null=1:max_allocation_size_mb=256";
}
#endif

/* 1 GiB: more than the 256 MiB the process is allowed above. */
#define HUGE_REQUEST ((uint32_t)1024u * 1024u * 1024u)

/*
 * The library records the source path and line that the caller passes; __FILE__ and __LINE__ are
 * the usual arguments. This example passes a fixed path and fixed line numbers instead, so that
 * its output is the same wherever it is built and whenever this file is edited.
 */
#define EXAMPLE_FILE "examples/errstack.c"

/* Prints a text field in quotes, or (null). The reserved record's texts are never null: they
 * point at the stack's fixed buffers, which hold "" where no text was given. */
static void print_text(const char *label, const char *text) {
    if (text != NULL)
        printf("  %-10s \"%s\"\n", label, text);
    else
        printf("  %-10s (null)\n", label);
}

/* Prints the fields of one error record, the time stamp excepted (it changes from run to run). */
static void print_record(const char *title, const ERRLIB_Error *record) {
    printf("%s\n", title);
    printf("  component: %" PRId32 "\n", record->component);
    printf("  code:      %" PRId32 "\n", record->code);
    printf("  class:     %" PRId32 "\n", record->errorClass);
    print_text("origin:", record->origin);
    print_text("function:", record->function);
    print_text("file:", record->file);
    printf("  line:      %" PRId32 "\n", record->line);
    print_text("message:", record->message);
}

/*
 * Asks the checked allocator for HUGE_REQUEST bytes while the system allocator cannot give them.
 * Returns the allocator's result (null when the request was refused, as expected).
 */
static void *allocate_too_much(ERRLIB_ErrorStack *stack, int32_t line) {
#ifdef EXAMPLE_UNDER_ASAN
    return MMFLAT_New(HUGE_REQUEST, stack, EXAMPLE_FILE, line);
#else
    struct rlimit old;
    struct rlimit limited;
    void *block;

    if (getrlimit(RLIMIT_AS, &old) != 0)
        return NULL;
    limited = old;
    limited.rlim_cur = (rlim_t)256 * 1024 * 1024;
    if (old.rlim_max != RLIM_INFINITY && old.rlim_max < limited.rlim_cur)
        limited.rlim_cur = old.rlim_max;
    if (setrlimit(RLIMIT_AS, &limited) != 0)
        return NULL;
    block = MMFLAT_New(HUGE_REQUEST, stack, EXAMPLE_FILE, line);
    /* Back to the old limit: the rest of the program may allocate freely again. */
    (void)setrlimit(RLIMIT_AS, &old);
    return block;
#endif
}

int main(void) {
    ERRLIB_ErrorStack *stack = NULL;
    ERRLIB_Error *record = NULL;
    int32_t count = -1;
    void *block;

    /* 1. An empty stack: 20 slots for ordinary errors plus the reserved memory-error record. */
    if (ERRLIB_ErrorStack_Create(&stack) != 0) {
        printf("cannot create the error stack\n");
        return 1;
    }
    ERRLIB_ErrorStack_GetNumberofErrors(stack, &count);
    printf("errors on a new stack: %" PRId32 "\n", count);

    /*
     * 2. A request the system cannot satisfy. MMFLAT_New returns null and fills the stack's
     * reserved record: component 50, code 1, class 2 (ERRLIB_CLASS_MEMORY), function "malloc",
     * our file and line, and the requested size in decimal as the message. Nothing is allocated
     * to report this.
     */
    block = allocate_too_much(stack, 1001);
    if (block != NULL) {
        printf("unexpected: the system gave a 1 GiB block\n");
        MMFLAT_Free(block);
        ERRLIB_ErrorStack_Destroy(stack);
        return 1;
    }
    printf("MMFLAT_New(1 GiB) returned null\n");

    /* The same request without a stack: still null, but nothing is recorded anywhere. */
    block = allocate_too_much(NULL, 1002);
    printf("without a stack: %s\n", block == NULL ? "null, nothing recorded" : "a block");
    MMFLAT_Free(block);

    /*
     * 3. An ordinary error of the caller's own (any class but 2 goes into a heap record that
     * keeps copies of the texts). Here: component 7, code 404, class 30.
     */
    if (ERRLIB_ErrorStack_AddError(stack, 7, 404, 30, "load_settings", "fopen", EXAMPLE_FILE, 2002,
                                   "settings file not found") != 0) {
        printf("unexpected: AddError failed\n");
        ERRLIB_ErrorStack_Destroy(stack);
        return 1;
    }

    /* 4. One memory error plus one heap record. */
    ERRLIB_ErrorStack_GetNumberofErrors(stack, &count);
    printf("errors on the stack: %" PRId32 "\n", count);

    /*
     * A pending memory error always comes first. GetFirstError hands out a pointer to the stack's
     * own reserved record; its texts stay readable until the next memory error.
     */
    if (ERRLIB_ErrorStack_GetFirstError(stack, &record) != 0 || record == NULL) {
        printf("unexpected: no first error\n");
        ERRLIB_ErrorStack_Destroy(stack);
        return 1;
    }
    print_record("first error (the reserved memory-error record):", record);
    if (record->errorClass != ERRLIB_CLASS_MEMORY ||
        record->component != ERRLIB_COMPONENT_NLSSUPPORT) {
        printf("unexpected: not a memory error of this library\n");
        ERRLIB_ErrorStack_Destroy(stack);
        return 1;
    }
    /* Releasing a class-2 record only clears it in place: the stack still owns its buffers. */
    ERRLIB_Error_Release(record, stack);

    ERRLIB_ErrorStack_GetNumberofErrors(stack, &count);
    printf("errors left: %" PRId32 "\n", count);

    /* The next oldest error is the heap record; it now belongs to us. */
    if (ERRLIB_ErrorStack_GetFirstError(stack, &record) != 0 || record == NULL) {
        printf("unexpected: no second error\n");
        ERRLIB_ErrorStack_Destroy(stack);
        return 1;
    }
    print_record("second error (an ordinary record):", record);
    /* 5. Frees the record with its texts. */
    ERRLIB_Error_Release(record, stack);

    ERRLIB_ErrorStack_GetNumberofErrors(stack, &count);
    printf("errors left: %" PRId32 "\n", count);

    /* An empty stack has nothing more to give: status 1 and a null record. */
    printf("GetFirstError on the empty stack: %d\n",
           ERRLIB_ErrorStack_GetFirstError(stack, &record));

    if (ERRLIB_ErrorStack_Destroy(stack) != 0) {
        printf("unexpected: Destroy failed\n");
        return 1;
    }
    printf("stack destroyed\n");
    return 0;
}
