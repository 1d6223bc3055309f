#include "platform/dao/sql_text.h"

#include <algorithm>

namespace tolvek {

namespace {

bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// Units from 0x80 count as letters, as in the engine.
bool isWordUnit(char16_t c)
{
    const char16_t lower = c | 0x20;
    return isDigit(c) || c == u'_' || (lower >= u'a' && lower <= u'z') || c >= 0x80;
}

std::int64_t integerOf(TextView digits)
{
    std::int64_t value = 0;
    for (const char16_t c : digits)
        if (isDigit(c)) value = value * 10 + (c - u'0');
    return digits.starts_with(u'-') ? -value : value;
}

// Reads the statement unit by unit. Values are never searched for quotes or words, only
// refused if they hold a quote: no stored text can become SQL.
class Lexer {
public:
    explicit Lexer(const Statement& statement) : statement_(statement) {}

    SqlText run()
    {
        for (const Statement::Part& part : statement_.parts())
            part.isValue ? takeValue(part) : takePiece(part.text);
        if (quoted_) throw syntaxError();
        closeLiteral();
        closeWord();
        out_.shown = statement_.text();
        return std::move(out_);
    }

private:
    RuntimeError syntaxError() const
    {
        return RuntimeError(3075, shownExpression(statement_.text()));
    }

    void takeValue(const Statement::Part& part)
    {
        afterQuote_ = false; // an empty value also separates two quotes
        if (!part.isNumber && part.text.find(u'\'') != Text::npos) throw syntaxError();
        if (quoted_)
            literal_ += part.text;
        else
            takeNumber(part);
    }

    // A number directly after a name is part of the name: tblTolvek_Mail and 3.
    void takeNumber(const Statement::Part& part)
    {
        if (!part.isNumber) throw syntaxError();
        closeLiteral();
        if (inWord_) return addToWord(part.text);
        if (glued_) throw syntaxError();
        if (part.text == u"True" || part.text == u"False")
            addParameter(part.text == u"True" ? std::int64_t{-1} : std::int64_t{0});
        else
            addParameter(integerOf(part.text));
    }

    void addToWord(TextView digits)
    {
        if (!std::all_of(digits.begin(), digits.end(), isDigit)) throw syntaxError();
        out_.sql += digits;
    }

    void addParameter(Bound value)
    {
        if (ended_) throw RuntimeError(3142);
        out_.sql += u'?';
        out_.values.push_back(std::move(value));
        glued_ = true;
    }

    void takePiece(TextView piece)
    {
        for (const char16_t c : piece)
            quoted_ ? takeQuoted(c) : takeOutside(c);
    }

    void takeQuoted(char16_t c)
    {
        if (c != u'\'') {
            literal_ += c;
            return;
        }
        quoted_ = false;
        afterQuote_ = true;
        literalEnded_ = true;
    }

    void takeOutside(char16_t c)
    {
        if (c == u'\'') return takeQuote();
        afterQuote_ = false;
        closeLiteral();
        if (isWordUnit(c)) return takeWordUnit(c);
        closeWord();
        glued_ = false;
        takeSign(c);
    }

    // Two adjacent quotes within a literal mean one quote.
    void takeQuote()
    {
        if (afterQuote_) {
            literal_ += u'\'';
            literalEnded_ = false;
        } else {
            closeLiteral();
            if (inWord_ || glued_) throw syntaxError();
        }
        afterQuote_ = false;
        quoted_ = true;
    }

    void closeLiteral()
    {
        if (!literalEnded_) return;
        literalEnded_ = false;
        addParameter(std::move(literal_));
        literal_.clear();
    }

    void takeWordUnit(char16_t c)
    {
        if (glued_) throw syntaxError();
        if (ended_) throw RuntimeError(3142);
        if (!inWord_) wordBegin_ = out_.sql.size();
        inWord_ = true;
        out_.sql += c;
    }

    void closeWord()
    {
        if (!inWord_) return;
        inWord_ = false;
        const Text upper = upperAscii(TextView(out_.sql).substr(wordBegin_));
        // In parentheses, because a minus sign before it would begin a comment.
        if (upper == u"TRUE" || upper == u"FALSE")
            out_.sql.replace(wordBegin_, Text::npos, upper == u"TRUE" ? u"(-1)" : u"0");
        else if (!isDigit(upper[0]))
            out_.words.push_back({upper, wordBegin_, out_.sql.size()});
    }

    void takeSign(char16_t c)
    {
        const bool blank = c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
        if (ended_ && !blank) throw RuntimeError(3142);
        if (c == u';')
            ended_ = true;
        else
            out_.sql += c;
    }

    const Statement& statement_;
    SqlText out_;
    Text literal_;
    bool quoted_ = false;       // inside a literal
    bool afterQuote_ = false;   // the previous unit closed a literal
    bool literalEnded_ = false; // a literal waits to become a parameter
    bool inWord_ = false;
    bool glued_ = false; // a parameter is directly before
    bool ended_ = false; // after the semicolon
    std::size_t wordBegin_ = 0;
};

}

SqlText sqlText(const Statement& statement)
{
    return Lexer(statement).run();
}

Text shownExpression(TextView statement)
{
    const std::size_t where = upperAscii(statement).find(u" WHERE ");
    return trim(where == TextView::npos ? statement : statement.substr(where + 7));
}

bool sameName(TextView a, TextView b)
{
    const auto upper = [](char16_t c) { return c >= u'a' && c <= u'z' ? c - 32 : c + 0; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char16_t x, char16_t y) { return upper(x) == upper(y); });
}

Text upperAscii(TextView text)
{
    Text upper(text);
    for (char16_t& c : upper)
        if (c >= u'a' && c <= u'z') c -= 32;
    return upper;
}

}
