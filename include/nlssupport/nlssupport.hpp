/* SPDX-License-Identifier: MIT */
/**
 * @file nlssupport.hpp
 * @brief The C++ layer: owning handles, standard error codes and self-sizing conversions over
 *        the C functions of the library.
 *
 * Header-only, C++20, namespace `nls`. It changes no behaviour of the C functions: every wrapper
 * calls the C function it names with the same inputs and gives back the same bytes and the same
 * status. What it adds is ownership, sizing, and a check of the inputs a C function would read
 * beyond (the arguments of nls::format, the bytes of nls::decimal_to_string), which it refuses
 * before the call:
 * - nls::ErrorStack owns an error stack and hands out the errors taken off it as nls::Error
 *   values; nls::unique_block owns a block of the checked allocator, and nls::make_block,
 *   nls::strdup and their siblings report a failed allocation with the caller's own source
 *   position (std::source_location) instead of macros.
 * - Conversion statuses are std::error_code values of their own category (nls::conv_category),
 *   through the enumeration nls::conv_status.
 * - The wrappers of the conversion library return nls::result: the value together with the
 *   status, because the two warnings (truncation, round to zero) come with a usable value.
 *   A status is never thrown.
 * - Outputs are sized by the layer (measured first where the library can measure) and owned by
 *   the returned std::string or std::vector.
 *
 * Texts are taken as std::string_view. The C functions read NUL-terminated texts, so a view is
 * copied into a terminated buffer first (on the stack for texts under 256 characters, else on
 * the heap); a view that holds a NUL character is read up to it, as the C function would read it.
 *
 * The only exception the layer throws is std::bad_alloc, from the strings, vectors and
 * terminated copies it allocates itself (and from the ErrorStack constructor that has no
 * std::nothrow_t). Functions that cannot throw are marked `noexcept`.
 */
#ifndef NLSSUPPORT_NLSSUPPORT_HPP
#define NLSSUPPORT_NLSSUPPORT_HPP

#include <nlssupport/convlib.h>
#include <nlssupport/errlib.h>
#include <nlssupport/glib.h>
#include <nlssupport/ianacs.h>
#include <nlssupport/koranls.h>
#include <nlssupport/memmgr.h>

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <source_location>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

/** The C++ layer of the library. */
namespace nls {

/// @cond INTERNAL
namespace detail {

// A NUL-terminated copy of a view, converted unit by unit to `Unit`. Texts shorter than `Inline`
// units stay in the object itself; longer ones go to the heap (std::bad_alloc when that fails).
// The C functions read terminated texts and a view need not be terminated, so every view goes
// through one of these before it is handed over.
template <class Unit, std::size_t Inline = 256>
class terminated {
  public:
    template <class Char>
    explicit terminated(std::basic_string_view<Char> text) {
        Unit *target = inline_;
        if (text.size() >= Inline) {
            heap_.reset(new Unit[text.size() + 1]);
            target = heap_.get();
        }
        for (std::size_t i = 0; i < text.size(); ++i)
            target[i] = static_cast<Unit>(text[i]);
        target[text.size()] = Unit{};
        data_ = target;
    }
    terminated(const terminated &) = delete;
    terminated &operator=(const terminated &) = delete;

    const Unit *c_str() const noexcept {
        return data_;
    }

  private:
    Unit inline_[Inline];
    std::unique_ptr<Unit[]> heap_;
    const Unit *data_ = nullptr;
};

// The size argument of the C functions is 32 bits wide; larger sizes are refused before a call.
inline constexpr std::size_t max_c_size = std::numeric_limits<std::uint32_t>::max();

// Line of a source position as the allocator records it.
inline std::int32_t line_of(const std::source_location &where) noexcept {
    const auto line = where.line();
    return line > static_cast<std::uint_least32_t>(std::numeric_limits<std::int32_t>::max())
               ? std::numeric_limits<std::int32_t>::max()
               : static_cast<std::int32_t>(line);
}

// Bytes of `count` elements of `size` bytes, or nothing when they do not fit the allocator's
// 32-bit size.
inline std::optional<std::uint32_t> block_bytes(std::size_t count, std::size_t size) noexcept {
    if (count > max_c_size / size)
        return std::nullopt;
    return static_cast<std::uint32_t>(count * size);
}

}  // namespace detail
/// @endcond

class ErrorStack;

/**
 * One error taken off an error stack, owned.
 *
 * An ordinary error is the heap record the stack handed over; it is released with
 * ERRLIB_Error_Release when the Error is destroyed. A memory error (class
 * #ERRLIB_CLASS_MEMORY) lives in the stack's reserved record, which stays the stack's: the Error
 * keeps a copy of it in buffers of its own, so that taking a memory error off a stack never
 * needs memory.
 *
 * Move-only. A moved-from Error holds no record: get() is null, the numbers read 0 and the texts
 * are empty.
 */
class Error {
  public:
    /**
     * Takes over the record of @p other.
     * @param other The error taken over; left without a record.
     */
    Error(Error &&other) noexcept {
        take(other);
    }
    /**
     * Releases the record held, then takes over the record of @p other.
     * @param other The error taken over; left without a record.
     * @return This error.
     */
    Error &operator=(Error &&other) noexcept {
        if (this != &other) {
            reset();
            take(other);
        }
        return *this;
    }
    Error(const Error &) = delete;
    Error &operator=(const Error &) = delete;
    /** Releases the record (ERRLIB_Error_Release). */
    ~Error() {
        reset();
    }

    /**
     * The record, for the C functions that read one (ERRLIB_Error_GetInt32, ...).
     * @return The record, still owned by this Error; null when moved from.
     */
    const ERRLIB_Error *get() const noexcept {
        return heap_ != nullptr ? heap_ : (copied_ ? &copy_ : nullptr);
    }
    /** @return The reporting component (50 for errors raised inside the library). */
    std::int32_t component() const noexcept {
        return get() != nullptr ? get()->component : 0;
    }
    /** @return The error number within its class. */
    std::int32_t code() const noexcept {
        return get() != nullptr ? get()->code : 0;
    }
    /** @return The error class; #ERRLIB_CLASS_MEMORY for a memory error. */
    std::int32_t error_class() const noexcept {
        return get() != nullptr ? get()->errorClass : 0;
    }
    /** @return The source line of the report. */
    std::int32_t line() const noexcept {
        return get() != nullptr ? get()->line : 0;
    }
    /** @return When the record was created or last filled (seconds, as std::time gives). */
    std::time_t timestamp() const noexcept {
        return get() != nullptr ? get()->timestamp : 0;
    }
    /** @return The library function that rejected its argument; empty when there is none. */
    std::string_view origin() const noexcept {
        return text(get() != nullptr ? get()->origin : nullptr);
    }
    /** @return The function or system call that failed; empty when there is none. */
    std::string_view function() const noexcept {
        return text(get() != nullptr ? get()->function : nullptr);
    }
    /** @return The source path of the code that reported the error; empty when there is none. */
    std::string_view file() const noexcept {
        return text(get() != nullptr ? get()->file : nullptr);
    }
    /** @return The free text; empty when there is none. */
    std::string_view message() const noexcept {
        return text(get() != nullptr ? get()->message : nullptr);
    }
    /** @return True for a memory error (class #ERRLIB_CLASS_MEMORY). */
    bool is_memory_error() const noexcept {
        return get() != nullptr && get()->errorClass == ERRLIB_CLASS_MEMORY;
    }

  private:
    friend class ErrorStack;

    // Sizes of the reserved record's fixed buffers (texts of 50, 50, 50 and 100 characters).
    static constexpr std::size_t short_text = 51;
    static constexpr std::size_t long_text = 101;

    // Owns a heap record handed over by a stack.
    explicit Error(ERRLIB_Error *owned) noexcept : heap_(owned) {}

    // Copies a stack's reserved record into this object's own buffers.
    explicit Error(const ERRLIB_Error &reserved, std::in_place_t) noexcept
        : copied_(true), copy_(reserved) {
        copy_text(origin_, reserved.origin, short_text);
        copy_text(function_, reserved.function, short_text);
        copy_text(file_, reserved.file, short_text);
        copy_text(message_, reserved.message, long_text);
        point_at_buffers();
    }

    static std::string_view text(const char *value) noexcept {
        return value != nullptr ? std::string_view(value) : std::string_view();
    }

    static void copy_text(char *target, const char *source, std::size_t size) noexcept {
        std::size_t length = 0;
        while (source != nullptr && length < size - 1 && source[length] != '\0')
            ++length;
        if (length > 0)
            std::memcpy(target, source, length);
        target[length] = '\0';
    }

    void point_at_buffers() noexcept {
        copy_.origin = origin_;
        copy_.function = function_;
        copy_.file = file_;
        copy_.message = message_;
    }

