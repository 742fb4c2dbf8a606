#pragma once

#include <cstdint>
#include <exception>
#include <new>
#include <string>

namespace scrivo {

// Added to a class's own error offsets (17401, 18001, …) to make the numbers that callers see.
constexpr std::int32_t kComponentErrorBase = -2147221504;  // 0x80040000

// Numbers of the failures that the operating system and the language report. Callers test some of
// them, such as kPermissionDenied.
enum RunTimeError : std::int32_t {
  kInvalidProcedureCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kTypeMismatch = 13,
  kUserInterrupt = 18,
  kInternalError = 51,
  kFileNotFound = 53,
  kDeviceIoError = 57,
  kFileAlreadyExists = 58,
  kDiskFull = 61,
  kPermissionDenied = 70,
  kPathFileAccessError = 75,
  kPathNotFound = 76,
  kObjectNotSet = 91,
  kObjectDoesNotSupportThis = 438,
  kWrongArgumentCount = 450,
};

// The one exception of the system: failures of the operating system, of the host and of the
// standard library are turned into it where they enter.
class Error : public std::exception {
 public:
  Error(std::int32_t number, std::string source, std::string description)
      : number(number), source(std::move(source)), description(std::move(description)) {}

  const char* what() const noexcept override { return description.c_str(); }

  std::int32_t number;      // a RunTimeError, kComponentErrorBase + offset, or a host's HRESULT
  std::string source;       // who raised it
  std::string description;  // English text for the user, without a line end
  std::int32_t line = 0;    // line number of the failed statement, 0 when it carries none
};

// Gives the failure held by `failure` as an Error: an Error as it is, std::bad_alloc as
// kOutOfMemory, any other exception as kInternalError with its what() text. `failure` must not be
// null.
inline Error ErrorFrom(const std::exception_ptr& failure) noexcept {
  try {
    std::rethrow_exception(failure);
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return Error(kOutOfMemory, "", "Out of memory");
  } catch (const std::exception& other) {
    return Error(kInternalError, "", other.what());
  } catch (...) {
    return Error(kInternalError, "", "Internal error");
  }
}

}  // namespace scrivo
