#include "letters/letter_pages.h"

#include "letters/text_lines.h"

namespace tolvek {

namespace {

constexpr std::string_view kRule =
    "------------------------------------------------------------------------\n";

bool hasValue(TextView text)
{
    return !text.empty() && text != kNoLetterValue;
}

Text padded(TextView time)
{
    return time.size() < 6 ? Text(6 - time.size(), u'0') + Text(time) : Text(time);
}

std::string escaped(TextView text)
{
    std::string out;
    for (const char c : toUtf8(text)) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (c == '"')
            out += "&quot;";
        else if (c >= 0 && c < 0x20 && c != '\n' && c != '\t')
            out += ' '; // no other control is valid in a page
        else
            out += c;
    }
    return out;
}

Text withLineFeeds(TextView text)
{
    Text out;
    TextLines rest(text);
    for (TextView line; rest.next(line);)
        out += Text(line) + u"\n";
    return out;
}

std::string heading(const char* name, TextView value)
{
    return value.empty() ? std::string() : std::string(name) + toUtf8(value) + "\n";
}

std::string row(const char* name, TextView value)
{
    return value.empty() ? std::string()
                         : std::string("<dt>") + name + "<dd>" + escaped(value) + "\n";
}

}

Text shownDate(const Letter& letter)
{
    const TextView date = letter.date;
    if (date.size() < 5) return Text(date);
    const std::size_t day = date.size() - 2, month = day - 2;
    const Text time = padded(letter.time);
    return Text(date.substr(0, month)) + u"/" + Text(date.substr(month, 2)) + u"/" +
           Text(date.substr(day)) + u" " + time.substr(0, 2) + u":" + time.substr(2, 2) + u":" +
           time.substr(4);
}

Text shownName(TextView name, TextView address)
{
    if (!hasValue(address)) return hasValue(name) ? Text(name) : Text();
    if (!hasValue(name)) return Text(address);
    return Text(name) + u" <" + Text(address) + u">";
}

std::string plainPage(const Letter& letter)
{
    return std::string(kRule) + heading("件名　: ", letter.subject) +
           heading("差出人: ", shownName(letter.senderName, letter.senderAddress)) +
           heading("宛先　: ", shownName(letter.receiverName, letter.receiverAddress)) +
           heading("日時　: ", shownDate(letter)) + "\n" + toUtf8(withLineFeeds(letter.text)) +
           "\n";
}

std::string htmlBeginning()
{
    return R"(<!DOCTYPE html>
<html lang="ja">
<head>
<meta charset="UTF-8">
<meta name="viewport" content="width=device-width">
<title>手紙</title>
<style>
:root { color-scheme: light dark; }
body { max-width: 44em; margin: 1em auto; padding: 0 1em; line-height: 1.7; font-family: sans-serif; }
article { border-top: 1px solid; padding: 1em 0; }
h2 { margin: 0; font-size: 1.2em; }
dl { display: grid; grid-template-columns: max-content auto; gap: 0 1em; margin: .5em 0 1em; opacity: .8; }
dd { margin: 0; }
.text { white-space: pre-wrap; overflow-wrap: anywhere; }
@media print { article { break-inside: avoid-page; } }
</style>
</head>
<body>
)";
}

std::string htmlArticle(const Letter& letter)
{
    return std::string("<article class=\"") + (letter.sent ? "sent" : "received") + "\">\n<h2>" +
           escaped(letter.subject) + "</h2>\n<dl>\n" +
           row("差出人", shownName(letter.senderName, letter.senderAddress)) +
           row("宛先", shownName(letter.receiverName, letter.receiverAddress)) +
           row("日時", shownDate(letter)) + "</dl>\n<div class=\"text\">" +
           escaped(withLineFeeds(letter.text)) + "</div>\n</article>\n";
}

std::string htmlEnd()
{
    return "</body>\n</html>\n";
}

}