    void take(Error &other) noexcept {
        heap_ = std::exchange(other.heap_, nullptr);
        copied_ = std::exchange(other.copied_, false);
        if (copied_) {
            copy_ = other.copy_;
            std::memcpy(origin_, other.origin_, short_text);
            std::memcpy(function_, other.function_, short_text);
            std::memcpy(file_, other.file_, short_text);
            std::memcpy(message_, other.message_, long_text);
            point_at_buffers();
        }
    }

    void reset() noexcept {
        if (heap_ != nullptr)
            ERRLIB_Error_Release(heap_, nullptr);
        heap_ = nullptr;
        copied_ = false;
    }

    ERRLIB_Error *heap_ = nullptr;
    bool copied_ = false;
    ERRLIB_Error copy_{};
    char origin_[short_text] = {};
    char function_[short_text] = {};
    char file_[short_text] = {};
    char message_[long_text] = {};
};

/**
 * An error stack, owned: created with ERRLIB_ErrorStack_Create, destroyed with
 * ERRLIB_ErrorStack_Destroy.
 *
 * get() gives the handle that the C functions take. The errors on the stack are read by taking
 * them off, oldest first (take_first(), or iterating) or newest first (take_last()): the stack
 * offers no other way to read a record than the newest one. Iterating over a stack therefore
 * empties it; each element is an nls::Error that the loop may keep (move it out) or let go.
 *
 * @code
 * nls::ErrorStack stack;
 * auto block = nls::make_block<char>(n, stack);
 * for (const nls::Error &error : stack)   // oldest first; the stack is empty afterwards
 *     report(error.function(), error.message());
 * @endcode
 *
 * Move-only. A moved-from stack holds no handle: get() is null, size() is 0.
 */
class ErrorStack {
  public:
    /**
     * Input iterator over the errors of a stack that takes each one off as it advances: `*it`
     * is the error taken last, owned by the iterator until it is moved out or the iterator
     * advances. It compares equal to std::default_sentinel once the stack is empty.
     */
    class iterator {
      public:
        /** The errors taken off. */
        using value_type = Error;
        /** Required of an iterator; iterators of a stack are never subtracted. */
        using difference_type = std::ptrdiff_t;
        /** Single pass: every step takes an error off the stack. */
        using iterator_concept = std::input_iterator_tag;

        /** An iterator at the end. */
        iterator() noexcept = default;
        /** @return The error taken off last; move it out to keep it after the iterator
            advances. */
        Error &operator*() const noexcept {
            return *current_;
        }
        /** @return The error taken off last, for member access. */
        Error *operator->() const noexcept {
            return &*current_;
        }
        /**
         * Releases the current error (unless moved out) and takes the next oldest off.
         * @return This iterator.
         */
        iterator &operator++() noexcept {
            current_.reset();
            if (stack_ != nullptr)
                current_ = stack_->take_first();
            return *this;
        }
        /** As the prefix form. */
        void operator++(int) noexcept {
            ++*this;
        }
        /**
         * Tells whether the errors are all taken.
         * @param it The iterator.
         * @return True once no error was left to take.
         */
        friend bool operator==(const iterator &it, std::default_sentinel_t) noexcept {
            return !it.current_.has_value();
        }

      private:
        friend class ErrorStack;
        explicit iterator(ErrorStack &stack) noexcept
            : stack_(&stack), current_(stack.take_first()) {}

        ErrorStack *stack_ = nullptr;
        mutable std::optional<Error> current_;
    };

    /**
     * Creates an empty stack.
     * @throws std::bad_alloc The stack could not be allocated.
     */
    ErrorStack() {
        if (ERRLIB_ErrorStack_Create(&stack_) != 0)
            throw std::bad_alloc();
    }
    /** Creates an empty stack; when it cannot be allocated the object holds none (get() is
        null, which the C functions take as "record nothing"). */
    explicit ErrorStack(std::nothrow_t) noexcept {
        if (ERRLIB_ErrorStack_Create(&stack_) != 0)
            stack_ = nullptr;
    }
    /**
     * Takes ownership of a stack.
     * @param adopted A stack made by ERRLIB_ErrorStack_Create, or null.
     */
    explicit ErrorStack(ERRLIB_ErrorStack *adopted) noexcept : stack_(adopted) {}
    /**
     * Takes over the stack of @p other.
     * @param other The stack taken over; left without one.
     */
    ErrorStack(ErrorStack &&other) noexcept : stack_(std::exchange(other.stack_, nullptr)) {}
    /**
     * Destroys the stack held, then takes over the stack of @p other.
     * @param other The stack taken over; left without one.
     * @return This stack.
     */
    ErrorStack &operator=(ErrorStack &&other) noexcept {
        if (this != &other) {
            destroy();
            stack_ = std::exchange(other.stack_, nullptr);
        }
        return *this;
    }
    ErrorStack(const ErrorStack &) = delete;
    ErrorStack &operator=(const ErrorStack &) = delete;
    /** Destroys the stack with the errors still on it (ERRLIB_ErrorStack_Destroy). */
    ~ErrorStack() {
        destroy();
    }

    /** @return The handle for the C functions, still owned by this object; null when none is
        held. */
    ERRLIB_ErrorStack *get() const noexcept {
        return stack_;
    }
    /** @return True when a stack is held. */
    explicit operator bool() const noexcept {
        return stack_ != nullptr;
    }
    /**
     * Gives up ownership; the object holds no stack afterwards.
     * @return The handle, which the caller destroys with ERRLIB_ErrorStack_Destroy.
     */
    [[nodiscard]] ERRLIB_ErrorStack *release() noexcept {
        return std::exchange(stack_, nullptr);
    }

    /** @return The number of errors on the stack: the heap records, plus 1 while a memory
        error is pending; 0 without a stack. */
    std::size_t size() const noexcept {
        std::int32_t count = 0;
        if (stack_ == nullptr || ERRLIB_ErrorStack_GetNumberofErrors(stack_, &count) != 0)
            return 0;
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    /** @return True when no error is on the stack (or no stack is held). */
    bool empty() const noexcept {
        return size() == 0;
    }
    /** Removes and releases every error (ERRLIB_ErrorStack_Clear). */
    void clear() noexcept {
        if (stack_ != nullptr)
            ERRLIB_ErrorStack_Clear(stack_);
    }

    /**
     * Takes the oldest error off the stack (ERRLIB_ErrorStack_GetFirstError); a pending memory
     * error comes first.
     * @return The error; nothing when the stack is empty.
     */
    std::optional<Error> take_first() noexcept {
        return take(ERRLIB_ErrorStack_GetFirstError);
    }
    /**
     * Takes the newest error off the stack (ERRLIB_ErrorStack_GetLastError); a pending memory
     * error comes first.
     * @return The error; nothing when the stack is empty.
     */
    std::optional<Error> take_last() noexcept {
        return take(ERRLIB_ErrorStack_GetLastError);
    }

    /**
     * Starts taking the errors off, oldest first (see ErrorStack::iterator).
     * @return An iterator holding the oldest error, already taken off.
     */
    iterator begin() noexcept {
        return iterator(*this);
    }
    /** @return The end of the errors, reached when the stack is empty. */
    std::default_sentinel_t end() const noexcept {
        return std::default_sentinel;
    }

  private:
    using getter = int (*)(ERRLIB_ErrorStack *, ERRLIB_Error **);

    std::optional<Error> take(getter get_error) noexcept {
        ERRLIB_Error *record = nullptr;
        if (stack_ == nullptr || get_error(stack_, &record) != 0 || record == nullptr)
            return std::nullopt;
        // Heap records never carry the memory class: a class-2 record handed out is the stack's
        // reserved record, which stays the stack's. It is copied, then cleared in place as
        // ERRLIB_Error_Release does for it.
        if (record->errorClass == ERRLIB_CLASS_MEMORY) {
            Error copy(*record, std::in_place);
            ERRLIB_Error_Release(record, stack_);
            return copy;
        }
        return Error(record);
    }

    void destroy() noexcept {
        if (stack_ != nullptr)
            ERRLIB_ErrorStack_Destroy(stack_);
        stack_ = nullptr;
    }

    ERRLIB_ErrorStack *stack_ = nullptr;
};

/**
 * The optional error stack argument of the layer's functions: an nls::ErrorStack, a C handle,
 * or nothing (null: failures are not recorded). Made implicitly from any of them; it does not
 * own the stack.
 */
class stack_ref {
  public:
    /** No stack: nothing is recorded. */
    constexpr stack_ref() noexcept = default;
    /** No stack: nothing is recorded. */
    constexpr stack_ref(std::nullptr_t) noexcept {}
    /**
     * A C handle.
     * @param stack The handle, or null.
     */
    constexpr stack_ref(ERRLIB_ErrorStack *stack) noexcept : stack_(stack) {}
    /**
     * The stack an nls::ErrorStack holds.
     * @param stack The owner; none when it holds none.
     */
    stack_ref(ErrorStack &stack) noexcept : stack_(stack.get()) {}
    /** @return The C handle, or null. */
    constexpr ERRLIB_ErrorStack *get() const noexcept {
        return stack_;
    }

