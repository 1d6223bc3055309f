// The one failure type of the platform layers: an error number of the classic
// platform, which the program's routines compare with, and the text that the user
// sees for it.
//
// Thrown by runtime, dao and forms and by checked 16-bit arithmetic. The code above
// handles it in exactly two ways (see app/guard.h).
#pragma once
#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <system_error>

namespace tolvek {

class RuntimeError : public std::exception {
public:
    // The number with the classic platform's text for it. `name` fills the one gap
    // that some texts have (a file, field, expression or table). The text of 53 has
    // no gap; a name is appended to it.
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

// The classic platform's text for a number; empty for an unknown number.
std::u16string errorText(int number, std::u16string_view name = {});

// The error number for a failed file operation: ENOENT 53, ENOTDIR 76, EEXIST 58,
// EIO/ENODEV/ENXIO 57, EACCES/EROFS 75, ENOSPC 61, EBUSY/ETXTBSY 70, others 75.
RuntimeError fileError(const std::error_code& code, std::u16string_view name = {});

// Runs a file operation; its std::system_error becomes the error number.
template <class Action> auto asFileError(Action action)
{
    try {
        return action();
    } catch (const std::system_error& error) {
        throw fileError(error.code());
    }
}

}
