// SPDX-License-Identifier: MIT
// Numeric narrowing: moves a double, a signed or an unsigned 32-bit integer into a narrower or
// differently signed type and reports whether the value fitted.
#include <nlssupport/convlib.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace {
[[gnu::used]] constexpr char kIdent[][64] = {
    "@(#)     narrow.cpp\t\t$Revision$\t$Date$\t",
    "@(#)     convlib.h\t\t$Revision$\t$Date$",
    "@(#)     PLATFORM : Linux on Intel",
};

// Upper bound of the double-to-float conversion: the double with the bits 0x47F000000FFFFFE0,
// a little above the largest finite float. Values between the two that round beyond the largest
// float are stored as infinity with CONV_OK; callers rely on this bound.
constexpr double kFloatBound = 3.4028238720334565e38;

// Truncating conversion of a double already known to lie inside the target's range (or a NaN).
// A NaN receives what the processor's truncating conversion produces: the "integer indefinite"
// value 0x80000000 for a 32-bit signed target and its low bits (0) for the narrower targets and
// for the unsigned 32-bit target, which is converted through a 64-bit integer.
template <typename T>
T TruncateInRange(double value) noexcept {
    if (std::isnan(value)) {
        if constexpr (std::is_same_v<T, int32_t>) {
            return std::numeric_limits<int32_t>::min();
        } else {
            return 0;
        }
    }
    return static_cast<T>(value);  // conversion to an integer truncates toward zero
}

// The double-to-integer narrowing shared by the six integer targets: overflow outside
// [lower, upper] (compared as reals so that a NaN passes both tests), else truncate toward zero
// and warn when a fraction was dropped or the value was not a number.
template <typename T>
uint32_t DoubleToInteger(T *target, double value, double lower, double upper) noexcept {
    if (lower > value) {
        return CONV_ERR_OVERFLOW;
    }
    if (value > upper) {
        return CONV_ERR_OVERFLOW;
    }
    const T stored = TruncateInRange<T>(value);
    *target = stored;
    // Stored to memory so that an x87 evaluation compares a true double difference.
    volatile double difference = value - static_cast<double>(stored);
    return difference == 0.0 ? CONV_OK : CONV_WARN_TRUNCATION;
}

// Signed 32-bit to a narrower signed target: one unsigned test after offsetting by half the
// target's range.
template <typename T>
uint32_t Int32ToSigned(T *target, int32_t value, uint32_t half, uint32_t span) noexcept {
    if (static_cast<uint32_t>(value) + half > span) {
        return CONV_ERR_OVERFLOW;
    }
    *target = static_cast<T>(value);
    return CONV_OK;
}

// Signed or unsigned 32-bit to an unsigned target of the given maximum: one unsigned test.
template <typename T>
uint32_t ToUnsigned(T *target, uint32_t value, uint32_t maximum) noexcept {
    if (value > maximum) {
        return CONV_ERR_OVERFLOW;
    }
    *target = static_cast<T>(value);
    return CONV_OK;
}
}  // namespace

// Stores value rounded to the nearest float. Returns CONV_ERR_OVERFLOW (target untouched) beyond
// +-3.4028238720334565e38, else CONV_OK; tiny values become subnormal or zero, a NaN stays a NaN.
extern "C" uint32_t CONV_DoubleToFloat(float *target, double value) noexcept {
    if (value >= 0.0 || std::isnan(value)) {
        if (value > kFloatBound) {
            return CONV_ERR_OVERFLOW;
        }
    } else if (value < -kFloatBound) {
        return CONV_ERR_OVERFLOW;
    }
    *target = static_cast<float>(value);
    return CONV_OK;
}

// Double to signed 32-bit, truncating toward zero: CONV_OK, CONV_WARN_TRUNCATION or
// CONV_ERR_OVERFLOW (outside -2147483648.0..2147483647.0; target untouched).
extern "C" uint32_t CONV_DoubleToInt32(int32_t *target, double value) noexcept {
    return DoubleToInteger(target, value, -2147483648.0, 2147483647.0);
}

// Double to unsigned 32-bit (0.0..4294967295.0; any negative value, even -0.25, overflows).
extern "C" uint32_t CONV_DoubleToUInt32(uint32_t *target, double value) noexcept {
    return DoubleToInteger(target, value, 0.0, 4294967295.0);
}

// Double to signed 16-bit (-32768.0..32767.0).
extern "C" uint32_t CONV_DoubleToInt16(int16_t *target, double value) noexcept {
    return DoubleToInteger(target, value, -32768.0, 32767.0);
}

// Double to unsigned 16-bit (0.0..65535.0).
extern "C" uint32_t CONV_DoubleToUInt16(uint16_t *target, double value) noexcept {
    return DoubleToInteger(target, value, 0.0, 65535.0);
}

// Double to signed 8-bit (-128.0..127.0).
extern "C" uint32_t CONV_DoubleToInt8(int8_t *target, double value) noexcept {
    return DoubleToInteger(target, value, -128.0, 127.0);
}