  private:
    ERRLIB_ErrorStack *stack_ = nullptr;
};

/** @name Checked allocation */
/** @{ */

/** Deleter of nls::unique_block: releases a block with MMFLAT_Free. */
struct block_deleter {
    /**
     * Releases a block with MMFLAT_Free.
     * @param block The block; null is ignored.
     */
    void operator()(void *block) const noexcept {
        MMFLAT_Free(block);
    }
};

/**
 * A block of the checked allocator, owned: a std::unique_ptr whose deleter calls MMFLAT_Free.
 * `unique_block<T[]>` holds an array (the form the helpers below return); it also takes over any
 * result of the library documented as released with MMFLAT_Free, e.g.
 * `nls::unique_block<char[]> text{GLIB_ExpandEnvStrings(source, stack.get())};`.
 */
template <class T>
using unique_block = std::unique_ptr<T, block_deleter>;

/**
 * Element types a block may hold: objects that the allocator's raw, suitably aligned memory can
 * hold without a constructor call and that need no destructor call (MMFLAT_Free runs none).
 */
template <class T>
concept block_element = std::is_object_v<T> && !std::is_array_v<T> && !std::is_const_v<T> &&
                        std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T> &&
                        alignof(T) <= alignof(std::max_align_t);

/// @cond INTERNAL
namespace detail {

// A block of `count` elements of T from `allocate` (MMFLAT_New or MMFLAT_NewClear), a failure
// reported on the stack with the caller's file and line; empty without a call when the byte
// size does not fit the allocator's 32 bits.
template <class T>
unique_block<T[]> allocate_block(void *(*allocate)(std::uint32_t, ERRLIB_ErrorStack *,
                                                   const char *, std::int32_t),
                                 std::size_t count, stack_ref stack,
                                 const std::source_location &where) noexcept {
    const auto bytes = block_bytes(count, sizeof(T));
    if (!bytes)
        return nullptr;
    return unique_block<T[]>(
        static_cast<T *>(allocate(*bytes, stack.get(), where.file_name(), line_of(where))));
}

}  // namespace detail
/// @endcond

/**
 * Allocates a zero-filled block of @p count elements (MMFLAT_NewClear).
 *
 * A failure is reported on @p stack as MMFLAT_NewClear reports it: function "calloc", the
 * caller's file (@p where's file name, its last 50 characters) and line. A byte size that does
 * not fit the allocator's 32 bits gives an empty block without a call (nothing recorded).
 *
 * @param count Number of elements.
 * @param stack Receives the failure, or nothing.
 * @param where The caller's source position; leave the default.
 * @return The block, or empty on failure.
 */
template <block_element T>
[[nodiscard]] unique_block<T[]> make_block(
    std::size_t count, stack_ref stack = {},
    std::source_location where = std::source_location::current()) noexcept {
    return detail::allocate_block<T>(MMFLAT_NewClear, count, stack, where);
}

/**
 * Allocates a block of @p count elements left uninitialised (MMFLAT_New), for a caller that
 * writes every element before reading it. Failures as for nls::make_block, reported as
 * "malloc".
 *
 * @param count Number of elements.
 * @param stack Receives the failure, or nothing.
 * @param where The caller's source position; leave the default.
 * @return The block, or empty on failure.
 */
template <block_element T>
[[nodiscard]] unique_block<T[]> make_block_for_overwrite(
    std::size_t count, stack_ref stack = {},
    std::source_location where = std::source_location::current()) noexcept {
    return detail::allocate_block<T>(MMFLAT_New, count, stack, where);
}

/**
 * Resizes a block to @p count elements (MMFLAT_Resize), keeping its contents up to the smaller
 * size; an empty @p block gets a new one.
 *
 * On failure the block is untouched and still owned by @p block, and the failure is reported on
 * @p stack as "realloc" with the caller's file and line. A byte size that does not fit 32 bits
 * fails without a call (nothing recorded).
 *
 * @param block The block; replaced by the resized one on success.
 * @param count Number of elements wanted.
 * @param stack Receives the failure, or nothing.
 * @param where The caller's source position; leave the default.
 * @return True when resized.
 */
template <block_element T>
bool resize_block(unique_block<T[]> &block, std::size_t count, stack_ref stack = {},
                  std::source_location where = std::source_location::current()) noexcept {
    const auto bytes = detail::block_bytes(count, sizeof(T));
    if (!bytes)
        return false;
    void *resized =
        MMFLAT_Resize(block.get(), *bytes, stack.get(), where.file_name(), detail::line_of(where));
    if (resized == nullptr)
        return false;
    (void)block.release();  // realloc has taken the old block over
    block.reset(static_cast<T *>(resized));
    return true;
}

/// @cond INTERNAL
namespace detail {

// A view copied into a new block of its size + 1 units through MMFLAT_New, every unit as it
// stands (NUL units included) and a 0 unit last; empty when the size does not fit the
// allocator's 32-bit byte count or the allocation fails (reported on the stack as "malloc"
// with the caller's file and line).
template <class Unit, class View>
unique_block<Unit[]> copy_view(View text, stack_ref stack,
                               const std::source_location &where) noexcept {
    if (text.size() >= max_c_size)
        return nullptr;
    unique_block<Unit[]> copy = allocate_block<Unit>(MMFLAT_New, text.size() + 1, stack, where);
    if (copy) {
        for (std::size_t i = 0; i < text.size(); ++i)
            copy[i] = static_cast<Unit>(text[i]);
        copy[text.size()] = 0;
    }
    return copy;
}

}  // namespace detail
/// @endcond

/**
 * Copies a NUL-terminated text into a new block (MMFLAT_StrDup).
 *
 * @param text  The text; null is reported on @p stack as MMFLAT_StrDup reports it (code 2,
 *              class 2, origin "MMFLAT_StrDup") and gives an empty block.
 * @param stack Receives the failure, or nothing.
 * @param where The caller's source position; leave the default.
 * @return The copy with its terminator, or empty on failure.
 */
[[nodiscard]] inline unique_block<char[]> strdup(
    const char *text, stack_ref stack = {},
    std::source_location where = std::source_location::current()) noexcept {
    return unique_block<char[]>(
        MMFLAT_StrDup(text, stack.get(), where.file_name(), detail::line_of(where)));
}

/**
 * Copies a view into a new block of its size + 1 bytes with a terminator (through MMFLAT_New;
 * the whole view is copied, NUL characters included). A failure is reported as "malloc" with the
 * caller's file and line, as MMFLAT_StrDup reports it.
 *
 * @param text  The text.
 * @param stack Receives the failure, or nothing.
 * @param where The caller's source position; leave the default.
 * @return The copy with its terminator, or empty on failure.
 */
[[nodiscard]] inline unique_block<char[]> strdup(
    std::string_view text, stack_ref stack = {},
    std::source_location where = std::source_location::current()) noexcept {
    return detail::copy_view<char>(text, stack, where);
}

/**
 * Copies a wide string ended by a 0 unit into a new block (MMFLAT_WcsDup).
 *
 * @param text  The wide string; null is reported on @p stack as MMFLAT_WcsDup reports it and
 *              gives an empty block.
 * @param stack Receives the failure, or nothing.
 * @param where The caller's source position; leave the default.
 * @return The copy with its 0 unit, or empty on failure.
 */
[[nodiscard]] inline unique_block<GLIB_WChar[]> wcsdup(
    const GLIB_WChar *text, stack_ref stack = {},
    std::source_location where = std::source_location::current()) noexcept {
    return unique_block<GLIB_WChar[]>(
        MMFLAT_WcsDup(text, stack.get(), where.file_name(), detail::line_of(where)));
}

/**
 * Copies a view of 16-bit units into a new block of its size + 1 units ending with a 0 unit
 * (through MMFLAT_New, two bytes a unit; the whole view is copied). A failure is reported as
 * "malloc" with the caller's file and line.
 *
 * @param text  The units.
 * @param stack Receives the failure, or nothing.
 * @param where The caller's source position; leave the default.
 * @return The copy with its 0 unit, or empty on failure.
 */
[[nodiscard]] inline unique_block<GLIB_WChar[]> wcsdup(
    std::u16string_view text, stack_ref stack = {},
    std::source_location where = std::source_location::current()) noexcept {
    return detail::copy_view<GLIB_WChar>(text, stack, where);
}

/** @} */

/** @name Conversion statuses as error codes */
/** @{ */

/**
 * The statuses of the conversion library, one enumerator per CONV_ code, with the same values.
 * Converts implicitly to std::error_code (category nls::conv_category()); ok (0) is the empty
 * error code. The two warnings come with a usable result: see nls::is_warning.
 */
enum class conv_status : std::uint32_t {
    ok = CONV_OK,                                  ///< CONV_OK: success.
    byte_stream = CONV_ERR_BYTE_STREAM,            ///< CONV_ERR_BYTE_STREAM
    day = CONV_ERR_DAY,                            ///< CONV_ERR_DAY (reports the month text)
    month = CONV_ERR_MONTH,                        ///< CONV_ERR_MONTH
    year = CONV_ERR_YEAR,                          ///< CONV_ERR_YEAR
    day_of_week = CONV_ERR_DAY_OF_WEEK,            ///< CONV_ERR_DAY_OF_WEEK
    second = CONV_ERR_SECOND,                      ///< CONV_ERR_SECOND
    minute = CONV_ERR_MINUTE,                      ///< CONV_ERR_MINUTE
    hour24 = CONV_ERR_HOUR24,                      ///< CONV_ERR_HOUR24
    hour12 = CONV_ERR_HOUR12,                      ///< CONV_ERR_HOUR12
    fraction = CONV_ERR_FRACTION,                  ///< CONV_ERR_FRACTION
    fraction_base = CONV_ERR_FRACTION_BASE,        ///< CONV_ERR_FRACTION_BASE
    rescan = CONV_ERR_RESCAN,                      ///< CONV_ERR_RESCAN
    target_too_small = CONV_ERR_TARGET_TOO_SMALL,  ///< CONV_ERR_TARGET_TOO_SMALL
    format_left = CONV_ERR_FORMAT_LEFT,            ///< CONV_ERR_FORMAT_LEFT
    source_left = CONV_ERR_SOURCE_LEFT,            ///< CONV_ERR_SOURCE_LEFT
    warn_truncation = CONV_WARN_TRUNCATION,        ///< CONV_WARN_TRUNCATION: a warning.
    scan_mismatch = CONV_ERR_SCAN_MISMATCH,        ///< CONV_ERR_SCAN_MISMATCH
    memory = CONV_ERR_MEMORY,                      ///< CONV_ERR_MEMORY
    conversion = CONV_ERR_CONVERSION,              ///< CONV_ERR_CONVERSION
    overflow = CONV_ERR_OVERFLOW,                  ///< CONV_ERR_OVERFLOW
    not_a_number = CONV_ERR_NOT_A_NUMBER,          ///< CONV_ERR_NOT_A_NUMBER
    warn_round_to_zero = CONV_WARN_ROUND_TO_ZERO,  ///< CONV_WARN_ROUND_TO_ZERO: a warning.
    era_range = CONV_ERR_ERA_RANGE,                ///< CONV_ERR_ERA_RANGE
    no_era_names = CONV_ERR_NO_ERA_NAMES,          ///< CONV_ERR_NO_ERA_NAMES
    no_syear = CONV_ERR_NO_SYEAR,                  ///< CONV_ERR_NO_SYEAR
};

}  // namespace nls

/// @cond INTERNAL
// Makes nls::conv_status an error code enumeration: it converts implicitly to std::error_code
// through nls::make_error_code (stated in the reference at nls::conv_status).
template <>
struct std::is_error_code_enum<nls::conv_status> : std::true_type {};
/// @endcond

namespace nls {

/// @cond INTERNAL
namespace detail {

class conv_category_impl final : public std::error_category {
  public:
    const char *name() const noexcept override {
        return "nlssupport.conv";
    }
    std::string message(int value) const override {
        const char *text = "";
        const char *state = "";
        CONV_ErrorMessage(static_cast<std::uint32_t>(value), &text, &state);
        return text;
    }
};

}  // namespace detail
/// @endcond

/**
 * The error category of the conversion statuses: name() is "nlssupport.conv", message() the
 * status's message text from CONV_ErrorMessage (empty for 0 and unknown values).
 * @return The category, one object for the whole program.
 */
inline const std::error_category &conv_category() noexcept {
    static const detail::conv_category_impl category;
    return category;
}

/**
 * The error code of a status; found by argument-dependent lookup, so that a conv_status converts
 * implicitly to std::error_code.
 * @param status The status.
 * @return The error code of category nls::conv_category() with the status's value.
 */
inline std::error_code make_error_code(conv_status status) noexcept {
    return std::error_code(static_cast<int>(status), conv_category());
}

/**
 * Tells a warning, which comes with a usable, altered result, from success and errors.
 * @param status The status.
 * @return True for conv_status::warn_truncation and conv_status::warn_round_to_zero only.
 */
constexpr bool is_warning(conv_status status) noexcept {
    return status == conv_status::warn_truncation || status == conv_status::warn_round_to_zero;
}

/**
 * Tells a warning, which comes with a usable, altered result, from success and errors.
 * @param code The error code.
 * @return True for the two warnings of nls::conv_category(); false for codes of other
 *         categories.
 */
inline bool is_warning(std::error_code code) noexcept {
    return code.category() == conv_category() &&
           is_warning(static_cast<conv_status>(static_cast<std::uint32_t>(code.value())));
}

/**
 * The SQLSTATE of a status (CONV_ErrorMessage).
 * @param code The error code (a conv_status converts to one).
 * @return The SQLSTATE, bracketed as CONV_ErrorMessage gives it ("[22008]"), a static text;
 *         empty for 0, for unknown values and for error codes of other categories.
 */
inline std::string_view sqlstate(std::error_code code) noexcept {
    if (code.category() != conv_category())
        return {};
    const char *text = "";
    const char *state = "";
    CONV_ErrorMessage(static_cast<std::uint32_t>(code.value()), &text, &state);
    return state;
}

/** @} */

/**
 * A value with the status of the conversion that produced it.
 *
 * ok(): the conversion succeeded. warning(): it succeeded with an altered value (cut or rounded
 * to zero) that the caller may accept. error(): it failed; value() then holds what the wrapper
 * documents for that case (usually a value-initialised T, or what the C function left).
 */
template <class T>
class result {
  public:
    /** The type of the value. */
    using value_type = T;

