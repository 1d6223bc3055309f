// A statement, built from fixed pieces of SQL and the values between them.
//
// The builder knows where a value begins and ends: a string literal of the program is a
// piece of SQL, everything else is a value. Values between single quotes reach the
// engine as bound parameters, so stored text is never parsed as SQL. A text value with a
// single quote makes the statement fail with 3075 when it is run, as on the classic
// platform; so does a text value outside quotes.
//
//     Statement sql{u"SELECT * FROM tblFriend"};
//     sql << u" WHERE (" << u" tblFriend_Address = '" << address << u"' )";
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstddef>
#include <vector>

namespace tolvek {

class Statement {
public:
    struct Part {
        bool isValue;
        bool isNumber;
        Text text;
    };

    template <std::size_t N> explicit Statement(const char16_t (&piece)[N]) { *this << piece; }

    template <std::size_t N> Statement& operator<<(const char16_t (&piece)[N])
    {
        return append({false, false, Text(piece, N - 1)});
    }
    Statement& operator<<(const Text& value) { return append({true, false, value}); }
    Statement& operator<<(TextView value) { return append({true, false, Text(value)}); }
    // Numbers are written as decimals, Yes/No as the word True or False.
    Statement& operator<<(int value) { return append({true, true, decimal(value)}); }
    Statement& operator<<(Int16 value) { return *this << static_cast<int>(value); }
    Statement& operator<<(bool value) { return append({true, true, value ? u"True" : u"False"}); }

    const std::vector<Part>& parts() const { return parts_; }
    // The whole statement as the classic platform would see it, for messages.
    Text text() const
    {
        Text whole;
        for (const Part& part : parts_)
            whole += part.text;
        return whole;
    }

private:
    Statement& append(Part part)
    {
        parts_.push_back(std::move(part));
        return *this;
    }
    std::vector<Part> parts_;
};

}