// Double to unsigned 8-bit (0.0..255.0).
extern "C" uint32_t CONV_DoubleToUInt8(uint8_t *target, double value) noexcept {
    return DoubleToInteger(target, value, 0.0, 255.0);
}

// Signed 32-bit to double: exact, always CONV_OK.
extern "C" uint32_t CONV_Int32ToDouble(double *target, int32_t value) noexcept {
    *target = static_cast<double>(value);
    return CONV_OK;
}

// Signed 32-bit to float, rounded to nearest: always CONV_OK.
extern "C" uint32_t CONV_Int32ToFloat(float *target, int32_t value) noexcept {
    *target = static_cast<float>(value);
    return CONV_OK;
}

// Signed 32-bit to unsigned 32-bit: 0..2147483647 copied, negative values overflow.
extern "C" uint32_t CONV_Int32ToUInt32(uint32_t *target, int32_t value) noexcept {
    return ToUnsigned(target, static_cast<uint32_t>(value), 0x7FFFFFFFu);
}

// Signed 32-bit to signed 16-bit: -32768..32767 copied, else CONV_ERR_OVERFLOW.
extern "C" uint32_t CONV_Int32ToInt16(int16_t *target, int32_t value) noexcept {
    return Int32ToSigned(target, value, 32768u, 65535u);
}

// Signed 32-bit to unsigned 16-bit: 0..65535 copied, else CONV_ERR_OVERFLOW.
extern "C" uint32_t CONV_Int32ToUInt16(uint16_t *target, int32_t value) noexcept {
    return ToUnsigned(target, static_cast<uint32_t>(value), 65535u);
}

// Signed 32-bit to signed 8-bit: -128..127 copied, else CONV_ERR_OVERFLOW.
extern "C" uint32_t CONV_Int32ToInt8(int8_t *target, int32_t value) noexcept {
    return Int32ToSigned(target, value, 128u, 255u);
}

// Signed 32-bit to unsigned 8-bit: 0..255 copied, else CONV_ERR_OVERFLOW.
extern "C" uint32_t CONV_Int32ToUInt8(uint8_t *target, int32_t value) noexcept {
    return ToUnsigned(target, static_cast<uint32_t>(value), 255u);
}

// Unsigned 32-bit to double through a signed 64-bit integer (values of 2^31 and above stay
// positive): exact, always CONV_OK.
extern "C" uint32_t CONV_UInt32ToDouble(double *target, uint32_t value) noexcept {
    *target = static_cast<double>(static_cast<int64_t>(value));
    return CONV_OK;
}

// Unsigned 32-bit to float through a signed 64-bit integer, rounded to nearest: always CONV_OK.
extern "C" uint32_t CONV_UInt32ToFloat(float *target, uint32_t value) noexcept {
    *target = static_cast<float>(static_cast<int64_t>(value));
    return CONV_OK;
}

// Unsigned 32-bit to signed 32-bit: values of 2^31 and above overflow. Kept for compatibility:
// an accepted value is stored as its low 16 bits sign-extended (40000 gives -25536, 70000 gives
// 4464), as this routine has always done; 0..32767 come through unchanged.
extern "C" uint32_t CONV_UInt32ToInt32(int32_t *target, uint32_t value) noexcept {
    if (value > 0x7FFFFFFFu) {
        return CONV_ERR_OVERFLOW;
    }
    *target = static_cast<int16_t>(static_cast<uint16_t>(value & 0xFFFFu));
    return CONV_OK;
}

// Unsigned 32-bit to signed 16-bit: 0..32767 copied, else CONV_ERR_OVERFLOW.
extern "C" uint32_t CONV_UInt32ToInt16(int16_t *target, uint32_t value) noexcept {
    if (value > 32767u) {
        return CONV_ERR_OVERFLOW;
    }
    *target = static_cast<int16_t>(value);
    return CONV_OK;
}

// Unsigned 32-bit to unsigned 16-bit: 0..65535 copied, else CONV_ERR_OVERFLOW.
extern "C" uint32_t CONV_UInt32ToUInt16(uint16_t *target, uint32_t value) noexcept {
    return ToUnsigned(target, value, 65535u);
}

// Unsigned 32-bit to signed 8-bit: 0..127 copied, else CONV_ERR_OVERFLOW.
extern "C" uint32_t CONV_UInt32ToInt8(int8_t *target, uint32_t value) noexcept {
    if (value > 127u) {
        return CONV_ERR_OVERFLOW;
    }
    *target = static_cast<int8_t>(value);
    return CONV_OK;
}

// Unsigned 32-bit to unsigned 8-bit: 0..255 copied, else CONV_ERR_OVERFLOW.
extern "C" uint32_t CONV_UInt32ToUInt8(uint8_t *target, uint32_t value) noexcept {
    return ToUnsigned(target, value, 255u);
}