    /**
     * A value with its status.
     * @param value  The value.
     * @param status The status of the conversion that produced it.
     */
    constexpr result(T value, conv_status status) noexcept(std::is_nothrow_move_constructible_v<T>)
        : value_(std::move(value)), status_(status) {}

    /** @return True when the status is conv_status::ok. */
    constexpr bool ok() const noexcept {
        return status_ == conv_status::ok;
    }
    /** @return True when the status is one of the two warnings: the value is usable but
        altered. */
    constexpr bool warning() const noexcept {
        return is_warning(status_);
    }
    /** @return True when the status is neither ok nor a warning. */
    constexpr bool error() const noexcept {
        return !ok() && !warning();
    }
    /** @return The value. */
    constexpr const T &value() const &noexcept {
        return value_;
    }
    /** @return The value. */
    constexpr T &value() &noexcept {
        return value_;
    }
    /** @return The value, to be moved out. */
    constexpr T &&value() &&noexcept {
        return std::move(value_);
    }
    /**
     * The value unless the conversion failed.
     * @param fallback What to give after an error.
     * @return The value when there is no error (ok or warning), else @p fallback.
     */
    template <class U>
    constexpr T value_or(U &&fallback) const & {
        return error() ? static_cast<T>(std::forward<U>(fallback)) : value_;
    }
    /** @return The status. */
    constexpr conv_status status() const noexcept {
        return status_;
    }
    /** @return The status as an error code (empty for ok). */
    std::error_code error_code() const noexcept {
        return make_error_code(status_);
    }

