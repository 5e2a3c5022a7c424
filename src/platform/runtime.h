// Numbers, truth values, blanks and errors of the runtime. Characters and their letters: characters.h; items of text
// files: items.h.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Every counter, index and flag of the program is 16 bits wide; ToInteger stands at each place where one could
// overflow.
using Integer = std::int16_t;

inline constexpr Integer True = -1;
inline constexpr Integer False = 0;

constexpr Integer Truth(bool condition) { return condition ? True : False; }

enum ErrorNumber : Integer {
    InvalidCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    TypeMismatch = 13,
    BadFileName = 52,
    FileNotFound = 53,
    BadFileMode = 54,
    FileAlreadyOpen = 55,
    DeviceError = 57,
    FileAlreadyExists = 58,
    DiskFull = 61,
    InputPastEnd = 62,
    TooManyFiles = 67,
    DeviceUnavailable = 68,
    PermissionDenied = 70,
    PathAccessError = 75,
    PathNotFound = 76,
    PrinterError = 482,
};

// What a failing operation throws; the command that started it turns it into its message.
struct RuntimeError {
    Integer Number;
};

// "Disk full" for 61; the text of a number that is in no list is "Application-defined error".
std::string_view Description(Integer number);

// "61 - Disk full": the part that every message about an error has in common.
std::string ErrorText(Integer number);

// Runs a part of a command; the number of the error that stopped it, 0 for none. Memory that ran out is error 7.
template <class Act> Integer FaultOf(Act act) {
    try {
        act();
    } catch (const RuntimeError &error) {
        return error.Number;
    } catch (const std::bad_alloc &) {
        return OutOfMemory;
    } catch (const std::length_error &) { // a text longer than any memory
        return OutOfMemory;
    } catch (const std::out_of_range &) {
        return SubscriptOutOfRange;
    }
    return 0;
}

// The number as an Integer; error 6 outside -32768 ... 32767.
template <std::integral Number> constexpr Integer ToInteger(Number number) {
    if (!std::in_range<Integer>(number)) throw RuntimeError{Overflow};
    return static_cast<Integer>(number);
}

// Without the blanks (code 32) at both ends, at the right end.
std::string Trim(std::string_view text);
std::string RTrim(std::string_view text);

// The longest number at the start of a text, leading blanks skipped, else 0: "75x" gives 75. Bounded to 32 bits.
std::int32_t NumericValue(std::string_view text);

// The same with decimals and a power of ten: "-0.5m" gives -0.5, "1e2" 100. Infinite where no double is as large.
double DecimalValue(std::string_view text);

// A table indexed by Integer from 0 to an upper bound; error 9 outside it.
template <class T> class Table {
public:
    Table() : cells(1) {}

    // The table anew, every cell empty, with indexes 0 to upper.
    void Size(Integer upper) { cells.assign(static_cast<std::size_t>(upper) + 1, T{}); }

    Integer UpperBound() const { return ToInteger(cells.size() - 1); }

    T &operator[](Integer index) { return cells[Checked(index)]; }
    const T &operator[](Integer index) const { return cells[Checked(index)]; }

    bool operator==(const Table &) const = default;

    typename std::vector<T>::iterator begin() { return cells.begin(); }
    typename std::vector<T>::iterator end() { return cells.end(); }

private:
    std::size_t Checked(Integer index) const {
        if (index < 0 || static_cast<std::size_t>(index) >= cells.size()) throw RuntimeError{SubscriptOutOfRange};
        return static_cast<std::size_t>(index);
    }

    std::vector<T> cells;
};
