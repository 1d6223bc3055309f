// The one failure type of the platform layers: a number of the Basic platform
// that this system's routines compare with, and the text the user sees for it.
//
// Thrown by runtime, dao and forms and by checked 16-bit arithmetic. The logic
// above answers it in exactly two ways (see app/guard.h).
#pragma once
#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <system_error>

namespace tolvek {

class RuntimeError : public std::exception {
public:
    // The number with the platform's own text for it; `name` fills the one
    // gap that some texts have (a file, a field, an expression, a table); the
    // text of 53 has none and takes a name, if given, at its end.
    explicit RuntimeError(int number, std::u16string_view name = {});
    RuntimeError(int number, std::u16string description, std::nullptr_t);

    int number() const { return number_; }
    const std::u16string& description() const { return description_; }
    const char* what() const noexcept override { return what_.c_str(); }

private:
    int number_;
    std::u16string description_;
    std::string what_;
};

// The platform's text for a number; an empty text for an unknown one.
std::u16string errorText(int number, std::u16string_view name = {});

// What a failed file operation is on the platform: ENOENT 53, ENOTDIR 76, EEXIST 58,
// EIO/ENODEV/ENXIO 57, EACCES/EROFS 75, ENOSPC 61, EBUSY/ETXTBSY 70, others 75.
RuntimeError fileError(const std::error_code& code, std::u16string_view name = {});

}