  private:
    T value_;
    conv_status status_;
};

/** @name Formatted output */
/** @{ */

/// @cond INTERNAL
namespace detail {

template <class T, class... U>
inline constexpr bool one_of = (std::is_same_v<T, U> || ...);

// Integer arguments: the types that reach the formatter as a 32-bit int or unsigned int after
// the usual promotions. long and long long are refused on every platform (64 bits on some).
template <class T>
inline constexpr bool format_integer =
    one_of<T, char, signed char, unsigned char, short, unsigned short, int, unsigned, char8_t,
           char16_t, char32_t>;

template <class T>
inline constexpr bool format_narrow = one_of<T, const char *, char *>;

template <class T>
inline constexpr bool format_wide =
    one_of<T, const char16_t *, char16_t *, const GLIB_WChar *, GLIB_WChar *>;

template <class T>
inline constexpr bool format_pointer = std::is_pointer_v<T> &&
                                       (std::is_object_v<std::remove_pointer_t<T>> ||
                                        std::is_void_v<std::remove_pointer_t<T>>);

}  // namespace detail
/// @endcond

/**
 * The argument types nls::format accepts (after the decay of arrays and references):
 * - integers that are passed as a 32-bit `int` or `unsigned int`: `char`, `signed char`,
 *   `unsigned char`, `short`, `unsigned short`, `int`, `unsigned int` (so `int32_t`, `uint32_t`
 *   and the smaller fixed-width types), `char8_t`, `char16_t`, `char32_t`; never `long`,
 *   `long long` or `bool`;
 * - floating types (`float`, `double`, `long double`), passed as `double`;
 * - narrow strings: `const char *` / `char *` (also string literals and char arrays) and
 *   `std::string`;
 * - wide strings of 16-bit units: `const char16_t *`, `const GLIB_WChar *` (and their non-const
 *   forms), `std::u16string`;
 * - any other object pointer or `void` pointer (for `%p`), and `nullptr`.
 */
template <class T>
concept format_argument = detail::format_integer<std::decay_t<T>> ||
    std::floating_point<std::decay_t<T>> || std::is_same_v<std::decay_t<T>, std::nullptr_t> ||
    std::is_same_v<std::decay_t<T>, std::string> ||
    std::is_same_v<std::decay_t<T>, std::u16string> || detail::format_pointer<std::decay_t<T>>;

/// @cond INTERNAL
namespace detail {

enum class arg_kind : unsigned { integer, floating, narrow, wide, pointer, null };

// One argument of nls::format as the format check sees it.
struct format_arg {
    arg_kind kind = arg_kind::null;
    std::uint32_t bits = 0;            // integer: the 32 bits handed over
    double real = 0.0;                 // floating
    const char *narrow = nullptr;      // narrow string
    const char16_t *wide16 = nullptr;  // wide string given as char16_t units
    const GLIB_WChar *wide = nullptr;  // wide string given as GLIB_WChar units
};

constexpr unsigned kind_bit(arg_kind kind) noexcept {
    return 1u << static_cast<unsigned>(kind);
}

// The value handed to GLIB_snprintf for an argument: exactly what a C caller would pass.
template <class T>
auto pass(const T &value) noexcept {
    using D = std::decay_t<T>;
    if constexpr (std::is_same_v<D, std::string>) {
        return value.c_str();
    } else if constexpr (std::is_same_v<D, std::u16string>) {
        return reinterpret_cast<const GLIB_WChar *>(value.c_str());
    } else if constexpr (std::is_same_v<D, std::nullptr_t>) {
        return static_cast<const char *>(nullptr);
    } else if constexpr (format_narrow<D>) {
        return static_cast<const char *>(value);
    } else if constexpr (one_of<D, const char16_t *, char16_t *>) {
        return reinterpret_cast<const GLIB_WChar *>(static_cast<const char16_t *>(value));
    } else if constexpr (one_of<D, const GLIB_WChar *, GLIB_WChar *>) {
        return static_cast<const GLIB_WChar *>(value);
    } else if constexpr (std::is_pointer_v<D>) {
        return static_cast<const void *>(value);
    } else if constexpr (std::floating_point<D>) {
        return static_cast<double>(value);
    } else {
        return +value;  // the promoted int or unsigned int
    }
}

template <class T>
format_arg describe(const T &value) noexcept {
    using D = std::decay_t<T>;
    format_arg arg;
    if constexpr (std::is_same_v<D, std::string> || format_narrow<D>) {
        arg.kind = arg_kind::narrow;
        arg.narrow = pass(value);
    } else if constexpr (std::is_same_v<D, std::u16string>) {
        arg.kind = arg_kind::wide;
        arg.wide16 = value.c_str();
    } else if constexpr (one_of<D, const char16_t *, char16_t *>) {
        arg.kind = arg_kind::wide;
        arg.wide16 = value;
    } else if constexpr (one_of<D, const GLIB_WChar *, GLIB_WChar *>) {
        arg.kind = arg_kind::wide;
        arg.wide = value;
    } else if constexpr (std::is_same_v<D, std::nullptr_t>) {
        arg.kind = arg_kind::null;
    } else if constexpr (std::is_pointer_v<D>) {
        arg.kind = arg_kind::pointer;
    } else if constexpr (std::floating_point<D>) {
        arg.kind = arg_kind::floating;
        arg.real = static_cast<double>(value);
    } else {
        arg.kind = arg_kind::integer;
        arg.bits = static_cast<std::uint32_t>(+value);
    }
    return arg;
}

// Accumulates a decimal digit into a width or precision with the formatter's 32-bit wrap.
constexpr std::int32_t add_digit(std::int32_t value, unsigned digit) noexcept {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value) * 10u + digit);
}

constexpr bool is_escape(unsigned c) noexcept {
    return c == '\\' || c == 'a' || c == 'b' || c == 'f' || c == 'n' || c == 'r' || c == 't' ||
           c == 'v';
}

constexpr std::int64_t positive(std::int64_t value) noexcept {
    return value > 0 ? value : 0;
}

// Walks a format as GLIB_vsnprintf does and returns the bytes it writes with these arguments,
// or -1 when it would refuse the format, when an argument does not suit the field that reads it
// or is missing or left over, or when the text would not fit the formatter's int count. The
// count is exact but for "%o", which may write one '0' less than counted (the digit buffer rule
// that depends on earlier fields of the call); the caller only needs an upper bound.
inline std::int64_t measure_format(const char *format, std::span<const format_arg> args) noexcept {
    constexpr std::int64_t too_long = std::numeric_limits<std::int32_t>::max();
    std::size_t next = 0;
    const auto take = [&](unsigned kinds) -> const format_arg * {
        if (next >= args.size() || (kind_bit(args[next].kind) & kinds) == 0)
            return nullptr;
        return &args[next++];
    };
    std::int64_t total = 0;
    const auto *p = reinterpret_cast<const unsigned char *>(format);
    while (*p != 0) {
        if (total >= too_long)
            return -1;
        if (*p == '\\') {
            if (*++p == 0)
                break;  // a last backslash ends the output
            if (!is_escape(*p))
                return -1;
            ++total;
            ++p;
            continue;
        }
        if (*p != '%') {
            ++total;
            ++p;
            continue;
        }
        ++p;
        bool left = false, plus = false, zero = false, space = false, alternate = false;
        for (;; ++p) {
            if (*p == ' ')
                space = true;
            else if (*p == '#')
                alternate = true;
            else if (*p == '+')
                plus = true;
            else if (*p == '-')
                left = true;
            else if (*p == '0')
                zero = true;
            else
                break;
        }
        if (*p == '%') {  // "%%", also behind flags: one '%'
            ++total;
            ++p;
            continue;
        }
        std::int32_t width = 0;
        while (*p == '*' || (*p >= '0' && *p <= '9')) {
            if (*p == '*') {
                const format_arg *arg = take(kind_bit(arg_kind::integer));
                if (arg == nullptr)
                    return -1;
                width = static_cast<std::int32_t>(arg->bits);
                if (width < 0) {
                    left = true;
                    width = static_cast<std::int32_t>(0u - static_cast<std::uint32_t>(width));
                }
            } else {
                width = add_digit(width, *p - '0');
            }
            ++p;
        }
        std::int32_t precision = -1;
        if (*p == '.') {
            precision = 0;
            ++p;
            for (;; ++p) {
                if (*p >= '0' && *p <= '9') {
                    precision = add_digit(precision, *p - '0');
                } else if (*p == '*') {
                    const format_arg *arg = take(kind_bit(arg_kind::integer));
                    if (arg == nullptr)
                        return -1;
                    precision = static_cast<std::int32_t>(arg->bits);
                    if (precision < 0)
                        precision = -1;
                } else {
                    break;  // a second '.' reaches the conversion and is refused there
                }
            }
        }
        bool is_long = false, is_short = false;
        while (*p == 'h' || *p == 'l') {
            (*p == 'h' ? is_short : is_long) = true;
            ++p;
        }
        const unsigned c = *p;
        if (c == 0)
            break;  // the format ends inside a conversion: the output ends there
        if (c == 'd' || c == 'i' || c == 'u' || c == 'o' || c == 'x' || c == 'X') {
            const format_arg *arg = take(kind_bit(arg_kind::integer));
            if (arg == nullptr)
                return -1;
            const bool is_signed = c == 'd' || c == 'i';
            const unsigned base = c == 'o' ? 8 : (c == 'x' || c == 'X') ? 16 : 10;
            std::uint32_t value = arg->bits;
            int prefix = (base == 16 && alternate) ? 2 : 0;
            bool negative = false;
            if (is_signed) {
                std::int32_t signed_value = static_cast<std::int32_t>(value);
                if (is_short)
                    signed_value = static_cast<std::int16_t>(signed_value);
                negative = signed_value < 0;
                value = static_cast<std::uint32_t>(signed_value);
                if (negative)
                    value = 0u - value;
            } else if (is_short) {
                value &= 0xFFFFu;
            }
            if (precision < 0)
                precision = 1;
            if (precision > 127)
                return -1;
            if (value == 0)
                prefix = 0;
            if (is_signed && (negative || plus || space))
                prefix = 1;
            std::int64_t digits = 0;
            for (std::uint32_t rest = value; rest != 0; rest /= base)
                ++digits;
            if (digits < precision)
                digits = precision;
            if (c == 'o')
                ++digits;  // the leading '0' of octal, counted even where it is not written
            total += positive(width - prefix - digits) + prefix + digits;
        } else if (c == 'c') {
            const format_arg *arg = take(kind_bit(arg_kind::integer));
            if (arg == nullptr)
                return -1;
            total +=
                is_long ? CONV_WCharToUTF8_BytesNeeded(static_cast<std::int32_t>(arg->bits)) : 1;
        } else if (c == 's' && !is_long) {
            const format_arg *arg = take(kind_bit(arg_kind::narrow) | kind_bit(arg_kind::null));
            if (arg == nullptr)
                return -1;
            const char *text = arg->narrow != nullptr ? arg->narrow : gGLIB_nullstring;
            std::int64_t length = 0;
            if (precision < 0)
                length = static_cast<std::int64_t>(std::strlen(text));
            else
                while (length < precision && text[length] != 0)
                    ++length;
            total += positive(width - length) + length;
        } else if (c == 's') {
            const format_arg *arg = take(kind_bit(arg_kind::wide) | kind_bit(arg_kind::null));
            if (arg == nullptr)
                return -1;
            const auto unit = [arg](std::size_t i) -> std::int32_t {
                if (arg->wide16 != nullptr)
                    return static_cast<std::int32_t>(arg->wide16[i]);
                return static_cast<std::int32_t>(
                    (arg->wide != nullptr ? arg->wide : gGLIB_nullwstring)[i]);
            };
            std::int64_t bytes = 0;
            for (std::size_t i = 0; unit(i) != 0 && (precision < 0 || bytes < precision); ++i)
                bytes += CONV_WCharToUTF8_BytesNeeded(unit(i));
            total += positive(width - bytes) + bytes;
        } else if (c == 'p') {
            if (take(kind_bit(arg_kind::pointer) | kind_bit(arg_kind::narrow) |
                     kind_bit(arg_kind::wide) | kind_bit(arg_kind::null)) == nullptr)
                return -1;
            total += 8;  // always eight hexadecimal digits
        } else if (c == 'e' || c == 'E' || c == 'f' || c == 'g' || c == 'G') {
            const format_arg *arg = take(kind_bit(arg_kind::floating));
            if (arg == nullptr || width > 128 || precision > 128)
                return -1;
            // The same C library format the formatter builds.
            char printf_format[32];
            char *q = printf_format;
            *q++ = '%';
            if (left)
                *q++ = '-';
            if (plus)
                *q++ = '+';
            if (zero)
                *q++ = '0';
            if (space)
                *q++ = ' ';
            if (alternate)
                *q++ = '#';
            if (width > 0)
                q += std::snprintf(q, 12, "%d", static_cast<int>(width));
            if (precision >= 0)
                q += std::snprintf(q, 13, ".%d", static_cast<int>(precision));
            *q++ = static_cast<char>(c);
            *q = '\0';
            const int length = std::snprintf(nullptr, 0, printf_format, arg->real);
            if (length < 0)
                return -1;
            total += length;
        } else {
            return -1;  // not a conversion of the formatter
        }
        ++p;
    }
    if (next != args.size() || total >= too_long)
        return -1;
    return total;
}

}  // namespace detail
/// @endcond

