#pragma once

#include <exception>

namespace zarn {

/// The run time's error numbers that this program can raise.
enum class ErrorNumber {
    Overflow = 6,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    UserInterrupt = 18,
    ErrorLoadingLibrary = 48,
    BadFileNameOrNumber = 52,
    FileNotFound = 53,
    DeviceIOError = 57,
    FileAlreadyExists = 58,
    DiskFull = 61,
    TooManyFiles = 67,
    DeviceUnavailable = 68,
    PermissionDenied = 70,
    DiskNotReady = 71,
    PathFileAccessError = 75,
    PathNotFound = 76,
};

/// The fixed English text of an error, as the user reads it behind the number.
[[nodiscard]] const char* ErrorText(ErrorNumber number) noexcept;

/// A failure that no rule of the program names. It is thrown where it arises and caught only by
/// a routine that has a rule for it, at last by the entry procedure. No other exception type
/// crosses the border of a room.
class RuntimeError : public std::exception {
  public:
    explicit RuntimeError(ErrorNumber number) noexcept : number_(number) {}

    [[nodiscard]] ErrorNumber Number() const noexcept { return number_; }

    /// The text of the error; never null.
    [[nodiscard]] const char* what() const noexcept override { return ErrorText(number_); }

  private:
    ErrorNumber number_;
};

}  // namespace zarn