/**
 * Formats arguments with the library's own formatter, GLIB_snprintf, into a string of the right
 * size.
 *
 * The format and its conversions are those of GLIB_vsnprintf, not of printf: backslash escapes
 * written in the format text (the two characters backslash and `n`) are interpreted; integers
 * are always 32 bits (`l` and `ll` change nothing for them, `h` takes the low 16 bits); `%o`
 * carries a leading 0; `%p` writes eight upper-case hexadecimal digits; `%ls` and `%lc` write
 * UTF-8. The conversions and the arguments they read:
 * | Conversion | Argument (see nls::format_argument) |
 * |---|---|
 * | `%d` `%i` `%u` `%o` `%x` `%X` | an integer |
 * | `%c` | an integer; its low byte, as one character |
 * | `%lc` | an integer; one character as UTF-8 (1 to 6 bytes) |
 * | `%s` | a narrow string, or nullptr (prints "(null)") |
 * | `%ls` | a wide string of 16-bit units, or nullptr |
 * | `%e` `%E` `%f` `%g` `%G` | a floating value |
 * | `%p` | any pointer, or nullptr |
 * | `*` as width or precision | an integer |
 * | `%%` | none |
 *
 * The format is checked against the arguments first, as the formatter reads it: a format the
 * formatter refuses (an unknown conversion or escape, a precision above 127 for integers, a
 * floating width or precision above 128), an argument that does not suit the conversion that
 * reads it, a missing or a left-over argument gives no string, and GLIB_snprintf is not called
 * (the C function would read arguments that are not there). The same walk measures the text;
 * the string is then allocated with room for the text and its terminator inside the size given
 * to GLIB_snprintf, so the formatter never fills up (its terminator may land at `buf[size]`
 * only when it does). A format that ends inside a conversion or an escape ends the text there,
 * as GLIB_snprintf ends it.
 *
 * @param fmt  The format; read up to a NUL character.
 * @param args The arguments, one for each conversion and each `*`.
 * @return The text, the same bytes as GLIB_snprintf writes (a `%c` of 0 included); nothing when
 *         the format or the arguments are refused or the text would be 2147483647 bytes or more.
 * @throws std::bad_alloc The string could not be allocated.
 */
template <format_argument... Args>
[[nodiscard]] std::optional<std::string> format(std::string_view fmt, const Args &...args) {
    const detail::terminated<char> text(fmt);
    const std::array<detail::format_arg, sizeof...(Args)> described{detail::describe(args)...};
    const std::int64_t length = detail::measure_format(text.c_str(), described);
    if (length < 0)
        return std::nullopt;
    std::string out(static_cast<std::size_t>(length) + 1, '\0');
    // out.size() + 1 bytes are writable (the string's own terminator included), the size + 1
    // that GLIB_snprintf may need; the text fits in out.size() - 1 bytes, so it returns the count.
    const int written = GLIB_snprintf(out.data(), out.size(), text.c_str(), detail::pass(args)...);
    if (written < 0)
        return std::nullopt;
    out.resize(static_cast<std::size_t>(written));
    return out;
}

/** @} */

/** @name Text conversions */
/** @{ */

/**
 * Encodes 16-bit units as UTF-8 with CONV_WChar16StrToUTF8: each unit on its own (a surrogate
 * pair gives two 3-byte sequences). The whole view is encoded; a 0 unit gives a 0 byte.
 *
 * @param text The units.
 * @return The UTF-8 bytes with conv_status::ok (the layer sizes the output, so the encoder's
 *         only failure, a target too small, does not occur).
 * @throws std::bad_alloc The string could not be allocated.
 */
[[nodiscard]] inline result<std::string> to_utf8(std::u16string_view text) {
    std::size_t bytes = 0;
    for (const char16_t unit : text)
        bytes += CONV_WCharToUTF8_BytesNeeded(static_cast<std::int32_t>(unit));
    std::string out(bytes, '\0');
    // Units go through a small buffer of GLIB_WChar, the type the encoder reads; the encoder
    // stops at a 0 unit, which is written here as its one 0 byte.
    constexpr std::size_t chunk = 128;
    GLIB_WChar units[chunk];
    std::size_t done = 0;
    std::size_t at = 0;
    while (done < text.size()) {
        if (text[done] == 0) {
            out[at++] = '\0';
            ++done;
            continue;
        }
        std::size_t count = 0;
        while (count < chunk && done + count < text.size() && text[done + count] != 0) {
            units[count] = static_cast<GLIB_WChar>(text[done + count]);
            ++count;
        }
        std::uint32_t written = 0;
        const std::uint32_t status = CONV_WChar16StrToUTF8(
            units, static_cast<std::int32_t>(count), out.data() + at,
            static_cast<std::uint32_t>(std::min<std::size_t>(out.size() - at, 3 * chunk)),
            &written);
        at += written;
        if (status != CONV_OK) {
            out.resize(at);
            return {std::move(out), static_cast<conv_status>(status)};
        }
        done += count;
    }
    return {std::move(out), conv_status::ok};
}

/**
 * Writes bytes as upper-case hexadecimal text with CONV_BinaryToString (two digits a byte).
 *
 * @param bytes The bytes.
 * @return The text with conv_status::ok; the C function's other statuses (a target too small,
 *         an overlap copy that fails) do not occur, as the layer sizes a separate output.
 * @throws std::bad_alloc The string could not be allocated.
 */
[[nodiscard]] inline result<std::string> to_hex(std::span<const std::byte> bytes) {
    std::string out(2 * bytes.size(), '\0');
    // Pieces keep every size within the C function's 32 bits; each one's terminator lands on the
    // first byte of the next piece, the last one's on the string's own terminator.
    constexpr std::size_t piece = std::size_t{1} << 24;
    std::size_t done = 0;
    do {
        const std::size_t count = std::min(piece, bytes.size() - done);
        const std::uint32_t status = CONV_BinaryToString(
            out.data() + 2 * done, reinterpret_cast<const std::uint8_t *>(bytes.data()) + done,
            static_cast<std::uint32_t>(2 * count + 1), static_cast<std::uint32_t>(count));
        if (status != CONV_OK)
            return {std::string(), static_cast<conv_status>(status)};
        done += count;
    } while (done < bytes.size());
    return {std::move(out), conv_status::ok};
}

/**
 * Reads hexadecimal text into bytes with CONV_StringToBinary: pairs of "0"-"9" and "A"-"F"
 * (lower-case letters are refused), a lone last digit dropped unchecked.
 *
 * @param text The text; read up to a NUL character.
 * @return The bytes, with the C function's status: ok, or conv_status::byte_stream for a pair
 *         that is not two digits (the bytes before it are kept); conv_status::conversion, without
 *         a call, for a text whose bytes would not fit a 32-bit count. The layer gives the C
 *         function room for the whole text, so it never cuts it (no truncation warning).
 * @throws std::bad_alloc The vector or the terminated copy could not be allocated.
 */
[[nodiscard]] inline result<std::vector<std::byte>> from_hex(std::string_view text) {
    // Room for every pair and for the lone last digit: a text longer than twice the capacity
    // would be cut with a warning instead of having that digit dropped.
    const std::size_t capacity = std::max<std::size_t>(text.size() / 2 + text.size() % 2, 1);
    if (capacity > detail::max_c_size)
        return {std::vector<std::byte>(), conv_status::conversion};
    const detail::terminated<char> source(text);
    std::vector<std::byte> out(capacity);
    auto count = static_cast<std::uint32_t>(capacity);
    const std::uint32_t status =
        CONV_StringToBinary(reinterpret_cast<std::uint8_t *>(out.data()), source.c_str(), &count);
    if (status == CONV_ERR_TARGET_TOO_SMALL || status == CONV_ERR_MEMORY || count > capacity)
        count = 0;  // the count is left as it was: nothing was written
    out.resize(count);
    return {std::move(out), static_cast<conv_status>(status)};
}

/** @} */

/** @name Numbers */
/** @{ */

/** The number-syntax flags the number wrappers take by default: blanks before and after, a
    decimal point and an exponent allowed. */
inline constexpr std::uint32_t default_number_syntax =
    CONV_NUM_LEADING_BLANKS | CONV_NUM_TRAILING_BLANKS | CONV_NUM_DECIMAL_POINT | CONV_NUM_EXPONENT;

/**
 * Reads number text into a signed 32-bit integer (CONV_StringToInt32).
 *
 * @param text  The text; read up to a NUL character.
 * @param flags Number-syntax flags (CONV_NUM_...).
 * @param point The decimal-point character.
 * @return The value and the status of CONV_StringToInt32 (conv_status::warn_truncation when a
 *         fraction was dropped); the value is 0 when the C function did not write it.
 * @throws std::bad_alloc A text of 256 characters or more could not be copied.
 */
[[nodiscard]] inline result<std::int32_t> to_int32(std::string_view text,
                                                   std::uint32_t flags = default_number_syntax,
                                                   char point = '.') {
    const detail::terminated<char> source(text);
    std::int32_t value = 0;
    const std::uint32_t status = CONV_StringToInt32(&value, source.c_str(), flags, point);
    return {value, static_cast<conv_status>(status)};
}

/**
 * Reads number text into an unsigned 32-bit integer (CONV_StringToUInt32).
 *
 * @param text  The text; read up to a NUL character.
 * @param flags Number-syntax flags (CONV_NUM_...).
 * @param point The decimal-point character.
 * @return The value and the status of CONV_StringToUInt32; the value is 0 when the C function
 *         did not write it.
 * @throws std::bad_alloc A text of 256 characters or more could not be copied.
 */
[[nodiscard]] inline result<std::uint32_t> to_uint32(std::string_view text,
                                                     std::uint32_t flags = default_number_syntax,
                                                     char point = '.') {
    const detail::terminated<char> source(text);
    std::uint32_t value = 0;
    const std::uint32_t status = CONV_StringToUInt32(&value, source.c_str(), flags, point);
    return {value, static_cast<conv_status>(status)};
}

/**
 * Reads number text into a double (CONV_StringToDouble).
 *
 * @param text  The text; read up to a NUL character.
 * @param flags Number-syntax flags (CONV_NUM_...; CONV_NUM_D_EXPONENT for a "D" exponent).
 * @param point The decimal-point character.
 * @return The value and the status of CONV_StringToDouble: 0.0 with
 *         conv_status::warn_round_to_zero for a value too small for a double, an infinity with
 *         conv_status::overflow; 0.0 when the C function did not write it.
 * @throws std::bad_alloc A text of 256 characters or more could not be copied.
 */
[[nodiscard]] inline result<double> to_double(std::string_view text,
                                              std::uint32_t flags = default_number_syntax,
                                              char point = '.') {
    const detail::terminated<char> source(text);
    double value = 0.0;
    const std::uint32_t status = CONV_StringToDouble(&value, source.c_str(), flags, point);
    return {value, static_cast<conv_status>(status)};
}

/**
 * A packed decimal value (layout CONV_DECIMAL_PACKED): two digits a byte, high nibble first,
 * the sign (CONV_DECIMAL_PLUS or CONV_DECIMAL_MINUS) in the low nibble of the last byte, with
 * its precision and scale beside it.
 */
struct decimal {
    std::vector<std::uint8_t> bytes;  ///< The digits and the sign; precision / 2 + 1 bytes.
    std::uint32_t precision = 0;      ///< Digits of the value (an even count has a pad 0 first).
    std::uint32_t scale = 0;          ///< Fraction digits among them.
};

/**
 * Reads number text into a packed decimal value (CONV_StringToDecimal), with room for every
 * digit, so that nothing is cut for want of room.
 *
 * @param text  The text; read up to a NUL character.
 * @param flags Number-syntax flags (CONV_NUM_...).
 * @param point The decimal-point character.
 * @return The value and the status of CONV_StringToDecimal. "12" is stored as 12.0 (precision
 *         3, scale 1) as the C function stores it. On an error the precision and scale are what
 *         the C function wrote, and the bytes those that precision covers.
 * @throws std::bad_alloc The vector or the terminated copy could not be allocated.
 */
[[nodiscard]] inline result<decimal> to_decimal(std::string_view text,
                                                std::uint32_t flags = default_number_syntax,
                                                char point = '.') {
    // At most one digit a character, two a byte, and the sign; a text with an exponent is read
    // as a double written with 50 fraction digits, which 200 bytes always hold.
    const std::size_t capacity =
        std::min<std::size_t>(std::max<std::size_t>(text.size() / 2 + 2, 200), detail::max_c_size);
    const detail::terminated<char> source(text);
    decimal value;
    value.bytes.resize(capacity);
    const std::uint32_t status = CONV_StringToDecimal(value.bytes.data(), source.c_str(),
                                                      static_cast<std::uint32_t>(capacity),
                                                      &value.precision, &value.scale, flags, point);
    const std::size_t used = value.precision / 2 + 1;
    value.bytes.resize(value.precision > 0 ? std::min(used, capacity) : 0);
    return {std::move(value), static_cast<conv_status>(status)};
}

/**
 * Writes a packed or unpacked decimal value as text (CONV_DecimalToString).
 *
 * @param bytes     The value in the given layout: precision / 2 + 1 bytes when packed,
 *                  precision bytes when unpacked.
 * @param precision Digits of the value.
 * @param scale     Fraction digits among them.
 * @param layout    CONV_DECIMAL_PACKED or CONV_DECIMAL_UNPACKED.
 * @param point     The decimal-point character written.
 * @return The text and the status of CONV_DecimalToString (empty text on an error);
 *         conv_status::conversion without a call when @p bytes is shorter than the layout needs.
 * @throws std::bad_alloc The string could not be allocated.
 */
[[nodiscard]] inline result<std::string> decimal_to_string(
    std::span<const std::uint8_t> bytes, std::uint32_t precision, std::uint32_t scale,
    std::uint32_t layout = CONV_DECIMAL_PACKED, char point = '.') {
    const std::size_t needed = layout == CONV_DECIMAL_PACKED     ? precision / 2 + 1
                               : layout == CONV_DECIMAL_UNPACKED ? precision
                                                                 : 0;
    if (bytes.size() < needed || precision > detail::max_c_size - 8)
        return {std::string(), conv_status::conversion};
    // A sign, the digits (with a pad digit when packed) and a point, then the terminator.
    std::string out(precision + 3, '\0');
    std::uint32_t length = 0;
    const std::uint32_t status =
        CONV_DecimalToString(out.data(), bytes.data(), static_cast<std::uint32_t>(out.size() + 1),
                             precision, scale, point, layout, &length);
    if (status != CONV_OK && status != CONV_WARN_TRUNCATION)
        return {std::string(), static_cast<conv_status>(status)};
    out.resize(std::strlen(out.c_str()));
    return {std::move(out), static_cast<conv_status>(status)};
}

/**
 * Writes a packed decimal value (as nls::to_decimal makes it) as text (CONV_DecimalToString).
 *
 * @param value The value.
 * @param point The decimal-point character written.
 * @return As the other form of nls::decimal_to_string.
 * @throws std::bad_alloc The string could not be allocated.
 */
[[nodiscard]] inline result<std::string> decimal_to_string(const decimal &value, char point = '.') {
    return decimal_to_string(value.bytes, value.precision, value.scale, CONV_DECIMAL_PACKED, point);
}

/** @} */

/** @name Date and time */
/** @{ */

/**
 * Writes a date-time record as text under a format of the date-time format language
 * (CONV_DateTimeToString).
 *
 * The buffer is sized with CONV_CalcDateTimeLength. That measures a sample date with the longest
 * names, so a record whose numbers are longer (a five-digit or negative year, say) or a format
 * it cannot measure (an era field) is written again into a larger buffer while the C function
 * reports a target too small (or a cut fraction): the text is the one a large enough buffer
 * receives. The caller's record is not changed (the C function writes its era field; it writes
 * a copy here).
 *
 * @param record The values.
 * @param format The format; read up to a NUL character.
 * @param names  The names record, or null for the default names.
 * @return The text and the status of CONV_DateTimeToString; after an error, the text written
 *         before the field that failed.
 * @throws std::bad_alloc The string or the terminated copy could not be allocated.
 */
[[nodiscard]] inline result<std::string> format_datetime(
    const CONV_DateTime &record, std::string_view format,
    const CONV_DateTimeNames *names = nullptr) {
    const detail::terminated<char> pattern(format);
    const char *const *slots = names != nullptr ? *names : nullptr;
    // No field writes more than its width (999 at most), a number or a name, so this bounds the
    // text of any record.
    std::size_t longest_name = 999;
    for (std::size_t i = 0; slots != nullptr && i < CONV_NAMES_COUNT; ++i)
        if (slots[i] != nullptr)
            longest_name = std::max(longest_name, std::strlen(slots[i]));
    const std::uint64_t bound =
        (static_cast<std::uint64_t>(format.size()) + 1) * (longest_name + 1) + 1;
    const auto limit = static_cast<std::size_t>(std::min<std::uint64_t>(
        bound, static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max())));
    std::uint32_t measured = 0;
    std::size_t size = CONV_CalcDateTimeLength(pattern.c_str(), slots, &measured) == CONV_OK
                           ? std::max<std::size_t>(measured, 1)
                           : 64;
    for (;;) {
        CONV_DateTime copy = record;
        std::string out(size - 1, '\0');
        const std::uint32_t status =
            CONV_DateTimeToString(out.data(), &copy, static_cast<std::int32_t>(size),
                                  pattern.c_str(), slots, nullptr, nullptr);
        const bool room = status == CONV_ERR_TARGET_TOO_SMALL || status == CONV_WARN_TRUNCATION;
        if (!room || size >= limit) {
            out.resize(std::strlen(out.c_str()));
            return {std::move(out), static_cast<conv_status>(status)};
        }
        size = std::min(2 * size, limit);
    }
}

/**
 * Reads a date-time from text under a format of the date-time format language
 * (CONV_StringToDateTime).
 *
 * @param text          The text; read up to a NUL character.
 * @param format        The format; read up to a NUL character.
 * @param names         The names record, or null for the default names.
 * @param century_base  Added to a two-digit year read by Y (1900 reads "94" as 1994).
 * @param fraction_base Fraction digits wanted for F (1..9), or CONV_DT_UNSET.
 * @return The record and the status of CONV_StringToDateTime; after an error the record holds
 *         what was read, as the C function leaves it.
 * @throws std::bad_alloc A terminated copy could not be allocated.
 */
[[nodiscard]] inline result<CONV_DateTime> parse_datetime(
    std::string_view text, std::string_view format, const CONV_DateTimeNames *names = nullptr,
    std::int32_t century_base = 1900, std::int16_t fraction_base = CONV_DT_UNSET) {
    const detail::terminated<char> source(text);
    const detail::terminated<char> pattern(format);
    CONV_DateTime record{};
    record.fractionBase = fraction_base;
    const std::uint32_t status =
        CONV_StringToDateTime(&record, source.c_str(), pattern.c_str(), century_base,
                              names != nullptr ? *names : nullptr, nullptr, nullptr);
    return {record, static_cast<conv_status>(status)};
}

/** @} */

/** @name Pattern matching */
/** @{ */

/**
 * Tells whether a whole value matches a SQL-LIKE pattern (GLIB_ValueMatchesPattern): `%` any
 * run, `_` one byte, backslash escape; case-sensitive.
 *
 * @param pattern The pattern; read up to a NUL character.
 * @param value   The value; read up to a NUL character.
 * @return True when the whole value matches.
 * @throws std::bad_alloc A text of 256 characters or more could not be copied.
 */
[[nodiscard]] inline bool like(std::string_view pattern, std::string_view value) {
    const detail::terminated<char> p(pattern);
    const detail::terminated<char> v(value);
    return GLIB_ValueMatchesPattern(p.c_str(), v.c_str()) != 0;
}

/**
 * Tells whether a whole wide value matches a wide SQL-LIKE pattern (GLIB_ValueMatchesPatternW):
 * the same rules over 16-bit units.
 *
 * @param pattern The pattern; read up to a 0 unit.
 * @param value   The value; read up to a 0 unit.
 * @return True when the whole value matches.
 * @throws std::bad_alloc A text of 256 units or more could not be copied.
 */
[[nodiscard]] inline bool like(std::u16string_view pattern, std::u16string_view value) {
    const detail::terminated<GLIB_WChar> p(pattern);
    const detail::terminated<GLIB_WChar> v(value);
    return GLIB_ValueMatchesPatternW(p.c_str(), v.c_str()) != 0;
}

/** @} */

/** @name Character sets and the process code set */
/** @{ */

/**
 * Looks a character-set name up in the IANA alias table (IANACS_GetMibEnum), ignoring letter
 * case, with that lookup's results (some names are never found, see IANACS_GetMibEnum).
 *
 * @param name The name; read up to a NUL character.
 * @return The MIBenum, or nothing when the name is not found.
 * @throws std::bad_alloc A name of 256 characters or more could not be copied.
 */
[[nodiscard]] inline std::optional<std::int32_t> charset_mib(std::string_view name) {
    const detail::terminated<char> text(name);
    std::int32_t mib = -1;
    if (IANACS_GetMibEnum(text.c_str(), &mib) != 0)
        return std::nullopt;
    return mib;
}

/**
 * Fetches the information of a MIBenum (IANACS_GetInfo): preferred name and sizes.
 *
 * @param mib The MIBenum.
 * @return The information, or nothing when the MIBenum has no information row.
 */
[[nodiscard]] inline std::optional<IANACS_Info> charset_info(std::int32_t mib) noexcept {
    IANACS_Info info{};
    if (IANACS_GetInfo(mib, &info) != 0)
        return std::nullopt;
    return info;
}

/**
 * The operating system's name of the code set of the current process locale
 * (KORANLS_GetOsCodePageName), whole, such as "ANSI_X3.4-1968" in the "C" locale.
 *
 * @param stack Receives the record of an empty code set, or nothing.
 * @return The name; empty when the locale reports an empty code set.
 * @throws std::bad_alloc The string could not be allocated.
 */
[[nodiscard]] inline std::string os_codeset(stack_ref stack = {}) {
    std::string name(63, '\0');
    for (;;) {
        if (KORANLS_GetOsCodePageName(name.data(), static_cast<std::int32_t>(name.size() + 1), 0,
                                      stack.get()) != 0)
            return std::string();
        const std::size_t length = std::strlen(name.c_str());
        // The name is cut silently to the size: a full buffer may hold a cut name.
        if (length < name.size()) {
            name.resize(length);
            return name;
        }
        name.assign(2 * name.size() + 1, '\0');
    }
}

/**
 * The preferred IANA name of the code set of the current process locale, or else the operating
 * system's own name (KORANLS_GetOsCodePageIanaName), such as "US-ASCII" in the "C" locale.
 *
 * The buffer holds the whole operating-system name and the longest preferred name, so neither
 * is cut.
 *
 * @param stack Receives the record of an empty code set, or nothing.
 * @return The name; empty when the locale reports an empty code set.
 * @throws std::bad_alloc The string could not be allocated.
 */
[[nodiscard]] inline std::string os_iana_name(stack_ref stack = {}) {
    const std::size_t os_length = os_codeset().size();
    // The operating-system name is cut to size - 1 characters before it is looked up; the
    // longest preferred name has 45 characters; the terminator may land at buffer[size].
    // An empty code set leaves the buffer empty (and its record on the stack).
    std::string name(std::max<std::size_t>(os_length + 1, 45), '\0');
    (void)KORANLS_GetOsCodePageIanaName(name.data(), static_cast<std::int32_t>(name.size()),
                                        stack.get());
    name.resize(std::strlen(name.c_str()));
    return name;
}

/** @} */

}  // namespace nls

#endif /* NLSSUPPORT_NLSSUPPORT_HPP */
